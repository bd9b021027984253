#include "orv/platform/ThreadStack.h"

#include <cstddef>
#include <pthread.h>

namespace Zan::Orv::Core::Service::Platform {

namespace {

ThreadStack AskForThreadStack()
{
    pthread_attr_t attributes;
    if (::pthread_getattr_np(::pthread_self(), &attributes) != 0)
        return {};
    void* bottom = nullptr;
    std::size_t size = 0;
    int const failed = ::pthread_attr_getstack(&attributes, &bottom, &size);
    ::pthread_attr_destroy(&attributes);
    if (failed != 0)
        return {};
    auto const address = reinterpret_cast<std::uintptr_t>(bottom);
    return {address, address + size};
}

} // namespace

ThreadStack FindThreadStack()
{
    thread_local ThreadStack const stack = AskForThreadStack(); // which reads a file on the first thread
    return stack;
}

std::uintptr_t StackPosition()
{
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
}

} // namespace Zan::Orv::Core::Service::Platform
