#include "orv/time/TimeString.h"
#include "orv/foundation/Exception.h"
#include "orv/serialization/Factory.h"
#include "orv/time/Duration.h"
#include "orv/time/ParseTime.h"
#include "orv/time/Time.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimeStringResolver.h"
#include "orv/time/TimeSymbolTable.h"
#include "orv/time/internal/ExpressionMatcher.h"
#include "tests/serialization/Documents.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/RandomTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <list>
#include <random>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using testing::PrintToString;
using Words = std::list<std::string>;

std::string const undefined = "Symbolic time is not defined: '";
std::string const byItself = "Symbolic time is defined by itself: '";

TimeString Text(std::string const& text)
{
    return TimeString(text);
}

// The time, or the words of a TimeException.
std::string Outcome(std::string const& text, ITimeSymbolTable const* table)
{
    try
    {
        return PrintToString(ParseTime(Text(text), table, true));
    }
    catch (TimeException const& e)
    {
        return e.what();
    }
}

TimeSymbolTable MakeTable(std::initializer_list<std::pair<char const*, char const*>> definitions)
{
    TimeSymbolTable table;
    for (auto const& [name, text] : definitions)
        table[name] = Text(text);
    return table;
}

TEST(TimeString, IsItsText)
{
    EXPECT_FALSE(TimeString().IsDefined());
    EXPECT_TRUE(Text(" ").IsDefined());
    EXPECT_FALSE(Text("X") == Text("X "));
    EXPECT_TRUE(Text("B") < Text("a"));
    EXPECT_EQ(TimeString(Time(2000, 2, 29, 1, 2, 3, 4)).GetString(), "2000-02-29 01:02:03.004");

    Factory& factory = Factory::GetFactory();
    std::string const name = "Zan::Orv::Core::Service::TimeString";
    EXPECT_EQ(factory.GetClassName(typeid(TimeString)), name);
    TimeString written = Text(" X <+> 1\tday ");
    std::string const documents[] = {XMLForm::Write(written), TextForm::Write(written)};
    EXPECT_EQ(documents[0], XML("<x ><time_string> X &lt;+&gt; 1\tday </time_string></x>"));
    EXPECT_EQ(documents[1], "# -1\n X <+> 1\tday \n");
    for (bool const isXML : {true, false})
    {
        std::unique_ptr<ISerializable> const made(factory.Construct(name));
        TimeString& read = dynamic_cast<TimeString&>(*made);
        isXML ? XMLForm::Read(documents[0], read) : TextForm::Read(documents[1], read);
        EXPECT_EQ(read.GetString(), written.GetString());
    }
}

TEST(TimeString, IsEvaluatedFromTheInsideOut)
{
    // clang-format off
    TimeSymbolTable const table = MakeTable({
        {"BASE", "31 JAN 2001 12:00"}, {"Y", " BASE - 1 day +1h"}, {"X", "Y + 1 month"}, {"_1a", "X"},
        {"JAN", "5 MAY 2005"}, {"EMPTY", ""}, {"BLANK", " "}, {"TO_EMPTY", "EMPTY"}});
    std::pair<std::string, std::string> const cases[] = {
        {"31 JAN 2001 + 1 month + 1 day", "2001-03-01 00:00:00.000"},
        {"X + 1 month", "2001-03-28 13:00:00.000"},           // clamped at each level: not the 30th
        {"  BASE-1y\n+\n2\ns\n", "2001-01-31 12:00:00.000"},  // a run ends at its first line break
        {"JAN-0d", "2005-05-05 00:00:00.000"},                // a name wins
        {"\n\t_1a\v\r\n", "2001-02-28 13:00:00.000"},        {"5 JAN 2000 - 1 wk", "1999-12-29 00:00:00.000"},
        {"2000-2-25 - 3 ms", "2000-02-24 23:59:59.997"},      {"Base", undefined + "Base'"},
        {"FEB + 1 parsec", undefined + "FEB'"},               {"EMPTY", undefined + "EMPTY'"},
        {"TO_EMPTY", undefined + "EMPTY'"},                   {"BASE\nBASE", "Invalid time format"},
        {"BASE + 1 ell", "Invalid time offset unit: 'ell'"},  {"BLANK", "Cannot parse time ''"},
        {" BASE + d + 1 d", "Cannot parse time 'BASE + d'"},  {" + 1 day", "Cannot parse time ''"},
        {"1_BASE", "Cannot parse time '1_BASE'"}};
    // clang-format on
    for (auto const& [text, outcome] : cases)
        EXPECT_EQ(Outcome(text, &table), outcome) << text;
    EXPECT_EQ(Outcome("X", nullptr), undefined + "X'");
    EXPECT_EQ(ParseTime(Text("5 JAN 05 +0d"), nullptr, false).GetYear(), 1905);
    EXPECT_EQ(table.size(), 8u);

    // Without a table and offsets, there are dates alone.
    TimeStringResolver resolver;
    EXPECT_EQ(resolver.getTime(Text("5 JAN 05")).GetYear(), 2005);
    for (std::string const text : {"1 JAN 5 + 1 d", "_1a"})
        EXPECT_TRUE(
            Throws<TimeException>([&] { resolver.getTime(Text(text)); }, "Cannot parse time '" + text + "'"));

    // Any table will do. It is asked for each name once.
    struct Alphabet : ITimeSymbolTable
    {
        TimeString find(std::string const& name) const override
        {
            asked.push_back(name);
            return Text(name == "c" ? "1 JAN 2000" : name == "b" ? "c" : "b");
        }
        mutable Words asked;
    } const alphabet;
    EXPECT_EQ(Outcome("a - 1 d", &alphabet), "1999-12-31 00:00:00.000");
    EXPECT_EQ(alphabet.asked, (Words{"a", "b", "c"}));
}

TEST(TimeString, MayBeFarFromItsDateButNotGoInCircles)
{
    TimeSymbolTable table = MakeTable({{"A", "B"}, {"B", "C + 1 d"}, {"C", " B "}, {"SELF", "SELF"}});
    EXPECT_EQ(Outcome("A + 1 d", &table), byItself + "B'");
    EXPECT_EQ(Outcome("SELF", &table), byItself + "SELF'");
    EXPECT_FALSE(TimeSymbolTable::IsValid(table, nullptr));

    // A chain of symbols in which one builds on the next.
    table.clear();
    int const length = 100000;
    auto const nameOf = [](int i) { return "N" + std::to_string(i); };
    for (int i = 0; i < length; ++i)
        table[nameOf(i)] = Text(nameOf(i + 1) + "+1s");
    EXPECT_EQ(Outcome("N0", &table), undefined + nameOf(length) + "'");
    table[nameOf(length)] = Text("N0");
    EXPECT_EQ(Outcome("N0", &table), byItself + "N0'");
    Words bad;
    EXPECT_FALSE(TimeSymbolTable::IsValid(table, &bad));
    EXPECT_EQ(bad.size(), table.size());
    table[nameOf(length)] = Text("1 JAN 2000");
    EXPECT_EQ(Outcome("N0", &table), PrintToString(Time(2000, 1, 1, 0, 0, length, 0)));
    EXPECT_TRUE(TimeSymbolTable::IsValid(table, nullptr));
}

TEST(TimeSymbolTable, IsValidated)
{
    TimeSymbolTable table;
    Words bad;
    EXPECT_TRUE(TimeSymbolTable::IsValid(table, nullptr) && TimeSymbolTable::IsValid(table, &bad));
    table = MakeTable({{"D", "A+1d"}, {"A", "5 JAN 05"}, {"b", "B"}, {"B", ""}, {"C", "D + 1 x"}, {"", "A"}});
    EXPECT_TRUE(TimeSymbolTable::IsValid(table["D"], table));
    EXPECT_FALSE(TimeSymbolTable::IsValid(TimeString(), table));
    EXPECT_FALSE(TimeSymbolTable::IsValid(table, nullptr));
    EXPECT_FALSE(TimeSymbolTable::IsValid(table, &bad));
    EXPECT_EQ(bad, (Words{"B", "C", "b"}));
    EXPECT_EQ(table.size(), 6u);
    // The list is added to, and speaks for itself.
    table = MakeTable({{"A", "5 JAN 05"}});
    EXPECT_TRUE(TimeSymbolTable::IsValid(table, nullptr));
    EXPECT_FALSE(TimeSymbolTable::IsValid(table, &bad));
    EXPECT_EQ(bad.size(), 3u);

    // The calendar's own failures go to the caller.
    for (auto const& [text, words] : {std::pair("31 FEB 2000", "Day of month is not valid for year"),
                                      std::pair("A + 9999 y", "Year is out of valid range: 1400..10000")})
    {
        table["B"] = Text(text);
        EXPECT_TRUE(Throws<std::out_of_range>([&] { TimeSymbolTable::IsValid(table, &bad); }, words));
    }
}

// Random tables as text, beside a walk along the same as data. Many names are undefined or go in circles.
TEST(TimeSymbolTable, AgreesWithAWalkAlongTheChain)
{
    struct Definition
    {
        std::string base; // a name, or a date
        TimeOffset offset;
    };
    std::string const bases[] = {"A", "B", "C", "D", "E", "F", "G", "31 MAR 2004", "31 MAR 2004"};
    unsigned const seed = 41;
    std::mt19937 random(seed);
    auto const any = [&](unsigned count) { return static_cast<int>(random() % count); };
    for (int round = 0; round < 5000; ++round)
    {
        std::map<std::string, Definition> definitions;
        TimeSymbolTable table;
        for (int count = any(8); count >= 0; --count)
        {
            std::string const name = bases[any(7)];
            Definition& definition = definitions[name] = {bases[any(9)], TimeOffset()};
            std::string text = definition.base;
            for (int terms = any(4); terms > 0; --terms)
            {
                int const days = any(99) - 49;
                int const months = any(99) - 49;
                text += (days < 0 ? "\t-" : "+ ") + std::to_string(std::abs(days)) + "d ";
                text += (months < 0 ? "-\v" : "+") + std::to_string(std::abs(months)) + " MONTHS";
                definition.offset += TimeOffset(0, months, days, 0, 0, 0, 0);
            }
            table[name] = Text(text);
        }

        std::string expected;
        std::vector<std::string> chain;
        for (std::string name = "A"; expected.empty() && name.size() == 1; name = definitions[name].base)
        {
            if (definitions.count(name) == 0)
                expected = undefined + name + "'";
            else if (std::count(chain.begin(), chain.end(), name) != 0)
                expected = byItself + name + "'";
            chain.push_back(name);
        }
        Words bad;
        TimeSymbolTable::IsValid(table, &bad);
        bool const isBad = table.count("A") == 0 || std::count(bad.begin(), bad.end(), "A") != 0;
        ASSERT_EQ(isBad, !expected.empty()) << "seed " << seed;
        Time time(2004, 3, 31, 0, 0, 0, 0);
        for (; !isBad && !chain.empty(); chain.pop_back())
            time += definitions[chain.back()].offset;
        ASSERT_EQ(Outcome("A", &table), isBad ? expected : PrintToString(time)) << "seed " << seed;
    }
}

// The language of symbolic times, as an expression.
class SymbolicTimeMatcher : public RandomTexts
{
};
INSTANTIATE_TEST_SUITE_P(Seeds, SymbolicTimeMatcher, Seeds());

TEST_P(SymbolicTimeMatcher, SplitsAsTheExpression)
{
    std::regex const expression("\\s*(.*?)\\s*((?:[+-]\\s*\\d+\\s*[A-Za-z]+\\s*)*)");
    std::regex const symbol("[A-Za-z_][0-9A-Za-z_]*");
    std::string_view const pieces[] = {"+",  "-",  "+1d", "- 2 w ", "1",    "20",     " ",   "  ",
                                       "\t", "\n", "\r",  "a",      "Z",    "_",      "x_1", ".",
                                       ":",  "@",  "[",   "\xE9",   "\v\f", {"\0", 1}};
    unsigned const seed = GetParam();
    std::mt19937 random(seed);
    for (int round = 0; round < randomTexts; ++round)
    {
        std::string text;
        for (auto count = random() % 8; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        std::smatch match;
        std::string_view base;
        std::string_view offsets;
        bool const fits = std::regex_match(text, match, expression);
        ASSERT_EQ(Internal::MatchExpression(text, base, offsets), fits)
            << PrintToString(text) << ", seed " << seed;
        ASSERT_TRUE(!fits || (base == match.str(1) && offsets == match.str(2)))
            << '\'' << base << "', '" << offsets << "' of " << PrintToString(text) << ", seed " << seed;
        ASSERT_EQ(Internal::IsSymbol(text), std::regex_match(text, symbol)) << PrintToString(text);
    }
}

TEST(TimeString, ReadsAMillionOfAnything)
{
    TimeSymbolTable const table = MakeTable({{"X", "1 JAN 2000"}});
    auto const million = [](std::string const& text) { return Repeat(1000000 / text.size(), text); };
    std::string const terms = million("+1 d-1s ");
    Time time(2000, 1, 1, 0, 0, 0, 0);
    time += 125000 * (DAY - SECOND);
    EXPECT_EQ(Outcome(million(" ") + "X" + million("\n") + terms, &table), PrintToString(time));
    for (std::string const& text :
         {terms + ".", "X" + million("+"), "X" + million("+1"), "1" + million(" ") + "."})
        EXPECT_EQ(Outcome(text, &table), "Cannot parse time '" + text + "'");
    EXPECT_EQ(Outcome("X" + million(" \n") + "X", &table), "Invalid time format");
    EXPECT_EQ(Outcome(million("Y"), &table), undefined + million("Y") + "'");
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
