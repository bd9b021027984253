#include "Times.h"

#include "orv/time/TimeAverager.h"

#include <iterator>
#include <ranges>

namespace Zan::Orv::Core::Service::Tests {

namespace {

using Range = TimeAverager::SampleRange;

static_assert(std::forward_iterator<TimeAverager::SampleIterator>);
static_assert(std::ranges::forward_range<Range> && std::ranges::view<Range> &&
              std::ranges::borrowed_range<Range>);

TEST(SampleRangeTest, is_empty_where_nothing_was_added)
{
    TimeAverager const averager;
    EXPECT_TRUE(averager.getSamples().empty());
    EXPECT_EQ(TimeAverager::SampleIterator(), TimeAverager::SampleIterator());
}

TEST(SampleRangeTest, ends_behind_the_last_sample_of_a_block_that_is_full)
{
    TimeAverager averager;
    for (int count = 1; count <= 2050; ++count)
    {
        averager.addSamplePoint(At(count), count);
        ASSERT_EQ(std::ranges::distance(averager.getSamples()), count);
    }
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
