#include "orv/serialization/internal/StackLimit.h"

#include "orv/platform/ThreadStack.h"

#include <algorithm>

namespace Zan::Orv::Core::Service::Internal {

bool StackIsLow(std::uintptr_t outermost)
{
    constexpr std::uintptr_t KiB = 1024;

    Platform::ThreadStack const own = Platform::FindThreadStack();
    std::uintptr_t const here = Platform::StackPosition();
    if (here >= own.bottom && here < own.top)
        return here - own.bottom < std::clamp((own.top - own.bottom) / 8, 8 * KiB, 128 * KiB);
    bool const isKnown = own.top != 0;
    return isKnown && outermost - here > 32 * KiB; // also when this is not the stack on which it began
}

} // namespace Zan::Orv::Core::Service::Internal
