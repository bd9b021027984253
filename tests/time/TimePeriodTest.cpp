#include "orv/time/TimePeriod.h"
#include "orv/time/TimeOffset.h"
#include "tests/time/Times.h"

#include <algorithm>
#include <sstream>

namespace Zan::Orv::Core::Service::Tests {
namespace {

TimePeriod Days(int begin, int end)
{
    return TimePeriod(Date(2000, 1, begin), Date(2000, 1, end));
}

// Periods of a few days are sets of days; the class has to agree with the sets.
TEST(TimePeriod, AgreesWithSetsOfDays)
{
    auto const bits = [](TimePeriod const& period) {
        unsigned set = 0;
        for (int day = 1; day <= 6; ++day)
            set |= period.Contains(Date(2000, 1, day)) ? 1u << day : 0;
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
        EXPECT_EQ(first.Duration(), std::max(b - a, 0) * DAY);
        EXPECT_EQ(first == second, a == c && std::max(a, b) == std::max(c, d));

        unsigned const shared = bits(first) & bits(second);
        EXPECT_EQ(bits(first.Intersection(second)), shared);
        EXPECT_EQ(first.Intersection(second).Begin(), Date(2000, 1, std::max(a, c)));
        if (first.Empty() || second.Empty())
            continue;
        EXPECT_EQ(first.Contains(second), shared == bits(second));
        EXPECT_EQ(first.Intersects(second), shared != 0);
        EXPECT_EQ(first.Union(second), shared != 0 ? Days(std::min(a, c), std::max(b, d)) : TimePeriod());
    }
}

TEST(TimePeriod, AtTheEdges)
{
    TimeOffset const month(0, 1, 0, 0, 0, 0, 0);
    EXPECT_EQ(TimePeriod(Date(2000, 1, 3), TimeOffset(-DAY)), Days(3, 3));
    EXPECT_EQ(TimePeriod(Date(2000, 1, 31), month).End(), Date(2000, 2, 29));
    EXPECT_EQ(TimePeriod(Date(2000, 1, 20), Time(2000, 3, 10, 0, 0, 0, 1)).Offset(),
              TimeOffset(0, 1, 21, 0, 0, 0, 1));

    // Empty periods have a place without holding it.
    EXPECT_TRUE(Days(1, 3).Contains(Days(1, 1)) && !Days(1, 3).Contains(Days(3, 3)));
    EXPECT_TRUE(Days(1, 3).Intersects(Days(2, 2)) && !Days(1, 3).Intersects(Days(1, 1)));
    EXPECT_EQ(Days(2, 2).Union(Days(1, 3)), Days(1, 3));

    // Months clamp each end by itself: the length changes, but not below nothing.
    EXPECT_EQ(Days(29, 31).Shift(month).Duration(), 0);
    EXPECT_EQ(TimePeriod(Date(2000, 1, 31), Date(2000, 2, 28)).Shift(month).Duration(), 28 * DAY);
}

TEST(TimePeriod, TravelsAsText)
{
    EXPECT_EQ(testing::PrintToString(Days(1, 5)), "2000-01-01 00:00:00.000/2000-01-05 00:00:00.000");
    TimePeriod period;
    for (std::string const separator : {" ", "/"})
    {
        period = TimePeriod();
        std::istringstream("2000-01-05 00:00:00.0" + separator + "2000-01-01 00:00:00.000") >> period;
        EXPECT_EQ(period, Days(5, 5)) << separator;
        EXPECT_FALSE(period != Days(5, 5));
    }
    for (std::string const in : {"2000-01-01 00:00:00.000", "2000-01-01 00:00:00.000/2000-01-05", "x"})
    {
        EXPECT_THROW(std::istringstream(in) >> period, TimeException) << in;
        EXPECT_EQ(period, Days(5, 5)) << in;
    }
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
