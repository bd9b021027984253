#include "orv/time/TimePeriod.h"
#include "orv/foundation/Exception.h"
#include "orv/time/TimeOffset.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Zan::Orv::Core::Service::Tests {
namespace {

Time Day(int day)
{
    return Time(2000, 1, day, 0, 0, 0, 0);
}

TimePeriod Days(int begin, int end)
{
    return TimePeriod(Day(begin), Day(end));
}

// Periods of a few days are sets of days; the class has to agree with the sets.
TEST(TimePeriod, AgreesWithSetsOfDays)
{
    auto const bits = [](TimePeriod const& period) {
        unsigned set = 0;
        for (int day = 1; day <= 6; ++day)
            set |= period.Contains(Day(day)) ? 1u << day : 0;
        return set;
    };
    for (int code = 0; code < 625; ++code)
    {
        int const a = 1 + code % 5, b = 1 + code / 5 % 5, c = 1 + code / 25 % 5, d = 1 + code / 125;
        TimePeriod const first = Days(a, b); // an end before the begin is lifted to it
        TimePeriod const second = Days(c, d);
        SCOPED_TRACE(testing::Message() << first << " and " << second);
        EXPECT_EQ(bits(first), b > a ? (1u << b) - (1u << a) : 0);
        EXPECT_EQ(first.Empty(), bits(first) == 0);
        EXPECT_EQ(first.Begin(), Day(a));
        EXPECT_EQ(first.Duration(), std::max(b - a, 0) * DAY);
        EXPECT_EQ(first == second, a == c && std::max(a, b) == std::max(c, d));

        unsigned const shared = bits(first) & bits(second);
        EXPECT_EQ(bits(first.Intersection(second)), shared);
        EXPECT_EQ(first.Intersection(second).Begin(), Day(std::max(a, c)));
        if (first.Empty() || second.Empty())
            continue;
        EXPECT_EQ(first.Contains(second), shared == bits(second));
        EXPECT_EQ(first.Intersects(second), shared != 0);
        TimePeriod const both = shared != 0 ? Days(std::min(a, c), std::max(b, d)) : TimePeriod();
        EXPECT_EQ(first.Union(second), both);
    }
}

TEST(TimePeriod, AtTheEdges)
{
    TimeOffset const month(0, 1, 0, 0, 0, 0, 0);
    EXPECT_EQ(TimePeriod(Day(3), TimeOffset(-DAY)), Days(3, 3));
    EXPECT_EQ(TimePeriod(Day(31), month).End(), Time(2000, 2, 29, 0, 0, 0, 0));
    EXPECT_EQ(TimePeriod(Day(20), Time(2000, 3, 10, 0, 0, 0, 1)).Offset(), TimeOffset(0, 1, 21, 0, 0, 0, 1));
    EXPECT_THROW(TimePeriod(Time::MinTime(), TimeOffset(-1, 0, 0, 0, 0, 0, 0)), std::out_of_range);

    // Empty periods have a place without holding it.
    EXPECT_TRUE(Days(1, 3).Contains(Days(1, 1)) && !Days(1, 3).Contains(Days(3, 3)));
    EXPECT_TRUE(Days(1, 3).Intersects(Days(2, 2)) && !Days(1, 3).Intersects(Days(1, 1)));
    EXPECT_EQ(Days(2, 2).Union(Days(1, 3)), Days(1, 3));

    // Months clamp each end by itself: the length changes, but not below nothing.
    EXPECT_EQ(Days(29, 31).Shift(month).Duration(), 0);
    EXPECT_EQ(TimePeriod(Day(31), Time(2000, 2, 28, 0, 0, 0, 0)).Shift(month).Duration(), 28 * DAY);
}

TEST(TimePeriod, TravelsAsText)
{
    std::string const written = testing::PrintToString(Days(1, 5));
    EXPECT_EQ(written, "2000-01-01 00:00:00.000/2000-01-05 00:00:00.000");

    TimePeriod period;
    std::istringstream(written) >> period;
    EXPECT_EQ(period, Days(1, 5));
    std::istringstream("2000-01-05 00:00:00.0 2000-01-01 00:00:00.000") >> period;
    EXPECT_EQ(period, Days(5, 5));
    for (std::string const in : {"", "2000-01-01 00:00:00.000", "2000-01-01 00:00:00.000/2000-01-05", "x"})
    {
        std::istringstream stream(in);
        EXPECT_THROW(stream >> period, TimeException) << in;
        EXPECT_EQ(period, Days(5, 5)) << in;
    }
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
