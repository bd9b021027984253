#include "orv/time/TimeOffset.h"
#include "orv/foundation/Exception.h"
#include "orv/time/Duration.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/RandomTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <random>
#include <regex>
#include <sstream>
#include <string_view>

namespace Zan::Orv::Core::Service::Tests {
namespace {

constexpr int intMin = std::numeric_limits<int>::min();
constexpr int intMax = std::numeric_limits<int>::max();

using testing::PrintToString;

TEST(TimeOffset, NormalisesInTwoChains)
{
    // clang-format off
    std::pair<TimeOffset, char const*> const table[] = {
        {{}, "+0 00 +0 00:00:00.000"},                     {{1, 2, 3, 4, 5, 6, 7}, "+1 02 +3 04:05:06.007"},
        {{0, 0, 0, 0, 0, 0, -1}, "+0 00 -1 23:59:59.999"}, {{0, -1, 0, 0, 0, 0, 0}, "-1 11 +0 00:00:00.000"},
        {{0, 13, 400, 25, 61, 61, 1001}, "+1 01 +401 02:02:02.001"},
        {{1, -25, 1, -25, 0, 0, 0}, "-2 11 -1 23:00:00.000"},
        {{0, -12, 0, -24, 0, 0, 0}, "-1 00 -1 00:00:00.000"},
        {{0, 0, 0, 1, -60, 60, -60000}, "+0 00 +0 00:00:00.000"},
        {{0, 0, 0, 0, 0, 0, intMin}, "+0 00 -25 03:28:36.352"},
        {{0, intMin, 0, 0, 0, 0, 0}, "-178956971 04 +0 00:00:00.000"},
        {{DAY}, "+0 00 +1 00:00:00.000"}, {{-HOUR}, "+0 00 -1 23:00:00.000"},
        {{-WEEK - 1}, "+0 00 -8 23:59:59.999"}};
    // clang-format on
    for (auto const& [in, out] : table)
        EXPECT_EQ(PrintToString(in), out);

    TimeOffset offset;
    offset.SetMonths(13);
    EXPECT_EQ(PrintToString(offset), "+1 01 +0 00:00:00.000");
    offset.SetYears(-3);
    offset.SetDays(-2);
    offset.SetHours(-1);
    offset.SetMinutes(-1);
    offset.SetSeconds(60);
    offset.SetMilliseconds(-1);
    EXPECT_EQ(PrintToString(offset), "-3 01 -3 22:59:59.999");
    offset -= TimeOffset(-2, 2, 0, 0, 0, 0, 1000);
    EXPECT_EQ(PrintToString(offset += TimeOffset(0, 0, 0, 1, 0, 0, 1)), "-2 11 -3 23:59:59.000");
    for (int i = 0; i < 7; ++i)
        EXPECT_NE(TimeOffset(i == 0, i == 1, i == 2, i == 3, i == 4, i == 5, i == 6), TimeOffset()) << i;
}

TEST(TimeOffset, IsADurationWithoutYearsAndMonths)
{
    for (long long const duration :
         {0LL, -1LL, DAY, -DAY, WEEK + 1, -123456789012345LL, intMax * HOUR, intMin * HOUR})
        EXPECT_EQ(TimeOffset(duration).GetTimeDuration(), duration);
    EXPECT_EQ(TimeOffset(0, 0, intMax, 23, 59, 59, 999).GetTimeDuration(), (intMax + 1LL) * DAY - 1);
    for (TimeOffset const& offset : {TimeOffset(0, 1, 0, 0, 0, 0, 0), TimeOffset(-1, 0, 0, 0, 0, 0, 0)})
        EXPECT_TRUE(Throws<TimeException>([&] { offset.GetTimeDuration(); },
                                          "Illegal conversion of TimeOffset to TimeDuration"));
}

// Numbers out of range wrap, and the counts below years and days stay normal whatever happens.
TEST(TimeOffset, SurvivesTheExtremesOfInt)
{
    int const values[] = {intMin, intMin + 1, -1, 0, 1, intMax - 1, intMax};
    unsigned const seed = 34;
    std::mt19937 random(seed);
    auto const any = [&] { return values[random() % std::size(values)]; };
    auto const anyOffset = [&] { return TimeOffset(any(), any(), any(), any(), any(), any(), any()); };
    for (int round = 0; round < 2000; ++round)
    {
        auto const within = [](int value, int end) { return value >= 0 && value < end; };
        TimeOffset offset = round == 0 ? TimeOffset(std::numeric_limits<long long>::min()) : anyOffset();
        for (TimeOffset const& o : {offset, offset += anyOffset(), offset -= anyOffset()})
            ASSERT_TRUE(within(o.GetMonths(), 12) && within(o.GetHours(), 24) && within(o.GetMinutes(), 60) &&
                        within(o.GetSeconds(), 60) && within(o.GetMilliseconds(), 1000))
                << o << ", seed " << seed;
    }
}

TEST(TimeOffset, TravelsAsText)
{
    // clang-format off
    std::pair<std::string, char const*> const table[] = { // null: the stream fails
        {"0 13 0 25:0:0.0", "+1 01 +1 01:00:00.000"},
        {"\n+1   -2\t3 4x5 y6z-7", "+0 10 +3 04:05:05.993"},
        {"-1 11 -1 23:59:59.999", "-1 11 -1 23:59:59.999"},
        {"0 0 -2147483648 0.0.0.0 x", "+0 00 -2147483648 00:00:00.000"},
        {"0 0 0 1234567:8.9", nullptr}, {"0 0 0 00:00:00.", nullptr}, {"99999999999 0 0 0:0:0.0", nullptr},
        {"", nullptr}};
    // clang-format on
    for (auto const& [in, out] : table)
    {
        std::istringstream stream(in);
        TimeOffset read;
        stream >> read;
        EXPECT_EQ(stream.fail() ? "" : PrintToString(read), out == nullptr ? "" : out) << in;
    }
    std::ostringstream stream;
    stream << std::setfill('*') << std::showpos << TimeOffset(1, 2, 3, 4, 5, 6, 7) << std::setw(3) << 8;
    EXPECT_EQ(stream.str(), "+1 02 +3 04:05:06.007008");
}

TEST(ParseTimeOffset, KnowsItsUnits)
{
    // clang-format off
    std::pair<char const*, TimeOffset> const units[] = {
        {"years year yrs yr y", {1, 0, 0, 0, 0, 0, 0}}, {"months month", {0, 1, 0, 0, 0, 0, 0}},
        {"weeks week wks wk w", {WEEK}},                {"days day d", {DAY}},
        {"hours hour hrs hr h", {HOUR}},                {"minutes minute mins min MiN", {MINUTE}},
        {"seconds second secs sec s", {SECOND}},        {"milliseconds millisecond ms MS", {MILLISECOND}}};
    // clang-format on
    EXPECT_EQ(ParseTimeOffset("+1 month - 2 days+3h rubbish"), TimeOffset(0, 1, -2, 3, 0, 0, 0));
    for (auto const& [words, offset] : units)
    {
        std::istringstream stream(words);
        for (std::string word; stream >> word;)
            EXPECT_EQ(ParseTimeOffset("+1" + word), offset) << word;
    }
    for (std::string const unit : {"m", "M", "mo", "monthss", "yea", "Zoll", "hh", "msec", "e"})
        EXPECT_TRUE(Throws<TimeException>([&] { ParseTimeOffset("+1y-2" + unit + "+1d"); },
                                          "Invalid time offset unit: '" + unit + "'"));
}

// The language of the terms, as an expression.
std::string ParseByExpression(std::string rest)
{
    static std::regex const expression("\\s*([+-])\\s*(\\d+)\\s*([A-Za-z]+)(.*)");
    static std::string_view const words[] = {" years year yrs yr y ",       " months month ",
                                             " weeks week wks wk w ",       " days day d ",
                                             " hours hour hrs hr h ",       " minutes minute mins min ",
                                             " seconds second secs sec s ", " milliseconds millisecond ms "};
    TimeOffset result;
    for (std::smatch match; std::regex_match(rest, match, expression); rest = std::string(match[4]))
    {
        int const number = std::atoi((match.str(1) + match.str(2)).c_str());
        std::string unit = ' ' + match.str(3) + ' ';
        for (char& c : unit)
            c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
        auto const row =
            std::find_if(std::begin(words), std::end(words),
                         [&](std::string_view list) { return list.find(unit) != std::string_view::npos; }) -
            std::begin(words);
        if (row == std::ssize(words))
            return "Invalid time offset unit: '" + match.str(3) + "'";
        auto const in = [&](int wanted) { return row == wanted ? number : 0; };
        result += TimeOffset(in(0), in(1), 7 * in(2) + in(3), in(4), in(5), in(6), in(7));
    }
    return PrintToString(result);
}

class OffsetMatcher : public RandomTexts
{
};
INSTANTIATE_TEST_SUITE_P(Seeds, OffsetMatcher, Seeds());

TEST_P(OffsetMatcher, AgreesWithTheExpression)
{
    using namespace std::string_view_literals;
    std::string_view const pieces[] = {"+",    "-",   "+",      "1",     "20",    "9",    " ",  "  ",
                                       "\t",   "\n",  "\r",     "\v",    "d",     "D",    "w",  "ms",
                                       "m",    "y",   "hR",     "x",     "_",     ".",    ":",  "\xE9",
                                       "\xFF", "+1d", "-3 min", "Weeks", "+2\nh", "+007", "\f", "\0"sv};
    unsigned const seed = GetParam();
    std::mt19937 random(seed);
    for (int round = 0; round < randomTexts; ++round)
    {
        // Half of the texts begin as a term does, since most others end at once.
        std::string text = round % 2 == 0 ? "+1" : "";
        for (auto count = random() % 7; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        std::string found;
        try
        {
            found = PrintToString(ParseTimeOffset(text));
        }
        catch (TimeException const& e)
        {
            found = e.what();
        }
        ASSERT_EQ(found, ParseByExpression(text)) << PrintToString(text) << ", seed " << seed;
    }
}

TEST(ParseTimeOffset, ReadsAMillionOfAnything)
{
    auto const million = [](char c) { return std::string(1000000, c); };
    EXPECT_EQ(ParseTimeOffset(million(' ')), TimeOffset());
    EXPECT_EQ(ParseTimeOffset(million('+')), TimeOffset());
    EXPECT_EQ(ParseTimeOffset("+" + million('9')), TimeOffset());
    EXPECT_EQ(ParseTimeOffset(million(' ') + "+" + million('\n') + million('0') + "1" + million(' ') + "d"),
              TimeOffset(DAY));
    EXPECT_NO_THROW(ParseTimeOffset("+" + million('9') + "weeks"));
    EXPECT_TRUE(Throws<TimeException>([&] { ParseTimeOffset("+1" + million('d')); },
                                      "Invalid time offset unit: '" + million('d') + "'"));
    std::string terms;
    for (int i = 0; i < 125000; ++i)
        terms += "+1 d-1s ";
    EXPECT_EQ(ParseTimeOffset(terms), TimeOffset(125000 * (DAY - SECOND)));
    EXPECT_EQ(ParseTimeOffset(terms + '\n'), TimeOffset());
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
