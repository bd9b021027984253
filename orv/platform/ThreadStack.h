#pragma once

#include <cstdint>

namespace Zan::Orv::Core::Service::Platform {

/// The addresses of a stack, which grows from `top` down to `bottom`.
struct ThreadStack
{
    std::uintptr_t bottom = 0;
    std::uintptr_t top = 0;
};

/// The stack that the host gave to the calling thread; on Windows, where the host knows fibers, to the calling fiber.
/// Empty where it does not tell. Costs next to nothing, but for a thread's first call.
ThreadStack FindThreadStack();

/// Where the caller is on its stack, about.
std::uintptr_t StackPosition();

} // namespace Zan::Orv::Core::Service::Platform
