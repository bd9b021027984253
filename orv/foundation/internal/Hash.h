#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// What the hashes of the value classes are made of. They are stored nowhere, and may change with any build.

namespace Zan::Orv::Core::Service::Internal {

/// Each bit of `x` decides about half of the result's. No two numbers give the same.
constexpr std::uint64_t Spread(std::uint64_t x)
{
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9u;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBu;
    return x ^ (x >> 31);
}

/// The hash of some numbers in their order.
template<class... Numbers>
constexpr std::size_t HashOf(Numbers... numbers)
{
    std::uint64_t hash = 0;
    ((hash = Spread(hash + 0x9E3779B97F4A7C15u + static_cast<std::uint64_t>(numbers))), ...);
    return static_cast<std::size_t>(hash);
}

/// The same for all texts that are equal by `NoCaseStringEqual`.
std::size_t NoCaseHash(std::string const& text);

} // namespace Zan::Orv::Core::Service::Internal
