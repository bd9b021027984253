#include "orv/platform/BoundedFormat.h"

#include <cstdio>
#include <cstdlib>
#include <stdlib.h>

namespace Zan::Orv::Core::Service::Platform {

void FormatBounded(char* buffer, std::size_t size, char const* format, std::va_list arguments)
{
    int const length = std::vsnprintf(buffer, size, format, arguments);
    if (length >= 0 && static_cast<std::size_t>(length) < size)
        return;

    // As the run time's own checked functions do. They are not called themselves: not every C runtime ends the process.
    _invalid_parameter_handler const handler = ::_get_invalid_parameter_handler();
    if (handler == nullptr)
        std::abort();
    handler(nullptr, nullptr, nullptr, 0, 0);
    *buffer = '\0';
}

} // namespace Zan::Orv::Core::Service::Platform
