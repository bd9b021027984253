#include "orv/time/Chrono.h"

#include "Times.h"

#include <limits>
#include <string>

namespace Zan::Orv::Core::Service::Tests {

namespace {

using std::chrono::hours;
using std::chrono::milliseconds;

constexpr long long longest = std::numeric_limits<long long>::max();

TEST(ChronoTest, moments_come_back_as_they_were)
{
    struct Case
    {
        Time time;
        long long milliseconds; // since 1970
    };
    for (auto const& [time, count] :
         {Case{Date(1970, 1, 1), 0}, Case{Time(2000, 2, 29, 12, 34, 56, 789), 951827696789},
          Case{Time(1969, 12, 31, 23, 59, 59, 999), -1}, Case{Time::MinTime(), -17987443200000},
          Case{Time::MaxTime(), 253402300799999}})
    {
        SystemMilliseconds const moment{milliseconds(count)};
        EXPECT_EQ(SystemTimeFromTime(time).time_since_epoch().count(), count) << time;
        EXPECT_EQ(TimeFromSystemTime(moment), time) << count;
    }
}

TEST(ChronoTest, moments_outside_the_range_are_refused_as_years)
{
    auto const outcome = [](long long count) {
        return Outcome([count] { return TimeFromSystemTime(SystemMilliseconds(milliseconds(count))); });
    };
    std::string const badYear = "! Year is out of valid range: 1400..10000";
    EXPECT_EQ(outcome(-17987443200001), badYear);
    EXPECT_EQ(outcome(253402300800000), "! Year is out of valid range: 1400..9999"); // in the year 10000
    EXPECT_EQ(outcome(longest), badYear);
}

TEST(ChronoTest, times_beyond_the_range_keep_their_distance)
{
    Time far = Time::MaxTime();
    far += 1000 * 365 * DAY;
    EXPECT_EQ(SystemTimeFromTime(far) - SystemTimeFromTime(Time::MaxTime()), hours(24) * 365 * 1000);
}

TEST(ChronoTest, durations_are_offsets_without_years_and_months)
{
    EXPECT_EQ(OffsetFromDuration(milliseconds(-1)), TimeOffset(0, 0, -1, 23, 59, 59, 999));
    EXPECT_EQ(DurationFromOffset(TimeOffset(0, 0, -2, 1, 0, 0, 5)), milliseconds(-2 * DAY + HOUR + 5));

    long long const lowest = std::numeric_limits<int>::min() * DAY;
    long long const highest = std::numeric_limits<int>::max() * DAY + DAY - 1;
    for (long long const count : {lowest, highest})
        EXPECT_EQ(DurationFromOffset(OffsetFromDuration(milliseconds(count))).count(), count);
    for (long long const count : {lowest - 1, highest + 1})
        EXPECT_EQ(Outcome([count] { return OffsetFromDuration(milliseconds(count)); }),
                  "Duration is too long for a TimeOffset")
            << count;
}

#if defined(ORV_HAS_CHRONO_CALENDAR)

TEST(ChronoTest, dates_are_midnights)
{
    using std::chrono::year;

    auto const leapDay = year(2000) / 2 / 29;
    EXPECT_EQ(TimeFromDate(leapDay), Date(2000, 2, 29));
    EXPECT_EQ(DateFromTime(Time(2000, 2, 29, 23, 59, 59, 999)), leapDay);
}

TEST(ChronoTest, dates_that_do_not_exist_are_refused_as_by_the_constructor)
{
    using std::chrono::year;

    auto const outcome = [](std::chrono::year_month_day const& date) {
        return Outcome([&date] { return TimeFromDate(date); });
    };
    EXPECT_EQ(outcome(year(1900) / 2 / 29), "! Day of month is not valid for year");
    EXPECT_EQ(outcome(year(2000) / 13 / 1), "! Month number is out of range 1..12");
    // Sixteen bits of a year: none of these comes back as another one.
    for (int const count : {1399, 10001, -32767, 32767})
        EXPECT_EQ(outcome(year(count) / 1 / 1), "! Year is out of valid range: 1400..10000") << count;
    EXPECT_EQ(Outcome([] { return DateFromTime(Time() -= 1).ok(); }),
              "! Year is out of valid range: 1400..10000");
}

#elif defined(__GLIBCXX__)
#error "The calendar of this library should have been found."
#endif

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
