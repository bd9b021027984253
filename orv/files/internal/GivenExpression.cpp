#include "orv/files/internal/GivenExpression.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Zan::Orv::Core::Service::Internal {

namespace {

namespace constants = std::regex_constants;

#ifdef __GLIBCXX__
// All ways are gone at once, and no group can be referred to. Other standard libraries have bounds of their own.
constexpr auto allWaysAtOnce = constants::__polynomial;
#else
constexpr auto allWaysAtOnce = constants::ECMAScript;
#endif

// The number of a repetition, the larger one of two. Past what is allowed it does not matter which.
std::size_t ReadCount(std::string const& text, std::size_t& at, std::size_t limit)
{
    std::size_t largest = 1;
    std::size_t number = 0;
    for (; at < text.size() && text[at] != '}'; ++at)
    {
        bool const isDigit = text[at] >= '0' && text[at] <= '9';
        number = isDigit ? std::min(limit, 10 * number + static_cast<std::size_t>(text[at] - '0')) : 0;
        largest = std::max(largest, number);
    }
    return largest;
}

// Whether the compiler of expressions and the matcher stay within their stack: both call themselves for each character,
// as often as repetitions by a number say, and for each group within a group.
bool IsWithinBounds(std::string const& text)
{
    constexpr std::size_t longest = 4000;
    constexpr std::size_t deepest = 500;

    std::vector<std::size_t> groups; // the length where each begins
    std::size_t length = 0;
    std::size_t last = 0; // of what a repetition behind it repeats
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        char const c = text[at];
        if (c == '{')
        {
            std::size_t const count = ReadCount(text, at, longest + 1);
            length += last * (count - 1);
            last *= count;
        }
        else if (c == ')' && !groups.empty())
        {
            last = ++length - groups.back();
            groups.pop_back();
        }
        else
        {
            if (c == '(')
                groups.push_back(length);
            else if (c == '\\')
                ++at;
            ++length;
            last = 1;
        }
        if (length > longest || groups.size() > deepest)
            return false;
    }
    return true;
}

} // namespace

GivenExpression::GivenExpression(std::string const& text, bool ignoreCase)
{
    if (!IsWithinBounds(text))
        throw std::regex_error(constants::error_space);
    auto const grammar = constants::ECMAScript | (ignoreCase ? constants::icase : constants::ECMAScript);
    try
    {
        regex_.assign(text, grammar | allWaysAtOnce);
    }
    catch (std::regex_error const& error)
    {
        if (error.code() != constants::error_complexity)
            throw;
        regex_.assign(text, grammar);
        refersBack_ = true;
    }
}

// The matcher calls itself for each byte.
void GivenExpression::CheckLength(std::string const& name) const
{
    constexpr std::size_t longest = 500;
    if (refersBack_ && name.size() > longest)
        throw std::regex_error(constants::error_stack);
}

bool GivenExpression::Matches(std::string const& name) const
{
    CheckLength(name);
    return std::regex_match(name, regex_);
}

bool GivenExpression::IsFoundIn(std::string const& name) const
{
    CheckLength(name);
    return std::regex_search(name, regex_);
}

} // namespace Zan::Orv::Core::Service::Internal
