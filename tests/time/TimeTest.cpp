#include "orv/time/Time.h"
#include "orv/time/TimeOffset.h"
#include "tests/support/ExpectThrow.h"
#include "tests/time/Times.h"

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <tuple>
#include <utility>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using boost::gregorian::bad_day_of_month;
using boost::gregorian::bad_month;
using boost::gregorian::bad_year;
using testing::PrintToString;

constexpr int intMin = std::numeric_limits<int>::min();
constexpr int intMax = std::numeric_limits<int>::max();
std::string const badYear = "Year is out of valid range: 1400..10000";
std::string const badMonth = "Month number is out of range 1..12";
std::string const badDay = "Day of month value is out of range 1..31";
std::string const badDayOfYear = "Day of month is not valid for year";

template<class Amount>
Time Sum(Time time, Amount const& amount)
{
    return time += amount;
}

int LengthOfMonth(int year, int month)
{
    constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    bool const leap = year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
    return lengths[month - 1] + (leap && month == 2 ? 1 : 0);
}

TEST(Time, EveryDayOfTheCalendarHasItsFields)
{
    int dayOfWeek = 3; // 1400-01-01 is a Wednesday, since 2000-01-01 is a Saturday
    Time time;
    for (int year = 1400; year <= 9999; ++year)
    {
        int dayOfYear = 1;
        for (int month = 1; month <= 12; ++month)
            for (int day = 1; day <= LengthOfMonth(year, month); ++day, ++dayOfYear, time += DAY)
            {
                bool const right = time.GetYear() == year && time.GetMonth() == month &&
                                   time.GetDay() == day && time.GetDayOfWeek() == dayOfWeek &&
                                   time.GetDayOfYear() == dayOfYear && time == Date(year, month, day);
                ASSERT_TRUE(right) << time << " should be " << year << '-' << month << '-' << day
                                   << ", day of week " << dayOfWeek << ", day of year " << dayOfYear;
                dayOfWeek = dayOfWeek == 6 ? 0 : dayOfWeek + 1;
            }
    }
    EXPECT_EQ(Time::MaxTime(), Sum(time, -1));
}

TEST(Time, TheEndsOfTheRangeStandForUndefined)
{
    EXPECT_EQ(Time::MinTime(), Time());
    EXPECT_TRUE(!Time().IsDef() && Sum(Time(), 1).IsDef());
    EXPECT_TRUE(!Time::MaxTime().IsDef() && Sum(Time::MaxTime(), -1).IsDef() &&
                Sum(Time::MaxTime(), 1).IsDef());
    EXPECT_EQ(Time().GetAsString() + Time::MaxTime().GetAsString(), "Min dateMax date");
    EXPECT_EQ(Sum(Time(), 1).GetAsString(), "1400-01-01 00:00:00.001");
    EXPECT_EQ(PrintToString(Time::MaxTime()), "9999-12-31 23:59:59.999");
}

TEST(Time, TheTimeOfDayNeedNotLieWithinTheDay)
{
    // clang-format off
    std::pair<std::array<int, 4>, char const*> const table[] = {
        {{24, 0, 0, 0}, "2000-01-02 00:00:00.000"},       {{-1, 1, 1, 0}, "1999-12-31 22:58:59.000"},
        {{1, 0, 0, -1}, "2000-01-01 00:59:59.999"},       {{0, 0, 0, intMin}, "1999-12-07 03:28:36.352"},
        {{0, 0, intMin, 0}, "1931-12-13 20:45:52.000"},   {{0, intMax, 0, -1}, "6083-01-23 02:06:59.999"}};
    // clang-format on
    for (auto const& [in, out] : table)
        EXPECT_EQ(PrintToString(Time(2000, 1, 1, in[0], in[1], in[2], in[3])), out) << PrintToString(in);

    // Out of the calendar, and in order all the same.
    EXPECT_LT(Time(2000, 1, 1, intMin, intMin, intMin, intMin), Time::MinTime());
    EXPECT_GT(Time(2000, 1, 1, intMax, intMax, intMax, intMax), Time::MaxTime());
}

TEST(Time, RefusesDatesThatDoNotExist)
{
    // In the order of the checks, with numbers seen through 16 bits.
    // clang-format off
    std::pair<std::array<int, 3>, std::string> const table[] = {
        {{2000, 1, 0}, badDay}, {{2000, 1, 32}, badDay}, {{2000, 1, -1}, badDay}, {{intMax, intMax, intMax}, badDay},
        {{2000, 0, 1}, badMonth}, {{2000, 13, 1}, badMonth}, {{0, intMin, 1}, badMonth},
        {{1399, 12, 31}, badYear}, {{10001, 1, 1}, badYear}, {{intMin, 1, 1}, badYear}, {{1399, 2, 30}, badYear},
        {{2000, 2, 30}, badDayOfYear}, {{1900, 2, 29}, badDayOfYear}, {{10000, 4, 31}, badDayOfYear}};
    // clang-format on
    for (auto const& [in, out] : table)
    {
        auto const make = [&date = in] { Date(date[0], date[1], date[2]); };
        EXPECT_TRUE(out == badYear    ? Throws<bad_year>(make, out)
                    : out == badMonth ? Throws<bad_month>(make, out)
                                      : Throws<bad_day_of_month>(make, out))
            << PrintToString(in);
    }
    EXPECT_EQ(Date(2000 - 65536, 65536 + 2, 65536 + 29), Date(2000, 2, 29));
    for (int const year : {10000, 65536 + 2000})
        EXPECT_TRUE(Throws<ServiceException>([year] { Time(year, 1, 1, -1, 0, 0, 0); },
                                             "Year is out of valid range: 1400..9999"));
}

TEST(Time, AddsAnOffsetInTheOrderOfItsFields)
{
    // clang-format off
    std::tuple<Time, TimeOffset, char const*> const table[] = {
        {Date(2000, 1, 31), {0, 1, 1, 0, 0, 0, 0}, "2000-03-01 00:00:00.000"},
        {Date(2000, 1, 31), {1, 1, -1, 0, 0, 0, -1}, "2001-02-26 23:59:59.999"},
        {Date(9999, 12, 31), {1, 0, 0, 0, 0, 0, 0}, "10000-12-31 00:00:00.000"},
        // 16 bits again
        {Date(2000, 2, 29), {65536, 0, 0, 0, 0, 0, 0}, "2000-02-29 00:00:00.000"},
        {Date(2000, 1, 1), {intMax, 0, 0, 0, 0, 0, 0}, "1999-01-01 00:00:00.000"},
        {Date(2000, 1, 1), {intMin, 0, 0, 0, 0, 0, 0}, "2000-01-01 00:00:00.000"}};
    // clang-format on
    for (auto const& [in, offset, out] : table)
        EXPECT_EQ(PrintToString(Sum(in, offset)), out) << in << " and " << offset;
    Time time = Date(2000, 3, 31);
    time -= TimeOffset(0, 1, 1, 0, 0, 1, 0); // 1 month, 1 day and 1 second back, all fields negated at once
    EXPECT_EQ(PrintToString(time), "2000-02-27 23:59:59.000");
    EXPECT_LT(Sum(Time(), TimeOffset(0, 0, intMin, 0, 0, 0, 0)), Time());
    EXPECT_GT(Sum(Time(), TimeOffset(0, 0, intMax, 23, 59, 59, 999)), Time::MaxTime());
    for (int const years : {-20000, -601, 8001, 20000})
        EXPECT_THROW(time += TimeOffset(years, 0, 1, 0, 0, 0, 0), bad_year) << years;
    EXPECT_EQ(PrintToString(time), "2000-02-27 23:59:59.000");
}

TEST(Time, StaysOrderedBeyondTheCalendar)
{
    constexpr long long least = std::numeric_limits<long long>::min();
    constexpr long long most = std::numeric_limits<long long>::max();
    long long const millennia = 1000 * 366 * DAY;
    Time last;
    for (long long const amount :
         {least, -100 * millennia, -10 * millennia, 10 * millennia, 100 * millennia, most})
    {
        SCOPED_TRACE(amount);
        Time const far = Sum(Date(2000, 1, 1), amount);
        EXPECT_TRUE(amount == least || far > last);
        last = far;
        for (auto field :
             {&Time::GetYear, &Time::GetMonth, &Time::GetDay, &Time::GetDayOfWeek, &Time::GetDayOfYear})
            EXPECT_TRUE(Throws<bad_year>([&] { (far.*field)(); }, badYear));
        EXPECT_TRUE(Throws<bad_year>([&] { Sum(far, TimeOffset(0, 1, 0, 0, 0, 0, 0)); }, badYear));
        EXPECT_TRUE(far.GetHour() >= 0 && far.GetHour() < 24 && far.GetMillisecond() >= 0);

        // Additions of any size keep their direction, and differences their sign.
        Time up = far;
        Time down = far;
        EXPECT_TRUE((up -= least) >= far && (down += least) <= far);
        EXPECT_TRUE(up - down > 100 * millennia && down - up < -100 * millennia);
    }
}

TEST(Time, TellsTheCalendarDistance)
{
    // clang-format off
    std::tuple<Time, Time, char const*> const table[] = {
        {Date(2000, 12, 20), Date(2001, 1, 15), "+0 01 -5 00:00:00.000"},
        {Date(2000, 1, 31), Date(2000, 3, 1), "+0 01 +1 00:00:00.000"},
        {Date(2001, 3, 10), Date(2001, 2, 20), "-1 11 +10 00:00:00.000"},
        {Date(2001, 2, 20), Date(2000, 3, 10), "-1 01 -10 00:00:00.000"},
        {Time(2000, 1, 1, 0, 0, 0, 1), Date(2000, 1, 2), "+0 00 +0 23:59:59.999"}};
    // clang-format on
    for (auto const& [from, to, out] : table)
        EXPECT_EQ(PrintToString(TimeOffset(to, from)), out) << from << " to " << to;
}

TEST(Time, AddsMonthsAsACalendarDoes)
{
    std::pair<int, Time> const table[] = {{9, Date(2000, 12, 31)},   {-3, Date(1999, 12, 31)},
                                          {-4, Date(1999, 11, 30)},  {-13, Date(1999, 2, 28)},
                                          {-27, Date(1997, 12, 31)}, {1199, Date(2100, 2, 28)}};
    for (auto const& [months, expected] : table)
        EXPECT_EQ(Date(2000, 3, 31) += TimeOffset(0, months, 0, 0, 0, 0, 0), expected) << months;
}

TEST(Time, TheClockGivesWholeSecondsOfToday)
{
    Time const before = Time::Today();
    Time const now = Time::Now();
    Time const after = Time::Today();
    EXPECT_EQ(now.GetMillisecond(), 0);
    EXPECT_EQ((before - Time()) % DAY, 0);
    EXPECT_GE(now, before);
    EXPECT_LT(now - after, DAY);
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
