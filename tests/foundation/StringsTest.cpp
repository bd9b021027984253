#include "orv/foundation/Strings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
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

TEST(Strings, CompareLengthsAndCase)
{
    EXPECT_TRUE(StringEqual("A Longer.DAT", "a longer.dat", false));
    EXPECT_FALSE(StringEqual("A Longer.DAT", "a longer.dat", true));
    EXPECT_FALSE(StringEqual("abcdefgh", "ABCDEFGH\0"s, false));
    EXPECT_TRUE(NoCaseCharEqual('a', 'A'));
    EXPECT_FALSE(NoCaseCharEqual('\xE4', '\xC4'));
    EXPECT_TRUE(NoCaseStringLess("z and more", "[ and less")); // by the upper case
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
    string piece;
    StringLeft("abcde", piece, -1);
    EXPECT_EQ(piece, "abcde");
    EXPECT_THROW(StringRight("vwxyz", piece, -1), std::out_of_range);
    EXPECT_EQ(piece, "abcde");
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
    // Long texts are searched in another way than short ones.
    string const pattern = string(70, 'a') + 'b';
    s = string(300, 'a') + pattern + pattern + string(99, 'a');
    StringReplace(s, pattern, "c");
    EXPECT_EQ(s, string(300, 'a') + "cc" + string(99, 'a'));
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
    EXPECT_EQ(StringTrim("\f\fab\r\n"), "ab\r");
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
    EXPECT_EQ(split("abcde", string::npos - 1), Strings{"abcde"});
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
