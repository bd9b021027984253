#include "orv/platform/StackLimit.h"

#include "orv/platform/windows/WindowsHeaders.h"

#include <algorithm>
#include <cstdint>

namespace Zan::Orv::Core::Service::Platform {

namespace {

std::uintptr_t FindLowMark()
{
    ULONG_PTR bottom = 0;
    ULONG_PTR top = 0;
    ::GetCurrentThreadStackLimits(&bottom, &top);
    return bottom + std::min<ULONG_PTR>(ULONG_PTR{128} << 10, (top - bottom) / 8);
}

} // namespace

bool StackIsLow()
{
    thread_local std::uintptr_t const lowMark = FindLowMark();
    char volatile here = 0; // a variable of this very call
    return reinterpret_cast<std::uintptr_t>(&here) < lowMark;
}

} // namespace Zan::Orv::Core::Service::Platform
