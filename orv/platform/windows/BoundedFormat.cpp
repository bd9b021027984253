#include "orv/platform/BoundedFormat.h"

#include <cstdio>
#include <stdio.h>

namespace Zan::Orv::Core::Service::Platform {

void FormatBounded(char* buffer, std::size_t size, char const* format, std::va_list arguments)
{
    std::va_list copy;
    va_copy(copy, arguments);
    int const length = std::vsnprintf(buffer, size, format, copy);
    va_end(copy);
    // The run time's own function refuses a text that is too long, through its invalid-parameter handler.
    if (length < 0 || static_cast<std::size_t>(length) >= size)
        ::vsprintf_s(buffer, size, format, arguments);
}

} // namespace Zan::Orv::Core::Service::Platform
