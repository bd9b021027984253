#pragma once

#include <cstdarg>
#include <cstddef>

namespace Zan::Orv::Core::Service::Internal {

/// Formats as vsnprintf does, several times faster, a text whose conversions are plain: %d %i %u %x %c %s %e
/// %f %g and %%, with a length but without flags or a width, and with a precision for the last three alone.
///
/// False, and `buffer` meaningless, for anything else and for a text that does not fit: the C library is to
/// do it.
bool FormatPlainly(char* buffer, std::size_t size, char const* format, std::va_list arguments);

} // namespace Zan::Orv::Core::Service::Internal
