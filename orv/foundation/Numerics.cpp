#include "orv/foundation/Numerics.h"

#include "orv/foundation/internal/NumberText.h"

#include <charconv>
#include <cmath>
#include <exception>
#include <stdexcept>
#include <system_error>

namespace Zan::Orv::Core::Service
{

namespace
{

bool IsSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool StartsWith(std::string_view text, std::string_view head)
{
    return text.substr(0, head.size()) == head;
}

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

    if (exponentAt != std::string_view::npos) {
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

// The number at the head of `text`, without its sign. False when there is none.
bool ScanMagnitude(std::string_view text, double& value)
{
    bool const hexadecimal = StartsWith(text, "0x") || StartsWith(text, "0X");
    if (hexadecimal)
        text.remove_prefix(2);
    if (hexadecimal && text.find_first_of("0123456789abcdefABCDEF.") != 0) {
        value = 0.0; // the zero of "0x" is a number of its own
        return true;
    }
    char const* const first = text.data();
    auto const [end, error] = std::from_chars(
        first, first + text.size(), value, hexadecimal ? std::chars_format::hex : std::chars_format::general);
    if (error == std::errc::result_out_of_range)
        value = OutOfRange(text.substr(0, static_cast<std::size_t>(end - first)), hexadecimal);
    else if (error != std::errc()) {
        value = 0.0;
        return hexadecimal;
    }
    return true;
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

char* Internal::WriteIEEE(char* first, double value)
{
    auto const literal = [first](std::string_view text) { return first + text.copy(first, text.size()); };
    if (IsNaN(value))
        return literal("NaN");
    if (!IsFinite(value))
        return literal(value >= 0.0 ? "+Inf" : "-Inf");
    return std::to_chars(first, first + MaxIEEEText, value, std::chars_format::scientific, 20).ptr;
}

double Internal::ReadIEEE(std::string_view text)
{
    std::string_view rest = text;
    while (!rest.empty() && IsSpace(rest.front()))
        rest.remove_prefix(1);

    double value = 0.0;
    // By far the most usual text.
    if (!rest.empty() && IsDigit(rest.front()) && ScanNumber(rest, value))
        return value;

    if (StartsWith(rest, "NaN"))
        return NullValue;
    if (StartsWith(rest, "+Inf") || StartsWith(rest, "-Inf"))
        throw std::exception();
    if (StartsWith(rest, "N") || !ScanNumber(rest, value))
        throw std::runtime_error("Unrecognized number: '" + std::string(text) + "'");
    return value;
}

std::string IEEEToString(double value)
{
    char buffer[Internal::MaxIEEEText];
    return std::string(buffer, Internal::WriteIEEE(buffer, value));
}

double IEEEFromString(std::string const& text)
{
    return Internal::ReadIEEE(text);
}

} // namespace Zan::Orv::Core::Service
