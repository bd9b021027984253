#include "orv/platform/StackLimit.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <pthread.h>

namespace Zan::Orv::Core::Service::Platform {

namespace {

// The address under which the stack counts as low, or 0 when the host does not tell: no limit is seen then.
std::uintptr_t FindLowMark()
{
    pthread_attr_t attributes;
    if (::pthread_getattr_np(::pthread_self(), &attributes) != 0)
        return 0;
    void* bottom = nullptr;
    std::size_t size = 0;
    int const failed = ::pthread_attr_getstack(&attributes, &bottom, &size);
    ::pthread_attr_destroy(&attributes);
    if (failed != 0)
        return 0;
    std::size_t const reserve = std::min<std::size_t>(std::size_t{128} << 10, size / 8);
    return reinterpret_cast<std::uintptr_t>(bottom) + reserve;
}

} // namespace

bool StackIsLow()
{
    thread_local std::uintptr_t const lowMark = FindLowMark();
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) < lowMark;
}

} // namespace Zan::Orv::Core::Service::Platform
