#include "orv/foundation/Strings.h"

#include <gtest/gtest.h>

#include <algorithm>
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

TEST(Strings, KnowEveryByte)
{
    EXPECT_TRUE(AllBlanks(""));
    EXPECT_FALSE(AllDigits(""));
    for (int i = 0; i < 256; ++i)
    {
        char const c = static_cast<char>(i);
        EXPECT_EQ(AllBlanks(" "s + c + ' '), blanks.find(c) != string::npos) << i;
        EXPECT_EQ(AllDigits("0"s + c + '9'), '0' <= c && c <= '9') << i;
        string lower = "aA"s + c;
        string upper = lower;
        StringToLower(lower);
        StringToUpper(upper);
        EXPECT_EQ(lower, "aa"s + static_cast<char>('A' <= c && c <= 'Z' ? i + 32 : i));
        EXPECT_EQ(upper, "AA"s + static_cast<char>('a' <= c && c <= 'z' ? i - 32 : i));
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
    EXPECT_TRUE(StringEqual("A Longer.DAT", "a longer.dat", false));
    EXPECT_FALSE(StringEqual("A Longer.DAT", "a longer.dat", true));
    EXPECT_FALSE(StringEqual("abcdefgh", "ABCDEFGH\0"s, false));
    for (auto const& [a, b] : {std::pair{""s, "a"s}, {"A Longer"s, "a longer.dat"s}, {"a\0b"s, "A\0C"s}})
    {
        EXPECT_TRUE(NoCaseStringLess(a, b)) << PrintToString(a);
        EXPECT_FALSE(NoCaseStringLess(b, a)) << PrintToString(a);
    }
}

TEST(Strings, LeftAndRight)
{
    constexpr int most = std::numeric_limits<int>::max();
    for (int const count : {0, 1, 4, 5, most})
    {
        string left = "abcde";
        string right = left;
        StringLeft(left, left, count);
        StringRight(right, right, count);
        auto const size = static_cast<std::size_t>(std::min(count, 5));
        EXPECT_EQ(left, "abcde"s.substr(0, size));
        EXPECT_EQ(right, "abcde"s.substr(5 - size));
    }
    for (int const count : {-1, -5, -most - 1})
    {
        string left = "before";
        string right = "before";
        StringLeft("abcde", left, count);
        EXPECT_EQ(left, "abcde") << count;
        EXPECT_THROW(StringRight("abcde", right, count), std::out_of_range) << count;
        EXPECT_EQ(right, "before") << count;
    }
}

TEST(Strings, Replace)
{
    string s = "a\0b"s;
    StringReplace(s, "\0"s, "\0\0"s);
    EXPECT_EQ(s, "a\0\0b"s);
    StringReplace(s, s, "c");
    EXPECT_EQ(s, "c");

    s.assign(1000000, 'a');
    StringReplace(s, string(500000, 'a') + 'b', "c");
    EXPECT_EQ(s, string(1000000, 'a'));
    StringReplace(s, "a", "bc");
    EXPECT_EQ(s.size(), 2000000u);
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

TEST(Strings, ReplaceChar)
{
    string s = "a\\b\\";
    EXPECT_TRUE(StringReplaceChar(s, '\\', '/'));
    EXPECT_FALSE(StringReplaceChar(s, '\\', '/'));
    EXPECT_TRUE(StringReplaceChar(s, 'b', 'b'));
    EXPECT_EQ(s, "a/b/");
}

TEST(Strings, TrimInPlace)
{
    auto const trimmed = [](string s, bool leading, bool trailing) {
        string blank = s;
        StringTrimBlank(blank, leading, trailing);
        StringTrimSpace(s, leading, trailing);
        return std::pair(blank, s);
    };
    EXPECT_EQ(trimmed("", true, true), std::pair(""s, ""s));
    EXPECT_EQ(trimmed("   ", false, false), std::pair("   "s, "   "s));
    EXPECT_EQ(trimmed(" \t  ", false, true), std::pair(""s, " \t"s));
    EXPECT_EQ(trimmed(" a b ", true, false), std::pair("a b "s, "a b "s));
    EXPECT_EQ(trimmed(blanks + "a \xA0" + blanks, true, true),
              std::pair("a \xA0"s, blanks.substr(1) + "a \xA0" + blanks));
}

// The more there is behind the leading blanks, the more blanks are removed at the end.
TEST(Strings, TrimByValueIsUneven)
{
    for (string const& s : {""s, " "s, blanks})
        EXPECT_EQ(StringTrim(s), "") << PrintToString(s);
    // With so many bytes, so many of the blanks are removed.
    for (std::size_t last = 2; last < blanks.size(); ++last)
    {
        string const text = string(last - 1, 'x') + blanks[last];
        EXPECT_EQ(StringTrim(blanks + text), text) << last;
        EXPECT_EQ(StringTrim(blanks + 'x' + text), 'x' + text.substr(0, last - 1)) << last;
    }
    EXPECT_EQ(StringTrim("\f\fab\r\n"), "ab\r");
    EXPECT_EQ(StringTrim("a b \xA0 "), "a b \xA0");
    EXPECT_EQ(StringTrim("x \n"), "x \n");    // three: the newline protects the space,
    EXPECT_EQ(StringTrim("x\n "), "x\n");     // and is not removed itself
    EXPECT_EQ(StringTrim("x   \n"), "x");     // five: trailing blanks count,
    EXPECT_EQ(StringTrim("     x\n"), "x\n"); // leading ones do not
}

TEST(Strings, SplitAtASetAppends)
{
    auto const split = [](string const& s, string const& separators, bool skipEmpty) {
        Strings tokens = {"kept"};
        StringSplit(s, tokens, separators, skipEmpty);
        return tokens;
    };
    EXPECT_EQ(split("", ",", false), (Strings{"kept", ""}));
    EXPECT_EQ(split("", ",", true), Strings{"kept"});
    EXPECT_EQ(split("a,b", "", false), (Strings{"kept", "a,b"}));
    EXPECT_EQ(split(",;a;b\xFF;", ";\xFF,", false), (Strings{"kept", "", "", "a", "b", "", ""}));
    EXPECT_EQ(split(",;a;b\xFF;", ";\xFF,", true), (Strings{"kept", "a", "b"}));
    EXPECT_EQ(split("a\0b,c"s, ",\0"s, true), (Strings{"kept", "a", "b", "c"}));
}

TEST(Strings, SplitByWidthReplaces)
{
    auto const split = [](string const& s, std::size_t width) {
        Strings tokens = {"gone"};
        StringSplit(s, width, tokens);
        return tokens;
    };
    EXPECT_EQ(split("", 2), Strings());
    EXPECT_EQ(split("abcde", 0), Strings());
    EXPECT_EQ(split("abcde", 2), (Strings{"ab", "cd", "e"}));
    EXPECT_EQ(split("abcd", 2), (Strings{"ab", "cd"}));
    EXPECT_EQ(split("abcde", string::npos - 1), Strings{"abcde"});
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
