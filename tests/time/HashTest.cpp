#include "Times.h"

#include "orv/time/TimeFrequency.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimePeriod.h"
#include "orv/time/TimeString.h"
#include "orv/time/YearMonthDay.h"

#include <unordered_set>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

namespace {

// Each value is another one by equality, and differs from its neighbours in no more than it must.
template<class T>
void ExpectDistinct(char const* name, std::vector<T> const& values)
{
    std::unordered_set<std::size_t> hashes;
    for (T const& value : values)
        EXPECT_TRUE(hashes.insert(std::hash<T>()(value)).second) << name << " " << hashes.size();
    EXPECT_EQ(std::unordered_set<T>(values.begin(), values.end()).size(), values.size()) << name;
}

TEST(HashTest, tells_values_apart_by_each_of_their_parts)
{
    using Unit = TimeFrequency::FrequencyUnit;
    ExpectDistinct<Time>("Time", {Time(), Time::MaxTime(), At(0), At(1), At(-1), At(1000), Time() -= 1});
    ExpectDistinct<TimeOffset>("TimeOffset", {{}, {1, 0, 0, 0, 0, 0, 0}, {0, 1, 0, 0, 0, 0, 0}});
    ExpectDistinct<TimePeriod>("TimePeriod",
                               {{At(0), At(0)}, {At(0), At(1)}, {At(1), At(1)}, {At(1), At(2)}});
    ExpectDistinct<TimeFrequency>("TimeFrequency", {{1, Unit::Years}, {12, Unit::Months}, {1, Unit::Months}});
    ExpectDistinct<YearMonthDay>("YearMonthDay",
                                 {{1, 2, 3}, {2, 1, 3}, {1, 3, 2}, {-1, 2, 3}, {1, 2, 4}, {2, 2, 3}});
    ExpectDistinct<TimeString>("TimeString",
                               {{}, TimeString("start"), TimeString("START"), TimeString("START ")});
}

// Hourly, as times come: tables whose sizes are powers of two look at the lowest bits alone.
TEST(HashTest, spreads_over_the_lowest_bits)
{
    std::vector<int> counts(64);
    for (int hour = 0; hour < 6400; ++hour)
        ++counts[std::hash<Time>()(At(hour * HOUR)) % counts.size()];
    for (int const count : counts)
        EXPECT_NEAR(count, 100, 50);
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
