#pragma once

#include <string>
#include <string_view>

/// Text as XML wants it: markup escaped, and UTF-8 turned into the parser's 16-bit characters and back.

namespace Zan::Orv::Core::Service::Internal
{

/// Appends `value` with the five markup characters escaped.
void AppendEscaped(std::string& text, std::string_view value);

/// Replaces `wide` by the UTF-16 form of `text`. A byte that is no UTF-8 becomes U+FFFD.
void AssignUTF16(std::u16string& wide, std::string_view text);

/// Replaces `text` by the UTF-8 form of `wide`. Half a surrogate pair becomes U+FFFD.
void AssignUTF8(std::string& text, std::u16string_view wide);

} // namespace Zan::Orv::Core::Service::Internal
