#include "orv/time/TimeOffset.h"
#include "orv/time/internal/DateMatcher.h"
#include "orv/time/internal/ExpressionMatcher.h"
#include "tests/support/RandomTexts.h"
#include "tests/time/Times.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <random>
#include <regex>
#include <string_view>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using namespace std::string_view_literals;

// The languages of times as expressions, beside what reads them by hand.
class TimeMatchers : public RandomTexts
{
protected:
    using Pieces = std::vector<std::string_view>;

    // Half of the texts begin in one of the given ways, since most others are no match from their start.
    template<class Agrees>
    static void CheckTexts(Pieces const& starts, Pieces const& pieces, Agrees agrees)
    {
        std::mt19937 random(GetParam());
        for (int round = 0; round < randomTexts; ++round)
        {
            std::string text(round % 2 == 0 ? starts[random() % starts.size()] : "");
            for (auto count = random() % 9; count > 0; --count)
                text += pieces[random() % pieces.size()];
            ASSERT_TRUE(agrees(text)) << testing::PrintToString(text) << ", seed " << GetParam();
        }
    }
};
INSTANTIATE_TEST_SUITE_P(Seeds, TimeMatchers, Seeds());

TEST_P(TimeMatchers, Dates)
{
    std::regex const expression("\\s*(\\d+|[[:alpha:]]+)\\s*(?:[-/.,]?)\\s*?(\\d+|[[:alpha:]]+)\\s*(?:[-/"
                                ".,]?)\\s*?(\\d+|[[:alpha:]]+)\\s*"
                                "(?:(\\d+)[:.](\\d+)(?:[:.](\\d+)(?:(\\.\\d+))?)?\\s*([[:alpha:]]+)?)?\\s*");
    // The characters at the end of the alphabet come seldom: most of them end every match.
    std::string_view const alphabet = "111122aaaB   \t\n...::-/,111122aaaB   \t\n...::-/,"
                                      "111122aaaB   \t\n...::-/,111122aaaB   \t\n...::-/,"
                                      "111122aaaB   \t\n...::-/,+_\r\v\f\x80\xE9\xFF\0"sv;
    Pieces characters;
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        characters.push_back(alphabet.substr(i, 1));
    int found = 0;
    CheckTexts({"1", "1a1", "1 1 1", "1-a.1 1", "1 1 1 1:1", "a/1.1.1.1", "11111"}, characters,
               [&](std::string const& text) {
                   std::smatch match;
                   Internal::DateGroups groups{};
                   bool const fits = std::regex_match(text, match, expression);
                   bool agrees = Internal::MatchDate(text, groups) == fits;
                   found += fits ? 1 : 0;
                   for (std::size_t i = 1; agrees && fits && i <= 8; ++i)
                   {
                       std::string_view const group = groups.group[i];
                       agrees = groups.took[i] == match[i].matched &&
                                (!groups.took[i] ||
                                 (group == match.str(i) && group.data() - text.data() == match.position(i)));
                   }
                   return agrees;
               });
    EXPECT_GT(found, randomTexts / 10); // or the texts are too wild to tell anything
}

std::string ParseOffsetByExpression(std::string rest)
{
    static std::pair<std::string_view, std::array<int, 7>> const units[] = {
        {" years year yrs yr y ", {1}},
        {" months month ", {0, 1}},
        {" weeks week wks wk w ", {0, 0, 7}},
        {" days day d ", {0, 0, 1}},
        {" hours hour hrs hr h ", {0, 0, 0, 1}},
        {" minutes minute mins min ", {0, 0, 0, 0, 1}},
        {" seconds second secs sec s ", {0, 0, 0, 0, 0, 1}},
        {" milliseconds millisecond ms ", {0, 0, 0, 0, 0, 0, 1}}};
    static std::regex const expression("\\s*([+-])\\s*(\\d+)\\s*([A-Za-z]+)(.*)");
    TimeOffset result;
    for (std::smatch match; std::regex_match(rest, match, expression); rest = std::string(match[4]))
    {
        std::string word = ' ' + match.str(3) + ' ';
        std::transform(word.begin(), word.end(), word.begin(),
                       [](char c) { return static_cast<char>(std::tolower(c)); });
        auto const* const unit = std::find_if(std::begin(units), std::end(units), [&](auto const& candidate) {
            return candidate.first.find(word) != std::string_view::npos;
        });
        if (unit == std::end(units))
            return "Invalid time offset unit: '" + match.str(3) + "'";
        long long const number = std::atoi((match.str(1) + match.str(2)).c_str());
        auto const of = [&](std::size_t field) { return static_cast<int>(number * unit->second[field]); };
        result += TimeOffset(of(0), of(1), of(2), of(3), of(4), of(5), of(6));
    }
    return testing::PrintToString(result);
}

TEST_P(TimeMatchers, Offsets)
{
    // clang-format off
    Pieces const pieces = {
        "+", "-", "+", "1", "20", "9", " ", "  ", "\t", "\n", "\r", "\v", "\f", "\0"sv, "_", ".", ":", "\xE9", "\xFF",
        "+1d", "-3 min", "+2\nh", "+007", "-4", "x", "m", "mo", "e", "msec", "years", "year", "yrs", "yr", "y", "months",
        "month", "Weeks", "week", "wks", "wk", "w", "days", "DAY", "d", "D", "hours", "hour", "hrs", "hR", "h",
        "minutes", "minute", "mins", "MiN", "seconds", "second", "secs", "sec", "s", "milliseconds", "millisecond",
        "ms", "MS"};
    // clang-format on
    CheckTexts({"+1", "-20 "}, pieces, [](std::string const& text) {
        return Outcome([&] { return ParseTimeOffset(text); }) == ParseOffsetByExpression(text);
    });
}

TEST_P(TimeMatchers, SymbolicTimes)
{
    std::regex const expression("\\s*(.*?)\\s*((?:[+-]\\s*\\d+\\s*[A-Za-z]+\\s*)*)");
    std::regex const symbol("[A-Za-z_][0-9A-Za-z_]*");
    Pieces const pieces = {"+", "-", "+1d", "- 2 w ", "1", "20", " ", "  ", "\t",   "\n",   "\r",
                           "a", "Z", "_",   "x_1",    ".", ":",  "@", "[",  "\xE9", "\v\f", "\0"sv};
    CheckTexts({""}, pieces, [&](std::string const& text) {
        std::smatch match;
        std::string_view base;
        std::string_view offsets;
        bool const fits = std::regex_match(text, match, expression);
        return Internal::MatchExpression(text, base, offsets) == fits &&
               (!fits || (base == match.str(1) && offsets == match.str(2))) &&
               Internal::IsSymbol(text) == std::regex_match(text, symbol);
    });
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
