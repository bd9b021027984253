#include "orv/foundation/Strings.h"

#include "orv/foundation/internal/Hash.h"
#include "orv/platform/LetterCase.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>
#include <utility>

namespace Zan::Orv::Core::Service {

namespace {

// The order counts: StringTrim takes the first ones of them.
constexpr std::string_view blanks = " \t\v\n\r\f";

int Upper(char c)
{
    return std::toupper(static_cast<unsigned char>(c));
}

// Eight bytes of a text, worked on side by side: nothing carries from one to the next.
using Word = std::uint64_t;

constexpr Word Each(unsigned char byte)
{
    return 0x0101010101010101u * Word{byte};
}

Word ReadWord(char const* from)
{
    Word word = 0;
    std::memcpy(&word, from, sizeof word);
    return word;
}

// Not zero in those bytes that differ in more than the case of an ASCII letter.
Word DifferenceBeyondCase(Word a, Word b)
{
    Word const lower = a | Each(0x20);
    Word const low7 = lower & Each(0x7F);
    // The top bit of each byte: set from 'a' on, but no more behind 'z', and not for a byte that is not ASCII.
    Word const letters = ((low7 + Each(0x80 - 'a')) ^ (low7 + Each(0x7F - 'z'))) & ~lower & Each(0x80);
    return (a ^ b) & ~(letters >> 2);
}

std::size_t FirstByte(Word word)
{
    int const zeros =
        std::endian::native == std::endian::little ? std::countr_zero(word) : std::countl_zero(word);
    return static_cast<std::size_t>(zeros) / 8;
}

// The first position from `i` on at which `difference` of the words is not zero, or `size`, which is that of a
// word at least.
template<class Difference>
std::size_t Scan(char const* a, char const* b, std::size_t i, std::size_t size, Difference difference)
{
    for (; i < size; i += sizeof(Word))
    {
        i = std::min(i, size - sizeof(Word)); // the last word overlaps with the one before it
        if (Word const found = difference(ReadWord(a + i), ReadWord(b + i)); found != 0)
            return i + FirstByte(found);
    }
    return size;
}

// The first position at which the folded bytes differ, or `size`.
std::size_t NoCaseMismatch(char const* a, char const* b, std::size_t size)
{
    std::size_t i = 0;
    if (size >= sizeof(Word))
    {
        // The same bytes fold alike in any locale. Only where others come has it to be asked.
        i = Scan(a, b, 0, size, std::bit_xor<Word>());
        if (i < size && Platform::OnlyASCIIHasCase())
            return Scan(a, b, i, size, DifferenceBeyondCase);
    }
    while (i < size && (a[i] == b[i] || NoCaseCharEqual(a[i], b[i])))
        ++i;
    return i;
}

void Trim(std::string& s, std::string_view set, bool leading, bool trailing)
{
    if (leading)
        s.erase(0, s.find_first_not_of(set));
    if (trailing)
        s.erase(s.find_last_not_of(set) + 1); // npos + 1 is 0
}

// Finds a text from left to right, in linear time.
class Finder
{
public:
    explicit Finder(std::string_view wanted) : wanted_(wanted)
    {
        if (wanted.size() > maxNaive)
            MakeBorders();
    }

    std::size_t Find(std::string_view text, std::size_t pos) const
    {
        return borders_.empty() ? text.find(wanted_, pos) : FindLong(text, pos);
    }

private:
    // The plain search is the faster one, but compares up to the whole of the wanted text at each position.
    static constexpr std::size_t maxNaive = 64;

    // How much is still matched, of `matched` bytes, when `next` follows them (Knuth, Morris and Pratt).
    std::size_t Advance(std::size_t matched, char next) const
    {
        while (matched > 0 && wanted_[matched] != next)
            matched = borders_[matched - 1];
        return wanted_[matched] == next ? matched + 1 : 0;
    }

    // The lengths of the longest proper prefixes that also end each prefix.
    void MakeBorders()
    {
        borders_.reserve(wanted_.size());
        borders_.push_back(0);
        for (char const next : wanted_.substr(1))
            borders_.push_back(Advance(borders_.back(), next));
    }

    std::size_t FindLong(std::string_view text, std::size_t pos) const
    {
        std::size_t matched = 0;
        for (; pos < text.size(); ++pos)
        {
            matched = Advance(matched, text[pos]);
            if (matched == wanted_.size())
                return pos + 1 - matched;
        }
        return std::string_view::npos;
    }

    std::string_view wanted_;
    std::vector<std::size_t> borders_;
};

// A set of bytes that is asked at each position of a text.
class ByteSet
{
public:
    explicit ByteSet(std::string_view bytes)
    {
        for (char const byte : bytes)
            has_[static_cast<unsigned char>(byte)] = true;
    }

    bool Has(char byte) const { return has_[static_cast<unsigned char>(byte)]; }

private:
    std::array<bool, 256> has_{};
};

} // namespace

bool AllBlanks(std::string const& s)
{
    return std::all_of(s.begin(), s.end(), [](char c) {
        auto const byte = static_cast<unsigned char>(c);
        return byte < 0x80 && std::isspace(byte) != 0;
    });
}

bool AllDigits(std::string const& s)
{
    auto const isDigit = [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; };
    return !s.empty() && std::all_of(s.begin(), s.end(), isDigit);
}

bool NoCaseCharEqual(char a, char b)
{
    return Upper(a) == Upper(b);
}

bool NoCaseStringEqual(std::string const& a, std::string const& b)
{
    return a.size() == b.size() && NoCaseMismatch(a.data(), b.data(), a.size()) == a.size();
}

bool NoCaseStringLess(std::string const& a, std::string const& b)
{
    std::size_t const common = std::min(a.size(), b.size());
    std::size_t const at = NoCaseMismatch(a.data(), b.data(), common);
    return at == common ? a.size() < b.size() : Upper(a[at]) < Upper(b[at]);
}

std::size_t Internal::NoCaseHash(std::string const& text)
{
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (char const c : text)
        hash = (hash ^ static_cast<std::uint64_t>(Upper(c))) * 0x100000001B3u;
    return HashOf(hash);
}

bool StringEqual(std::string const& a, std::string const& b, bool caseSensitive)
{
    return caseSensitive ? a == b : NoCaseStringEqual(a, b);
}

void StringLeft(std::string const& source, std::string& result, int count)
{
    result = source.substr(0, static_cast<std::size_t>(count)); // a negative count becomes a huge one
}

void StringRight(std::string const& source, std::string& result, int count)
{
    // The difference is wider than its terms: it puts the start for any negative count behind the end.
    long long const start = std::max(0LL, static_cast<int>(source.size()) - static_cast<long long>(count));
    result = source.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(count));
}

void StringReplace(std::string& s, std::string const& from, std::string const& to)
{
    Finder const finder(from);
    std::size_t hit = finder.Find(s, 0);
    if (hit == std::string::npos)
        return;

    // Replacing in place would move the rest of the string each time.
    std::string replaced;
    replaced.reserve(s.size());
    std::size_t done = 0;
    for (; hit != std::string::npos; hit = finder.Find(s, done))
    {
        replaced.append(s, done, hit - done).append(to);
        done = hit + from.size();
    }
    replaced.append(s, done);
    s = std::move(replaced);
}

bool StringReplaceChar(std::string& s, char from, char to)
{
    std::size_t const first = s.find(from);
    if (first == std::string::npos)
        return false;
    std::replace(s.begin() + static_cast<std::ptrdiff_t>(first), s.end(), from, to);
    return true;
}

void StringToLower(std::string& s)
{
    for (char& c : s)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

void StringToUpper(std::string& s)
{
    for (char& c : s)
        c = static_cast<char>(Upper(c));
}

void StringTrimBlank(std::string& s, bool leading, bool trailing)
{
    Trim(s, blanks, leading, trailing);
}

void StringTrimSpace(std::string& s, bool leading, bool trailing)
{
    Trim(s, " ", leading, trailing);
}

std::string StringTrim(std::string const& s)
{
    std::size_t const first = s.find_first_not_of(blanks);
    if (first == std::string::npos)
        return {};
    std::size_t const last = s.find_last_not_of(blanks.substr(0, s.size() - first));
    return s.substr(first, last - first + 1);
}

void StringSplit(std::string const& s, std::vector<std::string>& tokens, std::string const& separators,
                 bool skipEmpty)
{
    ByteSet const set(separators);
    auto const append = [&](std::size_t begin, std::size_t end) {
        if (begin < end || !skipEmpty)
            tokens.emplace_back(s, begin, end - begin);
    };
    std::size_t begin = 0;
    for (std::size_t i = 0; i < s.size(); ++i)
    {
        if (set.Has(s[i]))
        {
            append(begin, i);
            begin = i + 1;
        }
    }
    append(begin, s.size());
}

void StringSplit(std::string const& s, std::size_t width, std::vector<std::string>& tokens)
{
    tokens.clear();
    if (width == 0 || s.empty())
        return;
    tokens.reserve((s.size() - 1) / width + 1);
    for (std::size_t rest = s.size(); rest > 0; rest -= std::min(rest, width))
        tokens.emplace_back(s, s.size() - rest, width);
}

} // namespace Zan::Orv::Core::Service
