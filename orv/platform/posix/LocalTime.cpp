#include "orv/platform/LocalTime.h"

#include <time.h>

namespace Zan::Orv::Core::Service::Platform {

bool LocalTime(std::tm& result)
{
    std::time_t const now = ::time(nullptr);
    return ::localtime_r(&now, &result) != nullptr;
}

} // namespace Zan::Orv::Core::Service::Platform
