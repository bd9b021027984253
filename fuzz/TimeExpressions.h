#pragma once

#include "orv/time/internal/DateMatcher.h"
#include "orv/time/internal/ExpressionMatcher.h"
#include "orv/time/internal/TermReader.h"

#include <cstddef>
#include <cstdlib>
#include <regex>
#include <string>
#include <string_view>

/// The languages of times as expressions, beside what reads them by hand.

namespace Zan::Orv::Core::Service::Fuzz {

struct Agreement
{
    bool fits;   // by the expression
    bool agrees; // the matcher with that, and on what each group takes
};

inline Agreement CompareDate(std::string const& text)
{
    static std::regex const expression(
        "\\s*(\\d+|[[:alpha:]]+)\\s*(?:[-/.,]?)\\s*?(\\d+|[[:alpha:]]+)\\s*(?:[-/.,]?)\\s*?"
        "(\\d+|[[:alpha:]]+)\\s*"
        "(?:(\\d+)[:.](\\d+)(?:[:.](\\d+)(?:(\\.\\d+))?)?\\s*([[:alpha:]]+)?)?\\s*");
    std::smatch match;
    Internal::DateGroups groups{};
    bool const fits = std::regex_match(text, match, expression);
    bool agrees = Internal::MatchDate(text, groups) == fits;
    for (std::size_t i = 1; agrees && fits && i <= 8; ++i)
    {
        std::string_view const group = groups.group[i];
        agrees =
            groups.took[i] == match[i].matched &&
            (!groups.took[i] || (group == match.str(i) && group.data() - text.data() == match.position(i)));
    }
    return {fits, agrees};
}

/// A symbolic time, and whether the whole is a symbol.
inline Agreement CompareExpression(std::string const& text)
{
    static std::regex const expression("\\s*(.*?)\\s*((?:[+-]\\s*\\d+\\s*[A-Za-z]+\\s*)*)");
    static std::regex const symbol("[A-Za-z_][0-9A-Za-z_]*");
    std::smatch match;
    std::string_view base;
    std::string_view offsets;
    bool const fits = std::regex_match(text, match, expression);
    bool const agrees = Internal::MatchExpression(text, base, offsets) == fits &&
                        (!fits || (base == match.str(1) && offsets == match.str(2))) &&
                        Internal::IsSymbol(text) == std::regex_match(text, symbol);
    return {fits, agrees};
}

/// The terms of an offset, each where the rest of the one before begins. Fits when there is one.
inline Agreement CompareTerms(std::string const& text, bool withSign)
{
    static std::regex const plain("\\s*(\\d+)\\s*([A-Za-z]+)(.*)");
    static std::regex const withASign("\\s*([+-])\\s*(\\d+)\\s*([A-Za-z]+)(.*)");
    std::size_t const number = withSign ? 2 : 1;
    Internal::TermReader reader(text);
    Agreement result{false, true};
    std::string rest = text;
    for (std::smatch match; result.agrees && std::regex_match(rest, match, withSign ? withASign : plain);
         rest = match.str(number + 2))
    {
        result.fits = true;
        result.agrees =
            reader.Next(withSign) && (!withSign || reader.IsNegative() == (match.str(1) == "-")) &&
            reader.Number() == std::atoi(match.str(number).c_str()) && reader.Unit() == match.str(number + 1);
    }
    result.agrees = result.agrees && !reader.Next(withSign);
    return result;
}

} // namespace Zan::Orv::Core::Service::Fuzz
