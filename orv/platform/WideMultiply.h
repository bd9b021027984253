#pragma once

#include <cstdint>

namespace Zan::Orv::Core::Service::Platform {

struct UInt128
{
    std::uint64_t high;
    std::uint64_t low;
};

/// The whole product of two 64-bit numbers, by the machine's own instruction where the compiler has a way to
/// say so.
inline UInt128 Multiply(std::uint64_t a, std::uint64_t b)
{
#if defined(__SIZEOF_INT128__)
    __extension__ using Wide = unsigned __int128;
    Wide const product = static_cast<Wide>(a) * b;
    return {static_cast<std::uint64_t>(product >> 64), static_cast<std::uint64_t>(product)};
#else
    std::uint64_t const aLow = a & 0xFFFFFFFFu, aHigh = a >> 32;
    std::uint64_t const bLow = b & 0xFFFFFFFFu, bHigh = b >> 32;
    std::uint64_t const lows = aLow * bLow;
    std::uint64_t const cross = aHigh * bLow + (lows >> 32); // at most (2^32-1)^2 + 2^32-1
    std::uint64_t const middle = aLow * bHigh + (cross & 0xFFFFFFFFu);
    return {aHigh * bHigh + (cross >> 32) + (middle >> 32), (middle << 32) | (lows & 0xFFFFFFFFu)};
#endif
}

} // namespace Zan::Orv::Core::Service::Platform
