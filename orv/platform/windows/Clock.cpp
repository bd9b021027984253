#include "orv/platform/Clock.h"

#include <ctime>

namespace Zan::Orv::Core::Service::Platform {

static_assert(CLOCKS_PER_SEC == 1000);

// Elsewhere this counts processor time. Here it is wall time.
long long WallMilliseconds()
{
    return std::clock();
}

} // namespace Zan::Orv::Core::Service::Platform
