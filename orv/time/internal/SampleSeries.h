#pragma once

#include <cstddef>
#include <vector>

namespace Zan::Orv::Core::Service {

/// Samples in order of time, at most one at a moment. They stand in blocks of sorted arrays: appending costs
/// what it does in one array, inserting moves no more than a block, and walking along is as fast as memory.
class SampleSeries
{
public:
    struct Sample
    {
        long long time; ///< milliseconds since `Time::MinTime()`
        double value;
    };

    class Iterator;

    /// Adds a sample or replaces the one at the same time.
    void Set(long long time, double value);

    bool IsEmpty() const { return blocks_.empty(); }
    Iterator Begin() const;
    Iterator End() const;
    /// The first sample not before `time`.
    Iterator LowerBound(long long time) const;
    /// The first sample after `time`.
    Iterator UpperBound(long long time) const;

    /// The same samples by position.
    std::size_t BlockCount() const { return blocks_.size(); }
    std::vector<Sample> const& InBlock(std::size_t block) const { return blocks_[block].samples; }

private:
    struct Block
    {
        long long lastTime; // that of its last sample, beside the others' for the search
        std::vector<Sample> samples;
    };

    static constexpr std::size_t blockSize = 1024;

    void Append(long long time, double value);

    std::vector<Block> blocks_; // none is empty
};

class SampleSeries::Iterator
{
public:
    // Not of the end, which points nowhere. NOLINTNEXTLINE(clang-analyzer-core.uninitialized.UndefReturn)
    Sample const& operator*() const { return *at_; }
    Sample const* operator->() const { return at_; }

    Iterator& operator++()
    {
        if (++at_ == end_)
            EnterBlock(block_ + 1, 0);
        return *this;
    }

    Iterator& operator--()
    {
        if (at_ == begin_)
        {
            Block const& previous = *(block_ - 1);
            EnterBlock(block_ - 1, previous.samples.size() - 1);
        }
        else
            --at_;
        return *this;
    }

    bool operator==(Iterator const& other) const { return at_ == other.at_; }

private:
    friend class SampleSeries;

    Iterator(Block const* block, std::size_t index, Block const* blocksEnd) : blocksEnd_(blocksEnd)
    {
        EnterBlock(block, index);
    }

    // At the end of the blocks all three pointers are null.
    void EnterBlock(Block const* block, std::size_t index)
    {
        block_ = block;
        begin_ = block == blocksEnd_ ? nullptr : block->samples.data();
        at_ = begin_ + index;
        end_ = block == blocksEnd_ ? nullptr : begin_ + block->samples.size();
    }

    Block const* block_;
    Block const* blocksEnd_;
    Sample const* begin_;
    Sample const* at_;
    Sample const* end_;
};

} // namespace Zan::Orv::Core::Service
