#include "orv/time/TimeAverager.h"
#include "orv/foundation/Numerics.h"
#include "tests/support/ExpectThrow.h"
#include "tests/time/Times.h"

#include <utility>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using Sample = TimeAverager::TimeSampleStyle;
using Average = TimeAverager::TimeAverageStyle;

TEST(TimeAverager, RefusesUnknownStyles)
{
    TimeAverager averager;
    averager.addSamplePoint(At(10), 2.0);
    for (int const wild : {-1, 4})
    {
        auto const style = static_cast<Sample>(wild);
        EXPECT_TRUE(Throws<std::invalid_argument>([&] { averager.getPointValue(At(10), style); },
                                                  "Unknown sample type"));
        EXPECT_TRUE(IsNullValue(averager.getPointValue(At(11), style)));
        for (long long const to : {-5, 0, 5})
            EXPECT_TRUE(Throws<std::invalid_argument>(
                [&] { averager.getAverageValue(At(0), At(to), static_cast<Average>(wild)); },
                "Unknown average type"));
    }
}

TEST(TimeAverager, CopiesAreDeep)
{
    TimeAverager first;
    first.addSamplePoint(At(0), 1.0);
    TimeAverager second(first);
    TimeAverager third;
    TimeAverager const& alias = third = first;
    third = alias;
    first.addSamplePoint(At(0), 5.0);
    for (auto const& [averager, value] : {std::pair(&first, 5.0), {&second, 1.0}, {&third, 1.0}})
        EXPECT_EQ(averager->getPointValue(At(0), Sample::Linear), value);
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
