#include "fuzz/Input.h"
#include "orv/time/internal/DateMatcher.h"
#include "orv/time/internal/ExpressionMatcher.h"
#include "orv/time/internal/TermReader.h"

#include <algorithm>
#include <cstdlib>
#include <regex>

namespace Zan::Orv::Core::Service::Fuzz {

namespace {

std::regex const date("\\s*(\\d+|[[:alpha:]]+)\\s*(?:[-/.,]?)\\s*?(\\d+|[[:alpha:]]+)\\s*(?:[-/.,]?)\\s*?"
                      "(\\d+|[[:alpha:]]+)\\s*"
                      "(?:(\\d+)[:.](\\d+)(?:[:.](\\d+)(?:(\\.\\d+))?)?\\s*([[:alpha:]]+)?)?\\s*");
std::regex const expression("\\s*(.*?)\\s*((?:[+-]\\s*\\d+\\s*[A-Za-z]+\\s*)*)");
std::regex const symbol("[A-Za-z_][0-9A-Za-z_]*");
std::regex const signedTerm("\\s*([+-])\\s*(\\d+)\\s*([A-Za-z]+)(.*)");
std::regex const plainTerm("\\s*(\\d+)\\s*([A-Za-z]+)(.*)");

// Term by term, each where the rest of the one before begins.
void CheckTerms(std::string const& text, bool withSign)
{
    Internal::TermReader reader(text);
    std::string rest = text;
    for (std::smatch match; std::regex_match(rest, match, withSign ? signedTerm : plainTerm);)
    {
        std::size_t const number = withSign ? 2 : 1;
        Require(reader.Next(withSign), "a term is what the expression matches");
        Require(!withSign || reader.IsNegative() == (match.str(1) == "-"), "with its sign");
        Require(reader.Number() == std::atoi(match.str(number).c_str()), "its number");
        Require(reader.Unit() == match.str(number + 1), "and its unit");
        rest = match.str(number + 2);
    }
    Require(!reader.Next(withSign), "and nothing else is one");
}

} // namespace

// Each matcher against its expression, whose engine is slow: long texts are left to the other targets.
void Run(Input& input)
{
    std::string text = input.Rest();
    text.resize(std::min<std::size_t>(text.size(), 24));
    std::smatch match;

    Internal::DateGroups groups{};
    bool const isDate = std::regex_match(text, match, date);
    Require(Internal::MatchDate(text, groups) == isDate, "a date is what the expression matches");
    for (std::size_t i = 1; isDate && i <= 8; ++i)
        Require(groups.took[i] == match[i].matched && (!groups.took[i] || groups.group[i] == match.str(i)),
                "its groups are those of the expression");

    std::string_view base;
    std::string_view offsets;
    bool const fits = std::regex_match(text, match, expression);
    Require(Internal::MatchExpression(text, base, offsets) == fits,
            "a symbolic time is what the expression matches");
    Require(!fits || (base == match.str(1) && offsets == match.str(2)),
            "its two groups are those of the expression");
    Require(Internal::IsSymbol(text) == std::regex_match(text, symbol),
            "a symbol is what the expression matches");

    CheckTerms(text, true);
    CheckTerms(text, false);
}

} // namespace Zan::Orv::Core::Service::Fuzz
