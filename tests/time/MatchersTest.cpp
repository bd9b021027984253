#include "fuzz/TimeExpressions.h"
#include "tests/support/RandomTexts.h"
#include "tests/time/Times.h"

#include <random>
#include <string>
#include <string_view>
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
                   auto const [fits, agrees] = Fuzz::CompareDate(text);
                   found += fits ? 1 : 0;
                   return agrees;
               });
    EXPECT_GT(found, randomTexts / 10); // or the texts are too wild to tell anything
}

TEST_P(TimeMatchers, Offsets)
{
    Pieces const pieces = {"+",    "-",   "+",  "1",     "20",   "9",    " ",      "  ", "\t",
                           "\n",   "\r",  "\v", "\f",    "\0"sv, "_",    ".",      ":",  "\xE9",
                           "\xFF", "+1d", "m",  "+2\nh", "DAY",  "+007", "months", "-4", "-3 min"};
    CheckTexts({"+1", "-20 ", "3 w"}, pieces, [](std::string const& text) {
        return Fuzz::CompareTerms(text, true).agrees && Fuzz::CompareTerms(text, false).agrees;
    });
}

TEST_P(TimeMatchers, SymbolicTimes)
{
    Pieces const pieces = {"+", "-", "+1d", "- 2 w ", "1", "20", " ", "  ", "\t",   "\n",   "\r",
                           "a", "Z", "_",   "x_1",    ".", ":",  "@", "[",  "\xE9", "\v\f", "\0"sv};
    CheckTexts({""}, pieces, [](std::string const& text) { return Fuzz::CompareExpression(text).agrees; });
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
