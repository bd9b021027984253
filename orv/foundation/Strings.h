#pragma once

#include "orv/Export.h"

#include <cstddef>
#include <string>
#include <vector>

/// \file
/// Functions on strings of bytes. No encoding is assumed: what a letter, a digit or white space is, and how
/// case folds, is said byte by byte by the C library in the program's locale. In the "C" locale that is ASCII
/// alone.
///
///     std::vector<std::string> words;
///     StringSplit("a,,b", words, ",", true);        // a b
///     bool same = NoCaseStringEqual(words[0], "A"); // true
///
/// The blanks of the trimming functions are six, in any locale: space, tab, vertical tab, newline, carriage
/// return and form feed.
///
/// Each function is linear in what it is given, and safe on any thread as long as no other changes its strings.

namespace Zan::Orv::Core::Service {

/// True when every byte is white space, as it is for the empty string. No byte above 0x7F is white space.
ORV_API bool AllBlanks(std::string const& s);

/// True when every byte is a digit. False for the empty string.
ORV_API bool AllDigits(std::string const& s);

/// Equal when both are in upper case.
ORV_API bool NoCaseCharEqual(char a, char b);

/// Equal in length and, by `NoCaseCharEqual`, in each byte.
ORV_API bool NoCaseStringEqual(std::string const& a, std::string const& b);

/// The lexicographic order of the upper case bytes as unsigned values, fit for ordered containers.
ORV_API bool NoCaseStringLess(std::string const& a, std::string const& b);

/// Equality byte by byte, or that of `NoCaseStringEqual`.
ORV_API bool StringEqual(std::string const& a, std::string const& b, bool caseSensitive);

/// Sets `result` to the first `count` bytes of `source`: to all of them where there are fewer, and for a
/// negative count. Both may be the same string.
ORV_API void StringLeft(std::string const& source, std::string& result, int count);

/// Sets `result` to the last `count` bytes of `source`, or to all of them where there are fewer. Both may be
/// the same string. Lengths are taken as `int`.
/// \throws std::out_of_range for a negative count; `result` stays as it is.
ORV_API void StringRight(std::string const& source, std::string& result, int count);

/// Replaces every occurrence of `from`, taken from the left without overlap. What was put in is not searched.
/// `from` must not be empty: the empty text occurs everywhere, and is replaced without end.
ORV_API void StringReplace(std::string& s, std::string const& from, std::string const& to);

/// Replaces every byte `from`. True when there was one, also where it is equal to `to`.
ORV_API bool StringReplaceChar(std::string& s, char from, char to);

/// \{
/// Changes every letter to the case of the name, byte by byte.
ORV_API void StringToLower(std::string& s);
ORV_API void StringToUpper(std::string& s);
/// \}

/// Removes blanks from the chosen ends.
ORV_API void StringTrimBlank(std::string& s, bool leading, bool trailing);

/// Removes the space, and no other blank, from the chosen ends.
ORV_API void StringTrimSpace(std::string& s, bool leading, bool trailing);

/// `s` without the blanks at its front, and without some of those at its end: which ones depends on how many
/// bytes follow the leading blanks, the trailing ones included.
///
///     1 byte   space
///     2 bytes  also tab
///     3 bytes  also vertical tab
///     4 bytes  also newline
///     5 bytes  also carriage return
///     6 bytes  also form feed
///
/// "ab\n" has 3 and keeps its newline; "abcd\n" has 5 and loses it. `StringTrimBlank` removes them all.
ORV_API std::string StringTrim(std::string const& s);

/// Splits at each byte that is among `separators`, and appends the pieces to `tokens`, which keeps what it has.
/// There is one piece more than separators, so a separator at an end has an empty piece beside it; with
/// `skipEmpty`, empty pieces are left out. Neither string may be an element of `tokens`.
ORV_API void StringSplit(std::string const& s, std::vector<std::string>& tokens,
                         std::string const& separators, bool skipEmpty);

/// Splits into pieces of `width` bytes, of which the last may be shorter, and replaces what `tokens` had. A
/// width of 0 gives no pieces. `s` may not be an element of `tokens`.
ORV_API void StringSplit(std::string const& s, std::size_t width, std::vector<std::string>& tokens);

} // namespace Zan::Orv::Core::Service
