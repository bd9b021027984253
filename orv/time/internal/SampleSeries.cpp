#include "orv/time/internal/SampleSeries.h"

#include <algorithm>
#include <iterator>

namespace Zan::Orv::Core::Service {

namespace {

constexpr auto isBefore = [](SampleSeries::Sample const& sample, long long time) {
    return sample.time < time;
};
constexpr auto isAfter = [](long long time, SampleSeries::Sample const& sample) {
    return time < sample.time;
};

} // namespace

void SampleSeries::Append(long long time, double value)
{
    if (blocks_.empty() || blocks_.back().samples.size() == blockSize)
    {
        std::vector<Sample> samples;
        samples.reserve(blocks_.empty() ? 0 : blockSize); // a short series stays small
        samples.push_back({time, value});
        blocks_.push_back({time, std::move(samples)});
        return;
    }
    blocks_.back().samples.push_back({time, value});
    blocks_.back().lastTime = time;
}

void SampleSeries::Set(long long time, double value)
{
    if (blocks_.empty() || time > blocks_.back().lastTime)
        return Append(time, value);

    auto block = std::lower_bound(blocks_.begin(), blocks_.end(), time,
                                  [](Block const& candidate, long long t) { return candidate.lastTime < t; });
    auto at = std::lower_bound(block->samples.begin(), block->samples.end(), time, isBefore);
    if (at->time == time)
    {
        at->value = value;
        return;
    }
    if (block->samples.size() == blockSize)
    {
        // The lower half moves into a block of its own ahead of this one.
        auto const middle = block->samples.begin() + blockSize / 2;
        std::vector<Sample> lower;
        lower.reserve(blockSize);
        lower.assign(block->samples.begin(), middle);
        long long const lowerLast = lower.back().time;
        block = blocks_.insert(block, {lowerLast, std::move(lower)});
        auto const upper = std::next(block);
        upper->samples.erase(upper->samples.begin(), upper->samples.begin() + blockSize / 2);
        if (time > lowerLast)
            block = upper;
        at = std::lower_bound(block->samples.begin(), block->samples.end(), time, isBefore);
    }
    block->samples.insert(at, {time, value});
    block->lastTime = std::max(block->lastTime, time);
}

SampleSeries::Iterator SampleSeries::Begin() const
{
    return Iterator(blocks_.data(), 0, blocks_.data() + blocks_.size());
}

SampleSeries::Iterator SampleSeries::End() const
{
    Block const* const end = blocks_.data() + blocks_.size();
    return Iterator(end, 0, end);
}

SampleSeries::Iterator SampleSeries::LowerBound(long long time) const
{
    auto const block =
        std::lower_bound(blocks_.begin(), blocks_.end(), time,
                         [](Block const& candidate, long long t) { return candidate.lastTime < t; });
    if (block == blocks_.end())
        return End();
    auto const at = std::lower_bound(block->samples.begin(), block->samples.end(), time, isBefore);
    return Iterator(&*block, static_cast<std::size_t>(at - block->samples.begin()),
                    blocks_.data() + blocks_.size());
}

SampleSeries::Iterator SampleSeries::UpperBound(long long time) const
{
    auto const block =
        std::upper_bound(blocks_.begin(), blocks_.end(), time,
                         [](long long t, Block const& candidate) { return t < candidate.lastTime; });
    if (block == blocks_.end())
        return End();
    auto const at = std::upper_bound(block->samples.begin(), block->samples.end(), time, isAfter);
    return Iterator(&*block, static_cast<std::size_t>(at - block->samples.begin()),
                    blocks_.data() + blocks_.size());
}

} // namespace Zan::Orv::Core::Service
