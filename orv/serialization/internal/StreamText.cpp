#include "orv/serialization/internal/StreamText.h"

#include "orv/foundation/internal/Characters.h"
#include "orv/serialization/internal/StreamBytes.h"

#include <limits>
#include <locale>
#include <sstream>
#include <type_traits>

namespace Zan::Orv::Core::Service::Internal {

namespace {

template<class T>
std::string FormatByStream(std::ios& stream, T value)
{
    std::ostringstream text;
    text.copyfmt(stream);
    text.exceptions(std::ios::goodbit);
    text << value;
    stream.width(0);
    return text.str();
}

// The number at the stream's position, once white space is skipped. The rules are those of std::num_get for
// decimal text: a sign is taken for unsigned types too and then wraps, a number out of range gives the
// nearest limit and a failure, no number gives 0 and a failure.
template<class T>
std::ios::iostate ScanInteger(std::streambuf& buffer, T& value)
{
    using Unsigned = std::make_unsigned_t<T>;
    constexpr bool isSigned = std::is_signed_v<T>;
    constexpr auto end = std::char_traits<char>::eof();

    int c = buffer.sgetc();
    bool const negative = c == '-';
    if (negative || c == '+')
        c = buffer.snextc();

    constexpr unsigned long long maximum = std::numeric_limits<T>::max();
    unsigned long long const limit = maximum + (negative && isSigned ? 1 : 0);
    unsigned long long magnitude = 0;
    bool found = false;
    bool tooLarge = false;
    for (; IsDigit(c); c = buffer.snextc())
    {
        auto const digit = static_cast<unsigned long long>(c - '0');
        found = true;
        if (magnitude > (limit - digit) / 10)
            tooLarge = true;
        else
            magnitude = magnitude * 10 + digit;
    }

    std::ios::iostate state = c == end ? std::ios::eofbit : std::ios::goodbit;
    if (!found)
    {
        value = 0;
        state |= std::ios::failbit;
    }
    else if (tooLarge)
    {
        value = negative && isSigned ? std::numeric_limits<T>::min() : std::numeric_limits<T>::max();
        state |= std::ios::failbit;
    }
    else
        value = static_cast<T>(static_cast<Unsigned>(negative ? 0 - magnitude : magnitude));
    return state;
}

// Characters up to white space. The stream has skipped what stood before.
std::ios::iostate ScanWord(std::streambuf& buffer, std::string& word)
{
    constexpr auto end = std::char_traits<char>::eof();
    word.clear();
    int c = buffer.sgetc();
    for (; c != end && !IsSpace(c); c = buffer.snextc())
        word += static_cast<char>(c);
    return (c == end ? std::ios::eofbit : std::ios::goodbit) |
           (word.empty() ? std::ios::failbit : std::ios::goodbit);
}

// What formatted input has around it: white space before, the stream's state behind.
template<class T, class Scan>
void ReadByHand(std::istream& stream, T& value, Scan scan)
{
    if (!FormatsPlainly(stream) || (stream.flags() & std::ios::skipws) == 0)
    {
        stream >> value;
        return;
    }
    std::istream::sentry const ready(stream);
    if (!ready)
        return;
    std::ios::iostate state = std::ios::goodbit;
    try
    {
        state = scan(*stream.rdbuf(), value);
    }
    catch (...)
    {
        // As the stream's own operators do: remember it, and pass it on only when the caller asked for that.
        if ((stream.exceptions() & std::ios::badbit) != 0)
            throw;
        state = std::ios::badbit;
    }
    if (state != std::ios::goodbit)
        stream.setstate(state);
}

} // namespace

bool FormatsPlainly(std::ios_base const& stream)
{
    auto const flags = stream.flags();
    auto const base = flags & std::ios::basefield;
    return base == std::ios::dec && (flags & std::ios::showpos) == 0 && stream.width() == 0 &&
           stream.getloc() == std::locale::classic();
}

void WriteAndClear(std::ostream& stream, std::string& text)
{
    struct Clearer
    {
        std::string& text;
        ~Clearer() { text.clear(); }
    } const clearer{text}; // a stream may throw
    WriteBytes(stream, text.data(), text.size());
}

std::string FormatInteger(std::ios& stream, long long value)
{
    return FormatByStream(stream, value);
}

std::string FormatInteger(std::ios& stream, unsigned long long value)
{
    return FormatByStream(stream, value);
}

std::string FormatInteger(std::ios& stream, int value)
{
    return FormatByStream(stream, value);
}

std::string FormatInteger(std::ios& stream, unsigned int value)
{
    return FormatByStream(stream, value);
}

std::string FormatInteger(std::ios& stream, short value)
{
    return FormatByStream(stream, value);
}

std::string FormatInteger(std::ios& stream, unsigned short value)
{
    return FormatByStream(stream, value);
}

void ReadWord(std::istream& stream, std::string& word)
{
    ReadByHand(stream, word, ScanWord);
}

void SkipLine(std::istream& stream)
{
    // Nearly always the line ends here.
    if (stream.good() && stream.rdbuf()->sgetc() == '\n')
        stream.rdbuf()->sbumpc();
    else
        stream.ignore(512, '\n');
}

void ReadInteger(std::istream& stream, long long& value)
{
    ReadByHand(stream, value, ScanInteger<long long>);
}

void ReadInteger(std::istream& stream, unsigned long long& value)
{
    ReadByHand(stream, value, ScanInteger<unsigned long long>);
}

void ReadInteger(std::istream& stream, int& value)
{
    ReadByHand(stream, value, ScanInteger<int>);
}

void ReadInteger(std::istream& stream, unsigned int& value)
{
    ReadByHand(stream, value, ScanInteger<unsigned int>);
}

void ReadInteger(std::istream& stream, short& value)
{
    ReadByHand(stream, value, ScanInteger<short>);
}

void ReadInteger(std::istream& stream, unsigned short& value)
{
    ReadByHand(stream, value, ScanInteger<unsigned short>);
}

} // namespace Zan::Orv::Core::Service::Internal
