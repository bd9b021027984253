#pragma once

#include <charconv>
#include <cstddef>
#include <istream>
#include <ostream>
#include <string>

/// Integers on streams, as the streams' own operators write and read them, at a fraction of the cost for a
/// stream with plain settings.

namespace Zan::Orv::Core::Service::Internal {

/// True when the stream formats integers as digits and a minus sign and nothing else: its flags, its width
/// and its locale ask for no more.
bool FormatsPlainly(std::ios_base const& stream);

/// Puts `text` on the stream as it stands, and empties it in every case.
void WriteAndClear(std::ostream& stream, std::string& text);

/// The text of `value` as `stream << value` would write it, which uses up the stream's width.
std::string FormatInteger(std::ios& stream, long long value);
std::string FormatInteger(std::ios& stream, unsigned long long value);
std::string FormatInteger(std::ios& stream, int value);
std::string FormatInteger(std::ios& stream, unsigned int value);
std::string FormatInteger(std::ios& stream, short value);
std::string FormatInteger(std::ios& stream, unsigned short value);

/// Appends to `text` what `stream << value` would write.
template<class T>
void AppendInteger(std::string& text, std::ios& stream, T value)
{
    if (!FormatsPlainly(stream))
    {
        text += FormatInteger(stream, value);
        return;
    }
    char digits[24];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

/// `stream >> word`
void ReadWord(std::istream& stream, std::string& word);

/// `stream.ignore(512, '\n')`
void SkipLine(std::istream& stream);

/// `stream >> value`
void ReadInteger(std::istream& stream, long long& value);
void ReadInteger(std::istream& stream, unsigned long long& value);
void ReadInteger(std::istream& stream, int& value);
void ReadInteger(std::istream& stream, unsigned int& value);
void ReadInteger(std::istream& stream, short& value);
void ReadInteger(std::istream& stream, unsigned short& value);

} // namespace Zan::Orv::Core::Service::Internal
