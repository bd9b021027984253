#pragma once

#include <cstddef>
#include <string_view>

/// The text of doubles without a string in between, for the writers and readers of documents.

namespace Zan::Orv::Core::Service::Internal {

/// The longest text of `WriteIEEE`: a sign, 21 digits, a point and a three-digit exponent, and a margin.
inline constexpr std::size_t MaxIEEEText = 32;

/// Writes the text of `IEEEToString` at `first`, where `MaxIEEEText` characters have room. Returns its end.
char* WriteIEEE(char* first, double value);

/// `IEEEFromString` for any range of characters.
double ReadIEEE(std::string_view text);

} // namespace Zan::Orv::Core::Service::Internal
