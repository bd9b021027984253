#include "orv/time/TimeOffset.h"
#include "orv/foundation/Exception.h"
#include "orv/serialization/Factory.h"
#include "orv/serialization/Serializer.h"
#include "orv/time/Duration.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/RecordingSerializer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <memory>
#include <random>
#include <regex>
#include <sstream>
#include <string_view>

namespace Zan::Orv::Core::Service::Tests {
namespace {

constexpr int intMin = std::numeric_limits<int>::min();
constexpr int intMax = std::numeric_limits<int>::max();

std::string Text(TimeOffset const& offset)
{
    std::ostringstream stream;
    stream << offset;
    return stream.str();
}

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
        EXPECT_EQ(Text(in), out);

    TimeOffset offset;
    offset.SetMonths(13);
    EXPECT_EQ(Text(offset), "+1 01 +0 00:00:00.000");
    offset.SetYears(-3);
    offset.SetDays(-2);
    offset.SetHours(-1);
    offset.SetMinutes(-1);
    offset.SetSeconds(60);
    offset.SetMilliseconds(-1);
    EXPECT_EQ(Text(offset), "-3 01 -3 22:59:59.999");
    offset -= TimeOffset(-2, 2, 0, 0, 0, 0, 1000);
    EXPECT_EQ(Text(offset += TimeOffset(0, 0, 0, 1, 0, 0, 1)), "-2 11 -3 23:59:59.000");
    EXPECT_NE(TimeOffset(0, 1, 0, 0, 0, 0, 0), TimeOffset(0, 0, 30, 0, 0, 0, 0));
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
    auto const expectNormal = [](TimeOffset const& o) {
        auto const within = [](int value, int end) { return value >= 0 && value < end; };
        EXPECT_TRUE(within(o.GetMonths(), 12) && within(o.GetHours(), 24) && within(o.GetMinutes(), 60) &&
                    within(o.GetSeconds(), 60) && within(o.GetMilliseconds(), 1000))
            << o;
    };
    unsigned const seed = 34;
    std::mt19937 random(seed);
    auto const any = [&] { return values[random() % std::size(values)]; };
    for (int round = 0; round < 2000 && !testing::Test::HasFailure(); ++round)
    {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
        TimeOffset offset(any(), any(), any(), any(), any(), any(), any());
        expectNormal(offset);
        expectNormal(offset += TimeOffset(any(), any(), any(), any(), any(), any(), any()));
        expectNormal(offset -= TimeOffset(any(), any(), any(), any(), any(), any(), any()));
    }
    expectNormal(TimeOffset(std::numeric_limits<long long>::min()));
    expectNormal(TimeOffset(std::numeric_limits<long long>::max()));
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
        EXPECT_EQ(stream.fail() ? "" : Text(read), out == nullptr ? "" : out) << in;
    }
    std::ostringstream stream;
    stream << std::setfill('*') << std::showpos << TimeOffset(1, 2, 3, 4, 5, 6, 7);
    EXPECT_EQ(stream.str(), "+1 02 +3 04:05:06.007");
    EXPECT_EQ(stream.fill(), '0');
    EXPECT_FALSE(stream.flags() & std::ios::showpos);

    RecordingWriter writer;
    Serializer output(writer);
    TimeOffset(-1, 2, 3, 4, 5, 6, 7).Serialize(output);
    EXPECT_EQ(writer.lines,
              (std::vector<std::string>{"int years[0] = -1", "int months[0] = 2", "int days[0] = 3",
                                        "int hours[0] = 4", "int minutes[0] = 5", "int seconds[0] = 6",
                                        "int milliseconds[0] = 7"}));

    PlayingReader reader{{"years[0]", "1"},          {"months[0]", "13"},  {"days[0]", "2"},
                         {"hours[0]", "25"},         {"minutes[0]", "-1"}, {"seconds[0]", "99"},
                         {"milliseconds[0]", "1000"}};
    Serializer input(reader);
    std::unique_ptr<ISerializable> const made(
        Factory::GetFactory().Construct("Zan::Orv::Core::Service::TimeOffset"));
    auto& offset = dynamic_cast<TimeOffset&>(*made);
    EXPECT_EQ(offset, TimeOffset());
    offset.Serialize(input);
    EXPECT_EQ(offset.GetMonths(), 13); // as it was read
    EXPECT_EQ(offset.GetMinutes(), -1);
    offset += TimeOffset();
    EXPECT_EQ(Text(offset), "+2 01 +3 01:00:40.000");
}

TEST(ParseTimeOffset, ReadsTerms)
{
    // clang-format off
    std::pair<std::string, TimeOffset> const table[] = {
        {"", {}}, {"   ", {}}, {"2 days", {}}, {"+", {}}, {"+1", {}}, {"+ day", {}}, {"+-1 day", {}},
        {"+1.5h", {}},
        {"+1 month - 2 days+3h", {0, 1, -2, 3, 0, 0, 0}}, {"\t\n+\v1\f\r YEAR", {1, 0, 0, 0, 0, 0, 0}},
        {"+1 day rubbish", {DAY}}, {"+1 day +2", {DAY}}, {"+1 day 2 days +3 days", {DAY}}, {"+1h_", {HOUR}},
        {"+1w", {WEEK}}, {"-1 wk", {-WEEK}}, {"+007d", {WEEK}}, {std::string("+1d\0+1d", 7), {DAY}},
        {"+1d\n+1d", {}}, {"+1d+1d\r", {}}, {"+1d +1\nd", {}}, {"+1\nd +1d", {2 * DAY}}};
    std::pair<char const*, TimeOffset> const units[] = {
        {"years year yrs yr y", {1, 0, 0, 0, 0, 0, 0}}, {"months month", {0, 1, 0, 0, 0, 0, 0}},
        {"weeks week wks wk w", {WEEK}},                {"days day d", {DAY}},
        {"hours hour hrs hr h", {HOUR}},                {"minutes minute mins min MiN", {MINUTE}},
        {"seconds second secs sec s", {SECOND}},        {"milliseconds millisecond ms MS", {MILLISECOND}}};
    // clang-format on
    for (auto const& [in, out] : table)
        EXPECT_EQ(ParseTimeOffset(in), out) << testing::PrintToString(in);
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
    return Text(result);
}

TEST(ParseTimeOffset, AgreesWithTheExpression)
{
    using namespace std::string_view_literals;
    std::string_view const pieces[] = {"+",    "-",   "+",      "1",     "20",    "9",   " ", "  ",
                                       "\t",   "\n",  "\r",     "\v",    "d",     "D",   "w", "ms",
                                       "m",    "y",   "hR",     "x",     "_",     ".",   ":", "\xE9",
                                       "\xFF", "+1d", "-3 min", "Weeks", "+2\nh", "\0"sv};
    unsigned const seed = 35;
    std::mt19937 random(seed);
    for (int round = 0; round < 200000; ++round)
    {
        // Half of the texts begin as a term does, since most others end at once.
        std::string text = round % 2 == 0 ? "+1" : "";
        for (auto count = random() % 7; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        std::string found;
        try
        {
            found = Text(ParseTimeOffset(text));
        }
        catch (TimeException const& e)
        {
            found = e.what();
        }
        ASSERT_EQ(found, ParseByExpression(text)) << testing::PrintToString(text) << ", seed " << seed;
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
