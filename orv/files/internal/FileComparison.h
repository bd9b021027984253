#pragma once

#include <string>

/// Two files side by side, by their names as the host takes them, in blocks: no file is held whole.

namespace Zan::Orv::Core::Service::Internal {

/// True when both hold the same bytes. Files of different length are not read.
/// \throws std::runtime_error "Problem opening file: " and the name, or "reading" or "closing".
bool EqualBytes(std::string const& a, std::string const& b);

/// True when both have as many lines and each pair of them is the same or, with `tolerant`, `TolerantEqual`.
/// A last line that lacks its newline differs from one that has it. False also where a file can not be read.
/// Memory for the longest line.
bool EqualLines(std::string const& a, std::string const& b, bool tolerant);

} // namespace Zan::Orv::Core::Service::Internal
