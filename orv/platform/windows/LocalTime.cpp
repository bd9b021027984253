#include "orv/platform/LocalTime.h"

#include <time.h>

namespace Zan::Orv::Core::Service::Platform {

bool LocalTime(std::tm& result)
{
    __time64_t const now = ::_time64(nullptr);
    std::tm const* const local = ::_localtime64(&now); // the thread's own buffer
    if (local != nullptr)
        result = *local;
    return local != nullptr;
}

} // namespace Zan::Orv::Core::Service::Platform
