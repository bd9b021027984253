#include "orv/serialization/Base64Buf.h"

#include "orv/serialization/internal/StreamBytes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string_view>

namespace Zan::Orv::Core::Service {

namespace {

using Traits = std::streambuf::traits_type;

constexpr std::size_t blockSize = 4096;
constexpr std::size_t groupBytes = 3;
constexpr std::size_t groupSymbols = 4;
constexpr std::size_t groupsPerLine = 16;
constexpr std::size_t lineSize = groupsPerLine * groupSymbols + 1;

// The text of a whole put area, with a line feed in each line that it touches.
constexpr std::size_t maxText =
    blockSize / groupBytes * groupSymbols + blockSize / groupBytes / groupsPerLine + 1;

constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Two symbols at a time: half the look-ups.
constexpr auto pairTexts = [] {
    std::array<std::array<char, 2>, 4096> pairs{};
    for (std::size_t number = 0; number < pairs.size(); ++number)
        pairs[number] = {alphabet[number / 64], alphabet[number % 64]};
    return pairs;
}();

// What a character stands for: a number below 64, or one of these.
constexpr std::uint8_t padding = 64;
constexpr std::uint8_t junk = 65;
constexpr std::uint8_t endOfText = 66; // none: the text has ended

constexpr auto symbolOf = [] {
    std::array<std::uint8_t, 256> symbols{};
    for (auto& symbol : symbols)
        symbol = junk;
    for (std::uint8_t number = 0; number < 64; ++number)
        symbols[static_cast<unsigned char>(alphabet[number])] = number;
    symbols['='] = padding;
    return symbols;
}();

unsigned Symbol(char c)
{
    return symbolOf[static_cast<unsigned char>(c)];
}

char* EncodeGroup(char first, char second, char third, char* to)
{
    unsigned const a = static_cast<unsigned char>(first);
    unsigned const b = static_cast<unsigned char>(second);
    unsigned const c = static_cast<unsigned char>(third);
    std::memcpy(to, pairTexts[a << 4 | b >> 4].data(), 2);
    std::memcpy(to + 2, pairTexts[(b & 15) << 8 | c].data(), 2);
    return to + groupSymbols;
}

// The bytes of a group, of which the last one or two count for nothing where there is padding.
void DecodeGroup(unsigned a, unsigned b, unsigned c, unsigned d, char* to)
{
    to[0] = static_cast<char>(a << 2 | b >> 4);
    to[1] = static_cast<char>(b << 4 | c >> 2);
    to[2] = static_cast<char>(c << 6 | d);
}

unsigned ReadSymbol(std::streambuf& source)
{
    unsigned symbol = junk;
    while (symbol == junk)
    {
        Traits::int_type const c = source.sbumpc();
        symbol = Traits::eq_int_type(c, Traits::eof()) ? endOfText : Symbol(Traits::to_char_type(c));
    }
    return symbol;
}

// Reads a group character by character and decodes it. Returns the end of its bytes, which is `to` when the
// text has ended before it.
char* ReadGroup(std::streambuf& source, char* to)
{
    std::array<unsigned, groupSymbols> symbols;
    for (unsigned& symbol : symbols)
    {
        symbol = ReadSymbol(source);
        if (symbol != endOfText)
            continue;
        if (&symbol == &symbols.front())
            return to;
        throw std::runtime_error("Ill-formed base64 encoding");
    }
    auto const [a, b, c, d] = symbols;
    if (a == padding || b == padding || (c == padding && d != padding))
        throw std::runtime_error("Ill-formed base64 encoding");

    DecodeGroup(a, b, c, d, to);
    return to + (c == padding ? 1 : d == padding ? 2 : 3);
}

// Decodes the plain groups that the source holds ready in its get area, several times faster than one by one,
// and skips junk before them. Stops in front of everything else. Returns the end of the bytes.
char* ReadPlainGroups(std::streambuf& source, char* to, char const* end)
{
    using Internal::BufferAreas;
    std::string_view const ready = BufferAreas::Ready(source).substr(0, BufferAreas::most);
    char const* const begin = ready.data();
    char const* const stop = begin + ready.size();
    char const* from = begin;
    while (end - to >= std::ptrdiff_t{groupBytes} && stop - from >= std::ptrdiff_t{groupSymbols})
    {
        unsigned const a = Symbol(from[0]), b = Symbol(from[1]), c = Symbol(from[2]), d = Symbol(from[3]);
        if ((a | b | c | d) < padding)
        {
            DecodeGroup(a, b, c, d, to);
            to += groupBytes;
            from += groupSymbols;
        }
        else if (a == junk)
            ++from;
        else
            break;
    }
    BufferAreas::Consume(source, static_cast<std::size_t>(from - begin));
    return to;
}

} // namespace

Base64Buf::Base64Buf(std::streambuf* target)
    : target_(target), putBuffer_(std::make_unique<char[]>(blockSize)),
      getBuffer_(std::make_unique<char[]>(blockSize))
{
    setp(putBuffer_.get(), putBuffer_.get() + blockSize);
    char* const end = getBuffer_.get() + blockSize;
    setg(end, end, end);
}

Base64Buf::~Base64Buf()
{
    try
    {
        Base64Buf::sync();
    }
    catch (...)
    {
        // A target that throws must not end the program.
    }
}

// False when the target did not take the whole text. What it took counts all the same.
bool Base64Buf::Write(char const* text, std::size_t size)
{
    if (size == 0)
        return true;
    auto const written = static_cast<std::size_t>(target_->sputn(text, static_cast<std::streamsize>(size)));
    groupsOnLine_ = (groupsOnLine_ * groupSymbols + written) % lineSize / groupSymbols % groupsPerLine;
    return written == size;
}

// Encodes the whole groups and keeps the rest in the put area. After a failure the put area stays as it was.
int Base64Buf::FlushPutBuffer()
{
    std::array<char, maxText> text;
    char* to = text.data();
    std::size_t groups = groupsOnLine_;
    char const* from = pbase();
    for (char const* const end = pptr(); end - from >= std::ptrdiff_t{groupBytes}; from += groupBytes)
    {
        to = EncodeGroup(from[0], from[1], from[2], to);
        if (++groups % groupsPerLine == 0)
            *to++ = '\n';
    }
    if (!Write(text.data(), static_cast<std::size_t>(to - text.data())))
        return -1;

    char const* const rest = std::copy<char const*>(from, pptr(), pbase());
    setp(pbase(), epptr());
    pbump(static_cast<int>(rest - pbase()));
    return 0;
}

Base64Buf::int_type Base64Buf::overflow(int_type c)
{
    if (FlushPutBuffer() != 0 || traits_type::eq_int_type(c, traits_type::eof()))
        return traits_type::eof();
    sputc(traits_type::to_char_type(c));
    return c;
}

int Base64Buf::sync()
{
    if (FlushPutBuffer() != 0)
        return -1;
    if (auto const rest = pptr() - pbase(); rest != 0)
    {
        std::array<char, groupSymbols + 1> text;
        EncodeGroup(pbase()[0], rest == 2 ? pbase()[1] : '\0', '\0', text.data());
        std::fill(text.begin() + rest + 1, text.end(), '=');
        text[groupSymbols] = '\n';
        bool const endsLine = groupsOnLine_ + 1 == groupsPerLine;
        if (!Write(text.data(), groupSymbols + (endsLine ? 1 : 0)))
            return -1;
        setp(pbase(), epptr());
    }
    return target_->pubsync();
}

Base64Buf::int_type Base64Buf::underflow()
{
    char* const begin = getBuffer_.get();
    char* const end = begin + blockSize;
    char* to = begin;
    // Whoever calls while there are unread bytes is done with the first of them.
    if (gptr() < egptr())
        to = std::copy(gptr() + 1, egptr(), begin);

    while (end - to >= std::ptrdiff_t{groupBytes} &&
           !traits_type::eq_int_type(target_->sgetc(), traits_type::eof()))
    {
        char* const before = to;
        to = ReadPlainGroups(*target_, to, end);
        if (to == before)
            to = ReadGroup(*target_, to);
        if (to == before)
            break;
    }
    setg(begin, begin, to);
    return to == begin ? traits_type::eof() : traits_type::to_int_type(*begin);
}

} // namespace Zan::Orv::Core::Service
