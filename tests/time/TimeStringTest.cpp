#include "orv/time/TimeString.h"
#include "orv/serialization/Factory.h"
#include "orv/time/ParseTime.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimeStringOrderer.h"
#include "orv/time/TimeStringResolver.h"
#include "orv/time/TimeSymbolTable.h"
#include "tests/serialization/Documents.h"
#include "tests/support/ExpectThrow.h"
#include "tests/time/Times.h"

#include <list>
#include <map>
#include <set>
#include <tuple>

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

std::string Parsed(std::string const& text, ITimeSymbolTable const* table)
{
    return Outcome([&] { return ParseTime(Text(text), table, true); });
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

    std::unique_ptr<ISerializable> const made(
        Factory::GetFactory().Construct("Zan::Orv::Core::Service::TimeString"));
    TimeString& read = dynamic_cast<TimeString&>(*made);
    std::string const document = XML("<x ><time_string> X &lt;+&gt; 1\tday </time_string></x>");
    XMLForm::Read(document, read);
    EXPECT_EQ(read.GetString(), " X <+> 1\tday ");
    EXPECT_EQ(XMLForm::Write(read), document);
    EXPECT_EQ(TextForm::Write(read), "# -1\n X <+> 1\tday \n");
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
        {"\n\t_1a\v\r\n", "2001-02-28 13:00:00.000"},         {"2000-2-25 - 3 ms", "2000-02-24 23:59:59.997"},
        {"Base", undefined + "Base'"},                        {"FEB + 1 parsec", undefined + "FEB'"},
        {"TO_EMPTY", undefined + "EMPTY'"},                   {"BASE\nBASE", "Invalid time format"},
        {"BASE + 1 ell", "Invalid time offset unit: 'ell'"},  {"BLANK", "Cannot parse time ''"},
        {" BASE + d + 1 d", "Cannot parse time 'BASE + d'"}};
    // clang-format on
    for (auto const& [text, outcome] : cases)
        EXPECT_EQ(Parsed(text, &table), outcome) << text;
    EXPECT_EQ(Parsed("X", nullptr), undefined + "X'");
    EXPECT_EQ(ParseTime(Text("5 JAN 05 +0d"), nullptr, false).GetYear(), 1905);
    EXPECT_EQ(table.size(), 8u);

    // Without a table and offsets, there are dates alone.
    TimeStringResolver resolver;
    EXPECT_EQ(resolver.getTime(Text("5 JAN 05")).GetYear(), 2005);
    EXPECT_THROW(resolver.getTime(Text("1 JAN 5 + 1 d")), TimeException);
}

TEST(TimeString, MayBeFarFromItsDateButNotGoInCircles)
{
    TimeSymbolTable table = MakeTable({{"A", "B"}, {"B", "C + 1 d"}, {"C", " B "}});
    EXPECT_EQ(Parsed("A + 1 d", &table), byItself + "B'");

    // A chain of symbols in which one builds on the next.
    table.clear();
    int const length = 100000;
    auto const nameOf = [](int i) { return "N" + std::to_string(i); };
    for (int i = 0; i < length; ++i)
        table[nameOf(i)] = Text(nameOf(i + 1) + "+1s");
    EXPECT_EQ(Parsed("N0", &table), undefined + nameOf(length) + "'");
    table[nameOf(length)] = Text("N0");
    EXPECT_EQ(Parsed("N0", &table), byItself + "N0'");
    Words bad;
    EXPECT_FALSE(TimeSymbolTable::IsValid(table, &bad));
    table[nameOf(length)] = Text("1 JAN 2000");
    EXPECT_EQ(Parsed("N0", &table), PrintToString(At(length * SECOND)));
    EXPECT_TRUE(TimeSymbolTable::IsValid(table, nullptr));
}

TEST(TimeSymbolTable, IsValidated)
{
    TimeSymbolTable table =
        MakeTable({{"D", "A+1d"}, {"A", "5 JAN 05"}, {"b", "B"}, {"B", ""}, {"C", "D + 1 x"}, {"", "A"}});
    Words bad;
    EXPECT_TRUE(TimeSymbolTable::IsValid(table["D"], table));
    EXPECT_FALSE(TimeSymbolTable::IsValid(TimeString(), table));
    EXPECT_FALSE(TimeSymbolTable::IsValid(table, nullptr));
    EXPECT_FALSE(TimeSymbolTable::IsValid(table, &bad));
    EXPECT_EQ(bad, (Words{"B", "C", "b"}));
    // The list is added to, and speaks for itself.
    table.clear();
    EXPECT_TRUE(TimeSymbolTable::IsValid(table, nullptr));
    EXPECT_FALSE(TimeSymbolTable::IsValid(table, &bad));
    EXPECT_EQ(bad.size(), 3u);

    // The calendar's own failures go to the caller.
    table["B"] = Text("31 FEB 2000");
    EXPECT_TRUE(Throws<std::out_of_range>([&] { TimeSymbolTable::IsValid(table, &bad); },
                                          "Day of month is not valid for year"));
}

TEST(TimeString, ReadsAMillionOfAnything)
{
    TimeSymbolTable const table = MakeTable({{"X", "1 JAN 2000"}});
    auto const million = [](std::string const& text) { return Repeat(1000000 / text.size(), text); };
    std::string const terms = million("+1 d-1s ");
    EXPECT_EQ(Parsed(million(" ") + "X" + million("\n") + terms, &table),
              PrintToString(At(125000 * (DAY - SECOND))));
    EXPECT_EQ(Parsed("X" + million("+1"), &table), "Cannot parse time 'X" + million("+1") + "'");
    EXPECT_EQ(Parsed("X" + million(" \n") + "X", &table), "Invalid time format");
}

// A set of texts of one letter each.
std::set<TimeString> Texts(std::string const& letters)
{
    std::set<TimeString> texts;
    for (char const letter : letters)
        texts.insert(Text(std::string(1, letter)));
    return texts;
}

struct Moments : ITimeStringResolver
{
    Time getTime(TimeString const& time) override
    {
        if (milliseconds.count(time.GetString()) == 0)
            throw TimeException("no " + time.GetString());
        return At(milliseconds[time.GetString()]);
    }
    std::map<std::string, int> milliseconds{{"a", 10}, {"b", 20}, {"B", 20}, {"c", 30}};
};

TEST(TimeStringOrderer, AnswersByMomentAndByText)
{
    Moments moments;
    TimeStringOrderer orderer(moments);
    EXPECT_EQ(orderer.current(Time::MaxTime()), Texts(""));
    orderer.insert(Text("b"));
    orderer.insert(Texts("cabB"));
    std::tuple<Time, char const*, char const*> const table[] = {
        {Time::MinTime(), "", ""}, {At(9), "", ""},    {At(10), "a", "a"},        {At(19), "", "a"},
        {At(20), "bB", "bB"},      {At(29), "", "bB"}, {Time::MaxTime(), "", "c"}};
    for (auto const& [moment, found, current] : table)
    {
        EXPECT_EQ(orderer.find(moment), Texts(found)) << moment;
        EXPECT_EQ(orderer.current(moment), Texts(current)) << moment;
    }
}

TEST(TimeStringOrderer, TakesAMomentOnce)
{
    Moments moments;
    TimeStringOrderer orderer(moments, Texts("ab"));
    TimeStringOrderer copy(orderer);
    moments.milliseconds["a"] = 20;
    EXPECT_EQ(orderer.find(Text("a")), Texts("b")); // where it would be now
    orderer.insert(Text("a"));
    EXPECT_EQ(orderer.find(At(20)), Texts("ab"));
    orderer.clear();
    EXPECT_EQ(orderer.current(Time::MaxTime()), Texts(""));
    EXPECT_EQ(copy.current(Text("b")), Texts("b")); // by the same resolver, among its own
}

TEST(TimeStringOrderer, PassesOnWhatTheResolverThrows)
{
    Moments moments;
    TimeStringOrderer orderer(moments);
    EXPECT_TRUE(Throws<TimeException>([&] { orderer.insert(Texts("abqz")); }, "no q"));
    EXPECT_EQ(orderer.find(At(10)), Texts("a")); // those before it are in
    EXPECT_EQ(orderer.current(Time::MaxTime()), Texts("b"));
    EXPECT_TRUE(Throws<TimeException>([&] { orderer.current(Text("q")); }, "no q"));
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
