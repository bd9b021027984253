#include "orv/platform/BoundedFormat.h"

#include <cstdio>
#include <cstdlib>

namespace Zan::Orv::Core::Service::Platform {

void FormatBounded(char* buffer, std::size_t size, char const* format, std::va_list arguments)
{
    int const length = std::vsnprintf(buffer, size, format, arguments);
    if (length < 0 || static_cast<std::size_t>(length) >= size)
        std::abort();
}

} // namespace Zan::Orv::Core::Service::Platform
