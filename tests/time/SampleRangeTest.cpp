#include "Times.h"

#include "orv/foundation/Numerics.h"
#include "orv/time/TimeAverager.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <ranges>

namespace Zan::Orv::Core::Service::Tests {

namespace {

using Range = TimeAverager::SampleRange;

static_assert(std::forward_iterator<TimeAverager::SampleIterator>);
static_assert(std::ranges::forward_range<Range> && std::ranges::view<Range> &&
              std::ranges::borrowed_range<Range>);

// Reversed and in several blocks, with a gap and a sample that was replaced.
TEST(SampleRangeTest, shows_each_sample_once_and_in_order)
{
    TimeAverager averager;
    std::map<Time, double> expected;
    auto const add = [&](long long milliseconds, double value) {
        averager.addSamplePoint(At(milliseconds), value);
        expected[At(milliseconds)] = value;
    };
    for (int i = 5000; i-- > 0;)
        add(i * 10, i);
    add(12340, NullValue);
    add(77, 0.5);
    add(0, -1.0);

    auto const same = [](auto const& a, auto const& b) {
        return a.first == b.first &&
               (a.second == b.second || (IsNullValue(a.second) && IsNullValue(b.second)));
    };
    auto const samples = averager.getSamples();
    EXPECT_TRUE(std::equal(samples.begin(), samples.end(), expected.begin(), expected.end(), same));
}

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

TEST(SampleRangeTest, goes_through_the_algorithms_of_ranges)
{
    TimeAverager averager;
    for (int day = 0; day < 10; ++day)
        averager.addSamplePoint(At(day * DAY), day == 4 ? NullValue : 9.0 - day);

    auto const found = std::ranges::lower_bound(averager.getSamples(), At(3 * DAY + 1), {},
                                                [](auto const& s) { return s.first; });
    EXPECT_TRUE(IsNullValue((*found).second));
    EXPECT_EQ((*std::next(found)).first, At(5 * DAY));
    EXPECT_EQ(
        std::ranges::count_if(averager.getSamples(), [](auto const& s) { return IsNullValue(s.second); }), 1);
    EXPECT_EQ(
        (*std::ranges::min_element(averager.getSamples(), {}, [](auto const& s) { return s.second; })).first,
        At(9 * DAY));
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
