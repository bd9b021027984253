#include "orv/files/internal/FreeName.h"

#include "orv/files/internal/GivenExpression.h"

#include <algorithm>
#include <charconv>
#include <locale>
#include <stdexcept>
#include <string_view>

namespace Zan::Orv::Core::Service::Internal {

namespace {

constexpr std::string_view terminators = ".|zZ";

// As expressions fold case.
std::string Folded(std::string text)
{
    std::use_facet<std::ctype<char>>(std::locale()).tolower(text.data(), text.data() + text.size());
    return text;
}

bool StandsForItself(std::string const& root)
{
    constexpr std::string_view special("^$\\.*+?()[]{}|\0", 15); // an expression ends at its first NUL
    return root.find_first_of(special) == std::string::npos;
}

// The number between `prefix` and a terminator; 0 where there is none.
std::size_t NumberIn(std::string_view leaf, std::string_view prefix)
{
    if (leaf.substr(0, prefix.size()) != prefix)
        return 0;
    std::string_view const rest = leaf.substr(prefix.size());
    std::size_t number = 0;
    auto const [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    auto const length = static_cast<std::size_t>(end - rest.data());
    bool const isNumber = error == std::errc() && rest.front() != '0';
    return isNumber && rest.substr(length).find_first_of(terminators) == 0 ? number : 0;
}

std::size_t FirstFreeOfPlain(std::string const& root, std::vector<std::string> const& leafNames)
{
    std::string const prefix = Folded(root + "_");
    std::vector<bool> taken(leafNames.size() + 2); // so many names leave one of so many numbers free
    for (std::string const& leaf : leafNames)
        if (std::size_t const number = NumberIn(Folded(leaf), prefix); number < taken.size())
            taken[number] = true;
    return static_cast<std::size_t>(std::find(taken.begin() + 1, taken.end(), false) - taken.begin());
}

std::size_t FirstFreeOfExpression(std::string const& root, std::vector<std::string> const& leafNames)
{
    // A number that is part of what is found takes a terminator of some name for itself alone, so one more
    // number than these is free; unless the root name swallows the number.
    std::size_t places = 0;
    for (std::string const& leaf : leafNames)
        places += static_cast<std::size_t>(std::count_if(
            leaf.begin(), leaf.end(), [](char c) { return terminators.find(c) != std::string_view::npos; }));
    for (std::size_t number = 1; number <= places + 1; ++number)
    {
        std::string const text = "^" + root + "_" + std::to_string(number) + "[\\.|\\Z]";
        GivenExpression const expression(text.substr(0, text.find('\0')), true);
        if (std::none_of(leafNames.begin(), leafNames.end(),
                         [&](std::string const& leaf) { return expression.IsFoundIn(leaf); }))
            return number;
    }
    throw std::runtime_error("FileUtils::ConstructUniqueName: \"" + root + "\" finds a name with any number");
}

} // namespace

unsigned long long FirstFreeNumber(std::string const& root, std::vector<std::string> const& leafNames)
{
    return StandsForItself(root) ? FirstFreeOfPlain(root, leafNames) : FirstFreeOfExpression(root, leafNames);
}

} // namespace Zan::Orv::Core::Service::Internal
