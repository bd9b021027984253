#include "orv/platform/ThreadStack.h"

#include "orv/platform/windows/WindowsHeaders.h"

namespace Zan::Orv::Core::Service::Platform {

ThreadStack FindThreadStack()
{
    ULONG_PTR bottom = 0;
    ULONG_PTR top = 0;
    ::GetCurrentThreadStackLimits(&bottom, &top);
    return {bottom, top};
}

std::uintptr_t StackPosition()
{
    char volatile here = 0; // a variable of this very call
    return reinterpret_cast<std::uintptr_t>(&here);
}

} // namespace Zan::Orv::Core::Service::Platform
