#pragma once

#include "orv/platform/WideMultiply.h"

namespace Zan::Orv::Core::Service::Internal {

/// The exponents of the table: what a double times or by a power of ten needs for 21 digits.
inline constexpr int minPowerOfTen = -345;
inline constexpr int maxPowerOfTen = 345;

/// The first 128 bits of 10^exponent, the first of them set and what follows cut off: significand * 2^shift
/// <= 10^exponent < (significand + 1) * 2^shift
struct PowerOfTen
{
    Platform::UInt128 significand;
    int shift;
};

PowerOfTen GetPowerOfTen(int exponent);

} // namespace Zan::Orv::Core::Service::Internal
