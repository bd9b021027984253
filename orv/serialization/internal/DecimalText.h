#pragma once

#include "orv/foundation/internal/Characters.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>
#include <type_traits>

namespace Zan::Orv::Core::Service::Internal {

/// The decimal number at the head of a text, behind white space, as far as it can matter: far outside of 32
/// bits it saturates. No digit at all is 0.
inline long long ScanDecimal(std::string_view text)
{
    constexpr long long enough = std::numeric_limits<long long>::max() / 100;
    std::size_t at = 0;
    while (at < text.size() && IsSpace(text[at]))
        ++at;
    bool const negative = at < text.size() && text[at] == '-';
    if (negative || (at < text.size() && text[at] == '+'))
        ++at;
    long long value = 0;
    for (; at < text.size() && IsDigit(text[at]); ++at)
        value = std::min(value * 10 + (text[at] - '0'), enough);
    return negative ? -value : value;
}

/// An integer of a document. All are read with 32 bits, as the form has always been read: a number beyond
/// them gives the nearest one that fits, and then loses the bits that the target lacks. A negative number
/// wraps in an unsigned target.
template<class T>
T ReadDecimal(std::string_view text)
{
    constexpr long long lowest = std::numeric_limits<std::int32_t>::min();
    constexpr long long highest = std::numeric_limits<std::int32_t>::max();
    constexpr long long highestUnsigned = std::numeric_limits<std::uint32_t>::max();

    long long const value = ScanDecimal(text);
    if constexpr (std::is_same_v<T, unsigned long long>)
    {
        long long const magnitude = value < 0 ? -value : value;
        return magnitude > highestUnsigned ? static_cast<T>(highestUnsigned)
                                           : static_cast<std::uint32_t>(value);
    }
    else if constexpr (std::is_same_v<T, unsigned int>)
        return static_cast<T>(std::clamp(value, lowest, highestUnsigned));
    else
        return static_cast<T>(std::clamp(value, lowest, highest));
}

} // namespace Zan::Orv::Core::Service::Internal
