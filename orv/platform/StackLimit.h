#pragma once

namespace Zan::Orv::Core::Service::Platform {

/// True when the calling thread has little of its stack left: less than 128 KiB, or an eighth where the whole
/// stack is smaller than 1 MiB. Costs one comparison, but for a thread's first call.
bool StackIsLow();

} // namespace Zan::Orv::Core::Service::Platform
