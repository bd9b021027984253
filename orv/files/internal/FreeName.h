#pragma once

#include <string>
#include <vector>

namespace Zan::Orv::Core::Service::Internal {

/// The smallest number from 1 on that no leaf name has taken. One has when the expression
/// "^<root>_<number>[\.|\Z]" is found in it without regard to case: in this grammar the class is '.', '|' and
/// 'Z'. Linear where `root` has only characters that stand for themselves.
/// \throws std::regex_error when that is no expression.
/// \throws std::runtime_error when it is found whatever the number.
unsigned long long FirstFreeNumber(std::string const& root, std::vector<std::string> const& leafNames);

} // namespace Zan::Orv::Core::Service::Internal
