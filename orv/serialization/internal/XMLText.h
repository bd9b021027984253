#pragma once

#include <string>
#include <string_view>

/// Text as XML wants it: markup escaped, and the parser's 16-bit characters turned into UTF-8.

namespace Zan::Orv::Core::Service::Internal {

/// True when `value` has one of the five markup characters.
bool HasMarkup(std::string_view value);

/// Appends `value` with the five markup characters escaped.
void AppendEscaped(std::string& text, std::string_view value);

/// Appends the UTF-8 form of `wide`. Half a surrogate pair becomes U+FFFD.
void AppendUTF8(std::string& text, std::u16string_view wide);

/// Replaces `text` by the UTF-8 form of `wide`.
void AssignUTF8(std::string& text, std::u16string_view wide);

} // namespace Zan::Orv::Core::Service::Internal
