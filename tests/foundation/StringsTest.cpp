#include "orv/foundation/Strings.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using namespace std::string_literals;
using std::string;
using testing::PrintToString;
using Strings = std::vector<string>;

string const blanks = " \t\v\n\r\f";

TEST(Strings, ClassifyEveryByte)
{
    EXPECT_TRUE(AllBlanks(""));
    EXPECT_FALSE(AllDigits(""));
    EXPECT_TRUE(AllBlanks(blanks));
    EXPECT_TRUE(AllDigits("0123456789"));
    for (int i = 0; i < 256; ++i)
    {
        char const c = static_cast<char>(i);
        EXPECT_EQ(AllBlanks(" "s + c + ' '), blanks.find(c) != string::npos) << i;
        EXPECT_EQ(AllDigits("0"s + c + '9'), '0' <= c && c <= '9') << i;
    }
}

// Every pair of bytes, behind prefixes that end within and at the ends of words.
TEST(Strings, CompareWithoutCase)
{
    auto const fold = [](int byte) { return byte >= 'a' && byte <= 'z' ? byte - 32 : byte; };
    for (int i = 0; i < 256 * 256; ++i)
    {
        int const x = i / 256;
        int const y = i % 256;
        bool const equal = fold(x) == fold(y);
        bool const less = fold(x) < fold(y);
        ASSERT_EQ(NoCaseCharEqual(static_cast<char>(x), static_cast<char>(y)), equal) << x << ' ' << y;
        for (string const prefix : {"", "Prefix\xE4", "eight \xC4 e and 16"})
        {
            // Behind the bytes in question, the order would be the other one.
            string const a = prefix + static_cast<char>(x) + "zz";
            string const b = prefix + static_cast<char>(y) + "aa";
            ASSERT_EQ(NoCaseStringEqual(a.substr(0, a.size() - 2), b.substr(0, b.size() - 2)), equal)
                << PrintToString(a) << PrintToString(b);
            ASSERT_EQ(NoCaseStringLess(a, b), less) << PrintToString(a) << PrintToString(b);
        }
    }
}

TEST(Strings, CompareLengthsAndCase)
{
    // clang-format off
    struct { string a, b; bool equal, less; } const cases[] = {
        {"", "", true, false},                              {"", "a", false, true},
        {"A Longer.DAT", "a longer.dat", true, false},      {"A Longer", "a longer.dat", false, true},
        {"abcdefgh", "ABCDEFGH\0"s, false, true},           {"a\0b"s, "A\0C"s, false, true},
        {"aAb", "a_b", false, true}}; // an underscore stands between the cases
    // clang-format on
    for (auto const& c : cases)
    {
        SCOPED_TRACE(PrintToString(c.a) + PrintToString(c.b));
        EXPECT_EQ(NoCaseStringEqual(c.a, c.b), c.equal);
        EXPECT_EQ(StringEqual(c.a, c.b, false), c.equal);
        EXPECT_EQ(StringEqual(c.a, c.b, true), c.a == c.b);
        EXPECT_EQ(NoCaseStringLess(c.a, c.b), c.less);
        EXPECT_FALSE(NoCaseStringLess(c.b, c.a));
    }
}

TEST(Strings, LeftAndRight)
{
    constexpr int most = std::numeric_limits<int>::max();
    // clang-format off
    struct { int count; string left, right; } const cases[] = {
        {0, "", ""}, {1, "a", "e"}, {4, "abcd", "bcde"}, {5, "abcde", "abcde"}, {most, "abcde", "abcde"}};
    // clang-format on
    for (auto const& c : cases)
    {
        string left = "abcde";
        string right = left;
        StringLeft(left, left, c.count);
        StringRight(right, right, c.count);
        EXPECT_EQ(left + '|' + right, c.left + '|' + c.right) << c.count;
    }
    for (int const count : {-1, -5, -most, -most - 1})
    {
        for (string const source : {"", "abcde"})
        {
            string left = "before";
            string right = "before";
            StringLeft(source, left, count);
            EXPECT_EQ(left, source) << count;
            EXPECT_THROW(StringRight(source, right, count), std::out_of_range) << count;
            EXPECT_EQ(right, "before") << count;
        }
    }
}

TEST(Strings, Replace)
{
    // clang-format off
    struct { string s, from, to, result; } const cases[] = {
        {"", "a", "b", ""},             {"aaaaa", "aa", "b", "bba"}, {"aXaX", "X", "", "aa"},
        {"XaX", "X", "XX", "XXaXX"}, // what was put in is not searched
        {"aabb", "ab", "", "ab"},    // nor is what it makes with the text before it
        {"a\0b"s, "\0"s, "\0\0"s, "a\0\0b"s}};
    // clang-format on
    for (auto const& c : cases)
    {
        string s = c.s;
        StringReplace(s, c.from, c.to);
        EXPECT_EQ(s, c.result) << PrintToString(c.s) << " from " << PrintToString(c.from);
    }
    string s = "ab";
    StringReplace(s, s, "c");
    EXPECT_EQ(s, "c");
}

// Long texts are searched in another way than short ones.
TEST(Strings, ReplaceAsInPlace)
{
    unsigned const seed = 12;
    std::mt19937 random(seed);
    auto const periodic = [&](std::size_t length) {
        string text;
        for (std::size_t const period = 1 + random() % 9; text.size() < length;)
            text +=
                text.size() < period || random() % 64 == 0 ? "ab"[random() % 2] : text[text.size() - period];
        return text;
    };
    int replaced = 0;
    for (int round = 0; round < 5000; ++round)
    {
        string const text = periodic(random() % 600);
        string from = periodic(1 + random() % 4);
        if (round % 2 == 0 && text.size() > 200)
            from = text.substr(random() % 60, 60 + random() % 80);
        string const to = periodic(random() % 5);

        string expected = text;
        for (std::size_t pos = 0; (pos = expected.find(from, pos)) != string::npos; pos += to.size())
            expected.replace(pos, from.size(), to);
        string found = text;
        StringReplace(found, from, to);
        ASSERT_EQ(found, expected) << text << " from " << from << " to " << to << ", seed " << seed;
        replaced += from.size() > 64 && found != text;
    }
    EXPECT_GT(replaced, 500);
}

TEST(Strings, ReplaceInAMillionBytes)
{
    string s(1000000, 'a');
    StringReplace(s, string(500000, 'a') + 'b', "c");
    EXPECT_EQ(s, string(1000000, 'a'));
    StringReplace(s, "a", "bc");
    EXPECT_EQ(s.size(), 2000000u);
}

TEST(Strings, ChangeBytes)
{
    string s = "a\\b\\";
    EXPECT_TRUE(StringReplaceChar(s, '\\', '/'));
    EXPECT_EQ(s, "a/b/");
    EXPECT_FALSE(StringReplaceChar(s, '\\', '/'));
    EXPECT_TRUE(StringReplaceChar(s, 'b', 'b'));
    EXPECT_EQ(s, "a/b/");

    string all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    auto const changed = [&](char first, int by) {
        string result = all;
        for (int i = 0; i < 26; ++i)
            result[static_cast<std::size_t>(first + i)] = static_cast<char>(first + i + by);
        return result;
    };
    string lower = all;
    StringToLower(lower);
    EXPECT_EQ(lower, changed('A', 32));
    string upper = all;
    StringToUpper(upper);
    EXPECT_EQ(upper, changed('a', -32));
}

TEST(Strings, TrimInPlace)
{
    // clang-format off
    struct { string s; bool leading, trailing; string blank, space; } const cases[] = {
        {"", true, true, "", ""},               {"  \t ", true, false, "", "\t "},
        {" \t  ", false, true, "", " \t"},      {"   ", false, false, "   ", "   "},
        {"   ", true, true, "", ""},            {" a b ", true, false, "a b ", "a b "},
        {" a b ", false, true, " a b", " a b"}, {" a\t", true, true, "a", "a\t"},
        {blanks + "a \xA0" + blanks, true, true, "a \xA0", blanks.substr(1) + "a \xA0" + blanks}};
    // clang-format on
    for (auto const& c : cases)
    {
        string blank = c.s;
        string space = c.s;
        StringTrimBlank(blank, c.leading, c.trailing);
        StringTrimSpace(space, c.leading, c.trailing);
        EXPECT_EQ(blank, c.blank) << PrintToString(c.s);
        EXPECT_EQ(space, c.space) << PrintToString(c.s);
    }
}

// The more there is behind the leading blanks, the more blanks are removed at the end.
TEST(Strings, TrimByValueIsUneven)
{
    for (string const& s : {""s, " "s, blanks})
        EXPECT_EQ(StringTrim(s), "") << PrintToString(s);
    for (string const& front : {""s, "\n"s, blanks})
    {
        for (std::size_t length = 1; length <= 8; ++length)
        {
            for (std::size_t trailing = 1; trailing <= blanks.size(); ++trailing)
            {
                string const word(length, 'x');
                string const tail(1, blanks[trailing - 1]);
                bool const stays = length + tail.size() < trailing;
                EXPECT_EQ(StringTrim(front + word + tail), stays ? word + tail : word) << length << trailing;
            }
        }
    }
    // clang-format off
    std::pair<string, string> const cases[] = {
        {"x", "x"}, {"ab\n", "ab\n"}, {"abc\n", "abc"}, {"\f\fab\r\n", "ab\r"}, {"a b \xA0 ", "a b \xA0"},
        {"x \n", "x \n"},    // three: the newline protects the space,
        {"x\n ", "x\n"},     // and is not removed itself
        {"x   \n", "x"},     // five: trailing blanks count,
        {"     x\n", "x\n"}}; // leading ones do not
    // clang-format on
    for (auto const& [s, result] : cases)
        EXPECT_EQ(StringTrim(s), result) << PrintToString(s);
}

TEST(Strings, SplitAtASetAppends)
{
    // clang-format off
    struct { string s, separators; Strings all, filled; } const cases[] = {
        {"", ",", {""}, {}},        {"", "", {""}, {}}, {"a,b", "", {"a,b"}, {"a,b"}}, {"ab", ",", {"ab"}, {"ab"}},
        {",", ",", {"", ""}, {}},   {"a,,b,", ",", {"a", "", "b", ""}, {"a", "b"}},
        {",;a;b\xFF;", ";\xFF,", {"", "", "a", "b", "", ""}, {"a", "b"}},
        {"a\0b,c"s, ",\0"s, {"a", "b", "c"}, {"a", "b", "c"}}};
    // clang-format on
    for (auto const& c : cases)
    {
        SCOPED_TRACE(PrintToString(c.s) + " at " + PrintToString(c.separators));
        for (bool const skipEmpty : {false, true})
        {
            Strings tokens = {"kept", ""};
            Strings expected = tokens;
            Strings const& added = skipEmpty ? c.filled : c.all;
            expected.insert(expected.end(), added.begin(), added.end());
            StringSplit(c.s, tokens, c.separators, skipEmpty);
            EXPECT_EQ(tokens, expected) << skipEmpty;
        }
    }
}

TEST(Strings, SplitByWidthReplaces)
{
    // clang-format off
    struct { string s; std::size_t width; Strings tokens; } const cases[] = {
        {"", 2, {}},                   {"abcde", 0, {}},                  {"abcde", 2, {"ab", "cd", "e"}},
        {"abcd", 2, {"ab", "cd"}},     {"abcde", 5, {"abcde"}},           {"abcde", string::npos - 1, {"abcde"}}};
    // clang-format on
    for (auto const& c : cases)
    {
        Strings tokens = {"gone"};
        StringSplit(c.s, c.width, tokens);
        EXPECT_EQ(tokens, c.tokens) << PrintToString(c.s) << " by " << c.width;
    }
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
