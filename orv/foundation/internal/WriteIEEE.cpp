#include "orv/foundation/Numerics.h"
#include "orv/foundation/internal/NumberText.h"
#include "orv/foundation/internal/PowersOfTen.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace Zan::Orv::Core::Service::Internal {

namespace {

using Platform::Multiply;
using Platform::UInt128;

// A whole number below 10^21 in two parts: nine digits and twelve digits.
struct Digits21
{
    std::uint64_t first9;
    std::uint64_t last12;
};

constexpr std::uint64_t tenTo12 = 1'000'000'000'000;
constexpr std::uint64_t tenTo9 = 1'000'000'000;
constexpr std::uint64_t fiveTo12 = 244'140'625;

// mantissa * 2^exponent * 10^power, rounded to a whole number. The mantissa has its highest bit set, and the
// result lies between 10^20 and 2 * 10^21. False when the bits that are kept of the power do not tell which
// way to round.
bool Scale(std::uint64_t mantissa, int exponent, int power, UInt128& result)
{
    PowerOfTen const ten = GetPowerOfTen(power);
    UInt128 const upper = Multiply(mantissa, ten.significand.high);
    UInt128 const lower = Multiply(mantissa, ten.significand.low);
    std::uint64_t const middle = upper.low + lower.high;
    std::uint64_t const top = upper.high + (middle < upper.low ? 1 : 0);

    // The product has 191 or 192 bits, top:middle:lower.low, and is less than 2^64 too small. Its whole part
    // ends within `middle`.
    int const fractionBits = -(exponent + ten.shift) - 64; // of `middle`: between 56 and 62
    std::uint64_t const fraction = middle & ((std::uint64_t{1} << fractionBits) - 1);
    std::uint64_t const half = std::uint64_t{1} << (fractionBits - 1);
    if (fraction == half || fraction == half - 1)
        return false;

    result.high = top >> fractionBits;
    result.low = (top << (64 - fractionBits)) | (middle >> fractionBits);
    if (fraction > half && ++result.low == 0)
        ++result.high;
    return true;
}

// number / 10^12 and the rest. The number has at most 71 bits, and 10^12 is 2^12 * 5^12.
Digits21 Split(UInt128 const& number)
{
    std::uint64_t const first = ((number.high << 52) | (number.low >> 12)) / fiveTo12;
    return {first, number.low - first * tenTo12};
}

constexpr std::array<char, 200> MakePairs()
{
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i)
    {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}

void WritePair(char* at, std::size_t number)
{
    static constexpr std::array<char, 200> pairs = MakePairs();
    at[0] = pairs[2 * number];
    at[1] = pairs[2 * number + 1];
}

void WriteFour(char* at, std::uint32_t number)
{
    WritePair(at, number / 100);
    WritePair(at + 2, number % 100);
}

void WriteEight(char* at, std::uint32_t number)
{
    WriteFour(at, number / 10000);
    WriteFour(at + 4, number % 10000);
}

char* WriteExponent(char* at, int exponent)
{
    *at++ = 'e';
    *at++ = exponent < 0 ? '-' : '+';
    auto const magnitude = static_cast<std::uint32_t>(exponent < 0 ? -exponent : exponent);
    if (magnitude >= 100)
        *at++ = static_cast<char>('0' + magnitude / 100);
    WritePair(at, magnitude % 100);
    return at + 2;
}

// The 21 digits of a positive number that is finite, and the exponent of the first one. False when they are
// not sure.
bool FindDigits(double value, Digits21& digits, int& decimal)
{
    auto const bits = std::bit_cast<std::uint64_t>(value);
    auto const biased = static_cast<int>(bits >> 52);
    std::uint64_t mantissa = bits & ((std::uint64_t{1} << 52) - 1);
    if (biased != 0)
        mantissa |= std::uint64_t{1} << 52;
    int const leading = std::countl_zero(mantissa);
    mantissa <<= leading;
    int const exponent = (biased != 0 ? biased : 1) - 1075 - leading; // value is mantissa * 2^exponent

    // The decimal exponent by that of the power of two below, times log10(2) * 2^18; it may be one too low.
    decimal = ((exponent + 63) * 78913) >> 18;
    UInt128 number{};
    if (!Scale(mantissa, exponent, 20 - decimal, number))
        return false;
    digits = Split(number);
    if (digits.first9 >= tenTo9)
    {
        ++decimal;
        if (!Scale(mantissa, exponent, 20 - decimal, number))
            return false;
        digits = Split(number);
    }
    return true;
}

} // namespace

// The digits come from one multiplication by a power of ten of 128 bits, as in the method of R. Adams' Ryu
// printf (2019) but for one length only, which is all that this text has. Where 128 bits do not decide the
// last digit, which happens for exact halves and once in 10^16 other numbers, the standard library does.
char* WriteIEEE(char* first, double value)
{
    auto const literal = [first](std::string_view text) { return first + text.copy(first, text.size()); };
    if (IsNaN(value))
        return literal("NaN");
    if (!IsFinite(value))
        return literal(value >= 0.0 ? "+Inf" : "-Inf");

    char* at = first;
    if (std::bit_cast<std::uint64_t>(value) >> 63 != 0)
    {
        *at++ = '-';
        value = -value;
    }
    Digits21 digits{};
    int decimal = 0;
    if (value != 0.0 && !FindDigits(value, digits, decimal))
        return std::to_chars(at, first + MaxIEEEText, value, std::chars_format::scientific, 20).ptr;

    auto const first9 = static_cast<std::uint32_t>(digits.first9);
    at[0] = static_cast<char>('0' + first9 / 100'000'000);
    at[1] = '.';
    WriteEight(at + 2, first9 % 100'000'000);
    WriteEight(at + 10, static_cast<std::uint32_t>(digits.last12 / 10'000));
    WriteFour(at + 18, static_cast<std::uint32_t>(digits.last12 % 10'000));
    return WriteExponent(at + 22, decimal);
}

} // namespace Zan::Orv::Core::Service::Internal
