#include "orv/instrumentation/MemoryTracker.h"

namespace Zan::Orv::Core::Service {

// Open addressing with linear probing, at most three quarters full, and no marks of what was erased: those
// behind it move up. A record is 16 bytes, and an insertion costs no allocation but when the table doubles.

// Blocks are 16 bytes apart. Multiplying by 2^64 / golden ratio spreads them over the upper bits.
std::size_t MemoryTracker::BlockTable::Home(void const* address) const
{
    std::uint64_t const number = reinterpret_cast<std::uintptr_t>(address) >> 4;
    return static_cast<std::size_t>((number * 0x9E3779B97F4A7C15u) >> 32) & (places_.size() - 1);
}

std::size_t MemoryTracker::BlockTable::Next(std::size_t place) const
{
    return (place + 1) & (places_.size() - 1);
}

// The place of the address, or the one that it would take. There is a free one.
std::size_t MemoryTracker::BlockTable::Find(void const* address) const
{
    std::size_t place = Home(address);
    while (places_[place].used && places_[place].address != address)
        place = Next(place);
    return place;
}

void MemoryTracker::BlockTable::Grow()
{
    std::vector<Block> old(places_.empty() ? 1024 : 2 * places_.size());
    old.swap(places_);
    for (Block const& block : old)
        if (block.used)
            places_[Find(block.address)] = block;
}

void MemoryTracker::BlockTable::Insert(void* address, std::uint32_t size)
{
    if (4 * (count_ + 1) > 3 * places_.size())
        Grow();
    Block& block = places_[Find(address)];
    if (block.used)
        return;
    block = {address, size, true};
    ++count_;
}

std::optional<std::uint32_t> MemoryTracker::BlockTable::Take(void const* address)
{
    if (count_ == 0)
        return std::nullopt;
    std::size_t gap = Find(address);
    if (!places_[gap].used)
        return std::nullopt;
    std::uint32_t const size = places_[gap].size;
    for (std::size_t place = Next(gap); places_[place].used; place = Next(place))
    {
        // One whose home lies behind the gap would not be found in it.
        std::size_t const mask = places_.size() - 1;
        std::size_t const fromHome = (place - Home(places_[place].address)) & mask;
        if (fromHome >= ((place - gap) & mask))
        {
            places_[gap] = places_[place];
            gap = place;
        }
    }
    places_[gap].used = false;
    --count_;
    return size;
}

void MemoryTracker::BlockTable::Swap(BlockTable& other) noexcept
{
    places_.swap(other.places_);
    std::swap(count_, other.count_);
}

} // namespace Zan::Orv::Core::Service
