#include "orv/platform/Clock.h"

#include <time.h>

namespace Zan::Orv::Core::Service::Platform {

namespace {

// CLOCK_MONOTONIC_COARSE would be cheaper, but ticks in 4 ms.
long long Milliseconds()
{
    timespec now = {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000LL + now.tv_nsec / 1'000'000;
}

long long const begin = Milliseconds(); // of the library, which is loaded with the process

} // namespace

long long WallMilliseconds()
{
    return Milliseconds() - begin;
}

} // namespace Zan::Orv::Core::Service::Platform
