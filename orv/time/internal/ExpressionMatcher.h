#pragma once

#include <string_view>

namespace Zan::Orv::Core::Service::Internal {

/// Splits a symbolic time into its base and the run of offsets at its end, in one pass. The language and the two groups
/// are those of the expression
///
///     \s*(.*?)\s*((?:[+-]\s*\d+\s*[A-Za-z]+\s*)*)
///
/// matched against the whole text, where `.` does not cross a line end. False when it does not match.
bool MatchExpression(std::string_view text, std::string_view& base, std::string_view& offsets);

/// True for a name: [A-Za-z_][0-9A-Za-z_]*
bool IsSymbol(std::string_view text);

} // namespace Zan::Orv::Core::Service::Internal
