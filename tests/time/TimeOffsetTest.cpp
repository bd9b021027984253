#include "orv/time/TimeOffset.h"
#include "orv/time/Duration.h"
#include "orv/time/TimeFrequency.h"
#include "tests/time/Times.h"

#include <iomanip>
#include <limits>
#include <sstream>
#include <tuple>
#include <utility>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using testing::PrintToString;
using Unit = TimeFrequency::FrequencyUnit;

constexpr int intMin = std::numeric_limits<int>::min();
constexpr int intMax = std::numeric_limits<int>::max();

TEST(TimeOffset, NormalisesInTwoChains)
{
    // clang-format off
    std::pair<TimeOffset, char const*> const table[] = {
        {{1, 2, 3, 4, 5, 6, 7}, "+1 02 +3 04:05:06.007"},  {{0, 0, 0, 0, 0, 0, -1}, "+0 00 -1 23:59:59.999"},
        {{0, 13, 400, 25, 61, 61, 1001}, "+1 01 +401 02:02:02.001"},
        {{0, -12, 0, -24, 0, 0, 0}, "-1 00 -1 00:00:00.000"},
        {{0, intMin, 0, 0, 0, 0, intMin}, "-178956971 04 -25 03:28:36.352"},
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
    for (long long const duration : {0LL, -1LL, WEEK + 1, -123456789012345LL, intMax * HOUR, intMin * HOUR})
        EXPECT_EQ(TimeOffset(duration).GetTimeDuration(), duration);
    EXPECT_EQ(TimeOffset(0, 0, intMax, 23, 59, 59, 999).GetTimeDuration(), (intMax + 1LL) * DAY - 1);
    EXPECT_EQ(Outcome([] { return TimeOffset(-1, 0, 0, 0, 0, 0, 0).GetTimeDuration(); }),
              "Illegal conversion of TimeOffset to TimeDuration");
}

// Numbers out of range wrap, and the counts below years and days stay normal whatever happens.
TEST(TimeOffset, SurvivesTheExtremesOfInt)
{
    auto const within = [](int value, int end) { return value >= 0 && value < end; };
    for (int const a : {intMin, intMin + 1, -1, 0, 1, intMax - 1, intMax})
        for (int const b : {intMin, intMin + 1, -1, 1, intMax})
        {
            TimeOffset offset(a, b, a, b, a, b, a);
            for (TimeOffset const& o :
                 {offset, offset += {b, a, b, a, b, a, b}, offset -= {b, b, b, b, b, b, b}})
                EXPECT_TRUE(within(o.GetMonths(), 12) && within(o.GetHours(), 24) &&
                            within(o.GetMinutes(), 60) && within(o.GetSeconds(), 60) &&
                            within(o.GetMilliseconds(), 1000))
                    << a << ", " << b << ": " << o;
        }
}

TEST(TimeOffset, KnowsItsUnits)
{
    // clang-format off
    std::pair<char const*, TimeOffset> const table[] = {
        {"years year yrs yr y", {2, 0, 0, 0, 0, 0, 0}},          {"months month", {0, 2, 0, 0, 0, 0, 0}},
        {"weeks week wks wk w", {0, 0, 14, 0, 0, 0, 0}},         {"days day d DAY", {0, 0, 2, 0, 0, 0, 0}},
        {"hours hour hrs hR h", {0, 0, 0, 2, 0, 0, 0}},          {"minutes minute mins MiN", {0, 0, 0, 0, 2, 0, 0}},
        {"seconds second secs sec s", {0, 0, 0, 0, 0, 2, 0}},    {"milliseconds millisecond ms", {0, 0, 0, 0, 0, 0, 2}}};
    // clang-format on
    for (auto const& [words, offset] : table)
    {
        std::istringstream stream(words);
        for (std::string word; stream >> word;)
        {
            EXPECT_EQ(ParseTimeOffset("+2" + word), offset) << word;
            EXPECT_EQ(ParseTimeOffset(" + 3\t" + word + " -1" + word + " 5"), offset) << word;
        }
    }
    for (char const* const word : {"m", "mo", "e", "msec"})
        EXPECT_EQ(Outcome([&] { return ParseTimeOffset(std::string("+1 ") + word); }),
                  std::string("Invalid time offset unit: '") + word + "'");
}

TEST(TimeOffset, TravelsAsText)
{
    // clang-format off
    std::pair<std::string, std::string> const table[] = { // empty: the stream fails
        {"0 13 0 25:0:0.0", "+1 01 +1 01:00:00.000"},       {"\n+1   -2\t3 4x5 y6z-7", "+0 10 +3 04:05:05.993"},
        {"-1 11 -1 23:59:59.999", "-1 11 -1 23:59:59.999"}, {"0 0 0 1234567:8.9", ""}, {"0 0 0 00:00:00.", ""},
        {"99999999999 0 0 0:0:0.0", ""}};
    // clang-format on
    for (auto const& [in, out] : table)
    {
        std::istringstream stream(in);
        TimeOffset read;
        stream >> read;
        EXPECT_EQ(stream.fail() ? "" : PrintToString(read), out) << in;
    }
    std::ostringstream stream;
    stream << std::setfill('*') << std::showpos << TimeOffset(1, 2, 3, 4, 5, 6, 7) << std::setw(3) << 8;
    EXPECT_EQ(stream.str(), "+1 02 +3 04:05:06.007008");
}

TEST(TimeFrequency, EveryUnitHasItsNameFieldAndText)
{
    // clang-format off
    std::tuple<TimeFrequency, char const*, TimeOffset, char const*> const table[] = {
        {{2, Unit::Years}, "2 Years", {2, 0, 0, 0, 0, 0, 0}, "2 00 0 00:00:00.000"},
        {{14, Unit::Months}, "14 Months", {1, 2, 0, 0, 0, 0, 0}, "0 14 0 00:00:00.000"},
        {{-5, Unit::Days}, "-5 Days", {0, 0, -5, 0, 0, 0, 0}, "0 00 -5 00:00:00.000"},
        {{100, Unit::Hours}, "100 Hours", {0, 0, 4, 4, 0, 0, 0}, "0 00 0 100:00:00.000"},
        {{1, Unit::Minutes}, "1 Minute", {0, 0, 0, 0, 1, 0, 0}, "0 00 0 00:01:00.000"},
        {{61, Unit::Seconds}, "61 Seconds", {0, 0, 0, 0, 1, 1, 0}, "0 00 0 00:00:61.000"},
        {{intMax, Unit::Milliseconds}, "2147483647 Milliseconds", {intMax * 1LL}, "0 00 0 00:00:00.2147483647"}};
    // clang-format on
    for (auto const& [frequency, name, offset, text] : table)
    {
        EXPECT_EQ(frequency.GetAsString(), name);
        EXPECT_EQ(frequency.GetTimeOffset(), offset) << name;
        std::ostringstream written;
        written << std::setfill('*') << std::showpos << frequency << std::setw(3) << 7;
        EXPECT_EQ(written.str(), std::string(text) + "007");
        TimeFrequency read;
        std::istringstream(text) >> read;
        EXPECT_TRUE(read == frequency && read != TimeFrequency()) << name;
    }
}

TEST(TimeFrequency, RefusesWhatIsNoFrequency)
{
    for (int const wild : {-1, 7})
    {
        TimeFrequency const frequency(1, static_cast<Unit::Enum>(wild));
        EXPECT_EQ(Outcome([&] { return frequency.GetTimeOffset(); }),
                  "Internal error: Frequency Unit conversion failed");
        EXPECT_THROW(std::ostringstream() << frequency, TimeException);
        EXPECT_THROW(frequency.GetAsString(), std::runtime_error);
    }
    for (std::string const text : {"0 00 0 00:00:00.000", "+1 02 +3 04:05:06.007", ""})
    {
        TimeFrequency frequency(3, Unit::Days);
        EXPECT_EQ(Outcome([&] { return (std::istringstream(text) >> frequency).good(); }),
                  "String does not represent a time frequency.");
        EXPECT_EQ(frequency, TimeFrequency(3, Unit::Days)) << text;
    }
}

TEST(TimeFrequency, IsReadFromOneTerm)
{
    // clang-format off
    std::pair<std::string, TimeFrequency> const table[] = {
        {"2 weeks", {14, Unit::Days}}, {"7 d and more", {7, Unit::Days}}, {"1y", {1, Unit::Years}},
        {"\n 3\tMONTHS", {3, Unit::Months}}, {"4h+5d", {4, Unit::Hours}}, {"0 min", {0, Unit::Minutes}},
        {"0010sec", {10, Unit::Seconds}}, {"8ms.", {8, Unit::Milliseconds}}};
    std::pair<std::string, std::string> const refused[] = {
        {"", ""}, {"12", ""}, {"+1 d", ""}, {"1 d\n", ""}, {"1 m", "m"}, {"1.5 h", ""}, {"2 Weekly", "Weekly"}};
    // clang-format on
    for (auto const& [in, out] : table)
        EXPECT_EQ(ParseTimeFrequency(in), out) << in;
    for (auto const& [in, unit] : refused)
        EXPECT_EQ(Outcome([text = in] { return ParseTimeFrequency(text); }),
                  "Invalid time offset unit: '" + unit + "'");
    EXPECT_NO_THROW(ParseTimeFrequency("99999999999999999999 weeks"));
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
