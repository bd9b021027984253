#include "orv/events/internal/PlainFormat.h"

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <system_error>

namespace Zan::Orv::Core::Service::Internal {

namespace {

// The length that stands before a conversion, as the size of the argument.
enum class Length
{
    Int,
    Long,
    LongLong,
    Size
};

Length ReadLength(char const*& format)
{
    if (*format == 'z')
    {
        ++format;
        return Length::Size;
    }
    if (*format != 'l')
        return Length::Int;
    ++format;
    if (*format != 'l')
        return Length::Long;
    ++format;
    return Length::LongLong;
}

// The precision behind a point, or the default one. -1 for one that is too long to be plain.
int ReadPrecision(char const*& format)
{
    if (*format != '.')
        return 6;
    int precision = 0;
    for (++format; *format >= '0' && *format <= '9'; ++format)
    {
        precision = precision * 10 + (*format - '0');
        if (precision > 99)
            return -1;
    }
    return precision;
}

class Output
{
public:
    // The last place is the terminator's.
    Output(char* buffer, std::size_t size) : at_(buffer), end_(buffer + size - 1) {}

    bool Put(char c) { return Put(&c, 1); }

    bool Put(char const* text, std::size_t length)
    {
        if (length > static_cast<std::size_t>(end_ - at_))
            return false;
        std::memcpy(at_, text, length);
        at_ += length;
        return true;
    }

    template<class... Arguments>
    bool PutNumber(Arguments... arguments)
    {
        auto const [end, error] = std::to_chars(at_, end_, arguments...);
        at_ = end;
        return error == std::errc();
    }

    bool Finish()
    {
        *at_ = '\0';
        return true;
    }

private:
    char* at_;
    char* end_;
};

bool PutSigned(Output& output, Length length, std::va_list& arguments)
{
    switch (length)
    {
    case Length::Int: return output.PutNumber(va_arg(arguments, int));
    case Length::Long: return output.PutNumber(va_arg(arguments, long));
    case Length::LongLong: return output.PutNumber(va_arg(arguments, long long));
    case Length::Size: return output.PutNumber(va_arg(arguments, std::ptrdiff_t));
    }
    return false;
}

bool PutUnsigned(Output& output, Length length, int base, std::va_list& arguments)
{
    switch (length)
    {
    case Length::Int: return output.PutNumber(va_arg(arguments, unsigned int), base);
    case Length::Long: return output.PutNumber(va_arg(arguments, unsigned long), base);
    case Length::LongLong: return output.PutNumber(va_arg(arguments, unsigned long long), base);
    case Length::Size: return output.PutNumber(va_arg(arguments, std::size_t), base);
    }
    return false;
}

bool PutText(Output& output, char const* text)
{
    return text != nullptr && output.Put(text, std::strlen(text));
}

// The C library's decimal point is that of the program's locale, and it has its own words for what is no
// number.
bool PutDouble(Output& output, double value, std::chars_format form, int precision)
{
    return std::isfinite(value) && std::strcmp(std::localeconv()->decimal_point, ".") == 0 &&
           output.PutNumber(value, form, precision);
}

bool PutConversion(Output& output, char const*& format, std::va_list& arguments)
{
    bool const isPoint = *format == '.';
    int const precision = ReadPrecision(format);
    if (precision < 0)
        return false;
    if (isPoint && *format != 'e' && *format != 'f' && *format != 'g')
        return false;
    Length const length = ReadLength(format);
    char const conversion = *format++;
    if (length != Length::Int && std::strchr("diux", conversion) == nullptr)
        return false;
    switch (conversion)
    {
    case '%': return output.Put('%');
    case 'd':
    case 'i': return PutSigned(output, length, arguments);
    case 'u': return PutUnsigned(output, length, 10, arguments);
    case 'x': return PutUnsigned(output, length, 16, arguments);
    case 'c': return output.Put(static_cast<char>(va_arg(arguments, int)));
    case 's': return PutText(output, va_arg(arguments, char const*));
    case 'e': return PutDouble(output, va_arg(arguments, double), std::chars_format::scientific, precision);
    case 'f': return PutDouble(output, va_arg(arguments, double), std::chars_format::fixed, precision);
    case 'g': return PutDouble(output, va_arg(arguments, double), std::chars_format::general, precision);
    default: return false;
    }
}

} // namespace

bool FormatPlainly(char* buffer, std::size_t size, char const* format, std::va_list arguments)
{
    // A copy, since a va_list that was a parameter can not be passed on by reference everywhere.
    std::va_list rest;
    va_copy(rest, arguments);
    Output output(buffer, size);
    bool plain = true;
    while (plain && *format != '\0')
    {
        std::size_t const literal = std::strcspn(format, "%");
        plain = output.Put(format, literal);
        format += literal;
        if (plain && *format == '%')
            plain = PutConversion(output, ++format, rest);
    }
    va_end(rest);
    return plain && output.Finish();
}

} // namespace Zan::Orv::Core::Service::Internal
