#include "orv/time/TimeFrequency.h"
#include "orv/foundation/Exception.h"
#include "orv/time/TimeOffset.h"
#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using Unit = TimeFrequency::FrequencyUnit;

TEST(TimeFrequency, EveryUnitHasItsNameFieldAndText)
{
    // clang-format off
    struct {
        TimeFrequency frequency;
        char const* name;
        TimeOffset offset;
        char const* text;
    } const table[] = {
        {{2, Unit::Years}, "2 Years", {2, 0, 0, 0, 0, 0, 0}, "2 00 0 00:00:00.000"},
        {{14, Unit::Months}, "14 Months", {1, 2, 0, 0, 0, 0, 0}, "0 14 0 00:00:00.000"},
        {{-5, Unit::Days}, "-5 Days", {0, 0, -5, 0, 0, 0, 0}, "0 00 -5 00:00:00.000"},
        {{100, Unit::Hours}, "100 Hours", {0, 0, 4, 4, 0, 0, 0}, "0 00 0 100:00:00.000"},
        {{1, Unit::Minutes}, "1 Minute", {0, 0, 0, 0, 1, 0, 0}, "0 00 0 00:01:00.000"},
        {{61, Unit::Seconds}, "61 Seconds", {0, 0, 0, 0, 1, 1, 0}, "0 00 0 00:00:61.000"},
        {{2147483647, Unit::Milliseconds}, "2147483647 Milliseconds", {2147483647LL},
         "0 00 0 00:00:00.2147483647"}};
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
        EXPECT_EQ(read, frequency) << name;
    }
    EXPECT_EQ(TimeFrequency(0, Unit::Days).GetAsString(), "0 Days");
    EXPECT_NE(TimeFrequency(1, Unit::Years), TimeFrequency(1, Unit::Months));
}

TEST(TimeFrequency, RefusesWhatIsNoFrequency)
{
    TimeFrequency frequency;
    for (int const wild : {-1, 7})
    {
        frequency.SetFrequencyUnit(static_cast<Unit::Enum>(wild));
        std::string const message = "Internal error: Frequency Unit conversion failed";
        EXPECT_TRUE(Throws<TimeException>([&] { frequency.GetTimeOffset(); }, message));
        EXPECT_TRUE(Throws<TimeException>([&] { std::ostringstream() << frequency; }, message));
        EXPECT_THROW(frequency.GetAsString(), std::runtime_error);
    }

    frequency = TimeFrequency(3, Unit::Days);
    for (std::string const text : {"0 00 0 00:00:00.000", "1 00 1 00:00:00.000", "+1 02 +3 04:05:06.007", ""})
    {
        std::istringstream stream(text);
        EXPECT_TRUE(Throws<TimeException>([&] { stream >> frequency; },
                                          "String does not represent a time frequency."))
            << text;
        EXPECT_EQ(frequency, TimeFrequency(3, Unit::Days)) << text;
    }
}

TEST(ParseTimeFrequency, ReadsOneTerm)
{
    // clang-format off
    std::pair<std::string, TimeFrequency> const table[] = {
        {"2 weeks", {14, Unit::Days}}, {"7 d and more", {7, Unit::Days}}, {"1y", {1, Unit::Years}},
        {"\n 3\tMONTHS", {3, Unit::Months}}, {"4h+5d", {4, Unit::Hours}}, {"0 min", {0, Unit::Minutes}},
        {"0010sec", {10, Unit::Seconds}}, {"8ms.", {8, Unit::Milliseconds}}, {"1 wk1", {7, Unit::Days}},
        {std::string(1000000, ' ') + std::string(1000000, '0') + "1d", {1, Unit::Days}}};
    std::pair<std::string, std::string> const refused[] = {
        {"", ""}, {"weekly", ""}, {"12", ""}, {"+1 d", ""}, {"-1 d", ""}, {"1 d\n", ""}, {"1 m", "m"},
        {"1.5 h", ""}, {"2 Weekly", "Weekly"}, {"1 d2\r", ""}, {"x 1 d", ""}};
    // clang-format on
    for (auto const& [in, out] : table)
        EXPECT_EQ(ParseTimeFrequency(in), out) << testing::PrintToString(in.substr(0, 50));
    for (auto const& [in, unit] : refused)
        EXPECT_TRUE(Throws<TimeException>([text = in] { ParseTimeFrequency(text); },
                                          "Invalid time offset unit: '" + unit + "'"))
            << testing::PrintToString(in);
    EXPECT_NO_THROW(ParseTimeFrequency("99999999999999999999 weeks"));
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
