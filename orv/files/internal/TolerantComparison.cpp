#include "orv/files/internal/TolerantComparison.h"

#include "orv/foundation/internal/Characters.h"
#include "orv/foundation/internal/NumberText.h"

#include <algorithm>
#include <cmath>

namespace Zan::Orv::Core::Service::Internal {

namespace {

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n';
}

// What a number in a table is made of: neither "inf" nor a hexadecimal number is one.
bool IsOfNumber(char c)
{
    return IsDigit(c) || c == '.' || c == '+' || c == '-' || c == 'E' || c == 'e';
}

bool MayBeNumber(std::string_view word)
{
    return std::all_of(word.begin(), word.end(), IsOfNumber);
}

// The number that a word of such characters begins with, and 0 where there is none, as atof reads it; but
// with a point in any locale, as tables have it.
double Number(std::string_view word)
{
    std::string_view head = word;
    if (!head.empty() && (head.front() == '+' || head.front() == '-'))
        head.remove_prefix(1);
    if (!head.empty() && head.front() == '.')
        head.remove_prefix(1);
    bool const isNumber = !head.empty() && IsDigit(head.front());
    return isNumber ? ReadIEEE(word) : 0.0;
}

bool TolerantEqualWords(std::string_view a, std::string_view b)
{
    if (a == b)
        return true;
    if (!MayBeNumber(a) || !MayBeNumber(b))
        return false;
    double const x = Number(a);
    double const y = Number(b);
    // Not "less or equal": numbers out of range give a difference that is no number, and count as equal.
    return !(std::abs(x - y) > std::abs(x / 1e12));
}

} // namespace

std::string_view TakeWord(std::string_view& rest)
{
    auto const first = std::find_if_not(rest.begin(), rest.end(), IsBlank);
    auto const last = std::find_if(first, rest.end(), IsBlank);
    auto const begin = static_cast<std::size_t>(first - rest.begin());
    auto const length = static_cast<std::size_t>(last - first);
    std::string_view const word = rest.substr(begin, length);
    rest.remove_prefix(begin + length);
    return word;
}

bool TolerantEqual(std::string_view a, std::string_view b)
{
    for (;;)
    {
        std::string_view const x = TakeWord(a);
        std::string_view const y = TakeWord(b);
        if (x.empty() || y.empty())
            return x.empty() && y.empty();
        if (!TolerantEqualWords(x, y))
            return false;
    }
}

} // namespace Zan::Orv::Core::Service::Internal
