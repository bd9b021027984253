#pragma once

#include <cstdint>

namespace Zan::Orv::Core::Service::Internal {

/// True when what calls itself has to stop, so that a graph which is too deep ends in an error. On the thread's own stack
/// this is when little is left: less than an eighth, but no less than throwing takes, and no more than 128 KiB. Of any
/// other stack, as of a coroutine, nobody knows the end: there it is when 32 KiB have been used since `outermost`, the
/// position of the outermost level (`Platform::StackPosition`).
bool StackIsLow(std::uintptr_t outermost);

} // namespace Zan::Orv::Core::Service::Internal
