#pragma once

#include <cstdarg>
#include <cstddef>

namespace Zan::Orv::Core::Service::Platform {

/// Formats into `buffer`. A text that does not fit with its terminator is an error of the program and takes
/// the C runtime's way out for one, which by default ends the process; it is never cut.
void FormatBounded(char* buffer, std::size_t size, char const* format, std::va_list arguments);

} // namespace Zan::Orv::Core::Service::Platform
