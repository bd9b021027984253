#include "orv/foundation/Numerics.h"
#include "orv/foundation/internal/Characters.h"
#include "orv/foundation/internal/NumberText.h"
#include "orv/foundation/internal/PowersOfTen.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>
#include <system_error>

namespace Zan::Orv::Core::Service::Internal {

namespace {

bool StartsWith(std::string_view text, std::string_view head)
{
    return text.substr(0, head.size()) == head;
}

// ---- the fast path: a text of WriteIEEE, "d.dddddddddddddddddddde+dd" ----

constexpr std::size_t significandText = 22; // 21 digits and the point

// Eight digits at once: pairs, fours and the whole are summed in the lanes of one word. False for other
// characters.
bool ReadEight(char const* at, std::uint32_t& number)
{
    std::uint64_t lanes = 0;
    for (int i = 0; i < 8; ++i)
        lanes |= static_cast<std::uint64_t>(static_cast<unsigned char>(at[i])) << (8 * i);
    std::uint64_t const values = lanes - 0x3030303030303030u;
    std::uint64_t const tooHigh = lanes + 0x4646464646464646u;
    if (((values | tooHigh) & 0x8080808080808080u) != 0)
        return false;
    std::uint64_t const pairs = values * 10 + (values >> 8);
    constexpr std::uint64_t mask = 0x000000FF000000FFu;
    std::uint64_t const low = (pairs & mask) * (100 + (std::uint64_t{1000000} << 32));
    std::uint64_t const high = ((pairs >> 16) & mask) * (1 + (std::uint64_t{10000} << 32));
    number = static_cast<std::uint32_t>((low + high) >> 32);
    return true;
}

// digits * 10^power as a double, for 21 digits that do not begin with a zero. False where 128 bits of the
// power do not decide the last bit, and outside of the normal numbers.
bool ToDouble(std::uint64_t first9, std::uint64_t last12, int power, double& value)
{
    using Platform::Multiply;
    using Platform::UInt128;

    // The digits as one number of 67 to 70 bits, and of that the first 64: at most one too small.
    UInt128 whole = Multiply(first9, 1'000'000'000'000);
    whole.low += last12;
    if (whole.low < last12)
        ++whole.high;
    int const cut = 64 - std::countl_zero(whole.high);
    // At least 3. NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult)
    std::uint64_t const significand = (whole.high << (64 - cut)) | (whole.low >> cut);

    PowerOfTen const ten = GetPowerOfTen(power);
    UInt128 const upper = Multiply(significand, ten.significand.high);
    UInt128 const lower = Multiply(significand, ten.significand.low);
    std::uint64_t const middle = upper.low + lower.high;
    std::uint64_t top = upper.high + (middle < upper.low ? 1 : 0);
    int exponent = cut + ten.shift + 128; // of the lowest bit of `top`, which is at most two too small

    int const dropped = 10 + static_cast<int>(top >> 63);
    std::uint64_t const rest = top & ((std::uint64_t{1} << dropped) - 1);
    std::uint64_t const half = std::uint64_t{1} << (dropped - 1);
    if (rest <= half && rest + 2 >= half)
        return false;
    top = (top >> dropped) + (rest > half ? 1 : 0);
    exponent += dropped;
    if (top == std::uint64_t{1} << 53) // rounded up to the next power of two
    {
        top >>= 1;
        ++exponent;
    }
    int const biased = exponent + 1075;
    if (biased < 1 || biased > 2046)
        return false;
    value = std::bit_cast<double>((static_cast<std::uint64_t>(biased) << 52) |
                                  (top & ((std::uint64_t{1} << 52) - 1)));
    return true;
}

// False for any text but one that WriteIEEE makes of a normal number.
bool ReadWritten(std::string_view text, double& value)
{
    bool const negative = !text.empty() && text.front() == '-';
    if (negative)
        text.remove_prefix(1);
    if (text.size() < significandText + 4 || text[0] < '1' || text[0] > '9' || text[1] != '.')
        return false;
    std::uint32_t second = 0;
    std::uint32_t third = 0;
    if (!ReadEight(text.data() + 2, second) || !ReadEight(text.data() + 10, third))
        return false;
    std::uint64_t last12 = third;
    for (std::size_t i = 18; i < significandText; ++i)
    {
        if (!IsDigit(text[i]))
            return false;
        last12 = last12 * 10 + static_cast<std::uint64_t>(text[i] - '0');
    }

    std::string_view const exponent = text.substr(significandText);
    bool const below = exponent[1] == '-';
    if (exponent[0] != 'e' || (!below && exponent[1] != '+'))
        return false;
    int decimal = 0;
    std::size_t at = 2;
    for (; at < exponent.size() && at < 6 && IsDigit(exponent[at]); ++at)
        decimal = decimal * 10 + (exponent[at] - '0');
    bool const goesOn = at < exponent.size() && IsDigit(exponent[at]);
    if (at == 2 || goesOn || decimal > 308)
        return false;

    auto const first9 = static_cast<std::uint64_t>(text[0] - '0') * 100'000'000 + second;
    if (!ToDouble(first9, last12, (below ? -decimal : decimal) - 20, value))
        return false;
    if (negative)
        value = -value;
    return true;
}

// ---- any other text ----

// What a number becomes that from_chars found, but found out of range: an infinity or a zero. The decimal
// exponent of the first digit that counts decides, and the exponent part may have any length.
double OutOfRange(std::string_view number, bool hexadecimal)
{
    auto const isZeroOrPoint = [](char c) { return c == '0' || c == '.'; };
    std::size_t const exponentAt = number.find_first_of(hexadecimal ? "pP" : "eE");
    std::string_view const digits = number.substr(0, exponentAt);

    std::size_t const point = digits.find('.');
    std::size_t first = 0;
    while (first < digits.size() && isZeroOrPoint(digits[first]))
        ++first;
    std::size_t const wholeDigits = point == std::string_view::npos ? digits.size() : point;
    double magnitude = static_cast<double>(wholeDigits) - static_cast<double>(first);
    if (hexadecimal)
        magnitude *= 4; // bits to a digit: the exponent counts in powers of two

    if (exponentAt != std::string_view::npos)
    {
        std::string_view exponent = number.substr(exponentAt + 1);
        bool const negative = StartsWith(exponent, "-");
        if (negative || StartsWith(exponent, "+"))
            exponent.remove_prefix(1);
        double value = 0;
        for (char const c : exponent)
            value = value * 10 + (c - '0');
        magnitude += negative ? -value : value;
    }
    return magnitude > 0 ? HUGE_VAL : 0.0;
}

// from_chars takes numbers as strtod does, and scanf takes a little less: no "0x" without a digit behind it,
// and nothing that begins like "infinity" but is only the "inf" of it. It also lets a second sign pass in the
// exponent of a hexadecimal number, where neither of the others reads on.
std::string_view CutSecondSign(std::string_view hexadecimal)
{
    std::size_t const exponent = hexadecimal.find_first_of("pP");
    bool const twoSigns =
        exponent != std::string_view::npos && StartsWith(hexadecimal.substr(exponent + 1), "+-");
    return twoSigns ? hexadecimal.substr(0, exponent) : hexadecimal;
}

// The number at the head of `text`, without its sign. False when there is none.
bool ScanMagnitude(std::string_view text, double& value)
{
    bool const hexadecimal = StartsWith(text, "0x") || StartsWith(text, "0X");
    if (hexadecimal)
    {
        text.remove_prefix(2);
        if (text.find_first_of("0123456789abcdefABCDEF.") != 0)
            return false;
        text = CutSecondSign(text);
    }
    char const* const first = text.data();
    auto const [end, error] = std::from_chars(
        first, first + text.size(), value, hexadecimal ? std::chars_format::hex : std::chars_format::general);
    auto const length = static_cast<std::size_t>(end - first);
    if (error == std::errc::result_out_of_range)
        value = OutOfRange(text.substr(0, length), hexadecimal);
    else if (error != std::errc())
        return false;
    bool const onlyInf = length == 3 && !IsFinite(value) && text.size() > 3 && (text[0] | 0x20) == 'i';
    return !(onlyInf && (text[3] | 0x20) == 'i');
}

bool ScanNumber(std::string_view text, double& value)
{
    bool const negative = StartsWith(text, "-");
    if (negative || StartsWith(text, "+"))
        text.remove_prefix(1);
    // from_chars knows the minus sign itself, but a second sign is none of a number's.
    if (StartsWith(text, "-") || !ScanMagnitude(text, value))
        return false;
    if (negative)
        value = -value;
    return true;
}

} // namespace

double ReadIEEE(std::string_view text)
{
    std::string_view rest = text;
    while (!rest.empty() && IsSpace(rest.front()))
        rest.remove_prefix(1);

    double value = 0.0;
    if (ReadWritten(rest, value))
        return value;

    if (StartsWith(rest, "NaN"))
        return NullValue;
    if (StartsWith(rest, "+Inf") || StartsWith(rest, "-Inf"))
        throw std::exception();
    if (StartsWith(rest, "N") || !ScanNumber(rest, value))
        throw std::runtime_error("Unrecognized number: '" + std::string(text) + "'");
    return value;
}

} // namespace Zan::Orv::Core::Service::Internal
