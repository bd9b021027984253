#pragma once

#include <string_view>

/// Lines of text that count as equal when their words do, and words that do when their numbers are close.

namespace Zan::Orv::Core::Service::Internal {

/// Cuts the first word off `rest`, with the blanks in front of it: space, tab and newline. Empty at the end.
std::string_view TakeWord(std::string_view& rest);

/// True when `a` and `b` have as many words and each pair of them is the same, or two numbers that differ by
/// no more than 1e-12 of the one in `a`. Linear, and without any memory of its own.
bool TolerantEqual(std::string_view a, std::string_view b);

} // namespace Zan::Orv::Core::Service::Internal
