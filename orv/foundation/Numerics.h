#pragma once

#include "orv/Export.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

/// \file
/// Missing values, classification, and the exact text of a double (IEEE 754 binary64). Every function is safe
/// on any thread.

namespace Zan::Orv::Core::Service {

/// Marks a missing number: the quiet NaN 0x7FF8000000000000. It equals nothing, itself included; ask
/// `IsNullValue`.
inline constexpr double NullValue = std::numeric_limits<double>::quiet_NaN();

namespace Detail {

// Classification looks at bits: callers compile with options under which `x != x` is folded to false.
inline std::uint64_t MagnitudeBits(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits & 0x7FFFFFFFFFFFFFFFu;
}

inline constexpr std::uint64_t InfinityBits = 0x7FF0000000000000u;

} // namespace Detail

/// True unless `value` is an infinity or a NaN.
inline bool IsFinite(double value)
{
    return Detail::MagnitudeBits(value) < Detail::InfinityBits;
}

/// True for every NaN, quiet or signalling, of either sign.
inline bool IsNaN(double value)
{
    return Detail::MagnitudeBits(value) > Detail::InfinityBits;
}

/// True for every NaN, and not only for the pattern of `NullValue`.
inline bool IsNullValue(double value)
{
    return IsNaN(value);
}

/// True for positive infinity alone.
inline bool IsPosInfinity(double value)
{
    return Detail::MagnitudeBits(value) == Detail::InfinityBits && !(value < 0.0);
}

/// True for negative infinity alone.
inline bool IsNegInfinity(double value)
{
    return Detail::MagnitudeBits(value) == Detail::InfinityBits && value < 0.0;
}

/// The text of `value` with 20 digits behind the point, as printf's "%.20e" gives it in the "C" locale,
/// whatever the program's locale is; "NaN", "+Inf" or "-Inf" for the rest. A finite text reads back to the
/// same bits.
ORV_API std::string IEEEToString(double value);

/// Reads the number at the head of `text`, behind white space, in any form that "%le" of scanf takes in the
/// "C" locale. What follows the number is ignored. A magnitude too large gives an infinity, one too small a
/// zero.
///
/// \throws std::exception without a text for "+Inf" and "-Inf": infinities are written but not read back.
/// \throws std::runtime_error "Unrecognized number: '...'" for a text without a number.
ORV_API double IEEEFromString(std::string const& text);

} // namespace Zan::Orv::Core::Service
