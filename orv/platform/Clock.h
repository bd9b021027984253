#pragma once

namespace Zan::Orv::Core::Service::Platform {

/// Milliseconds of wall time since the process began. On Windows it is the C runtime that counts, and it
/// ends after 24 days.
long long WallMilliseconds();

} // namespace Zan::Orv::Core::Service::Platform
