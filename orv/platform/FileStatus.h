#pragma once

#include <ctime>
#include <optional>
#include <string>

namespace Zan::Orv::Core::Service::Platform {

/// The size in bytes of what `path` names, or -1 when the host cannot tell it.
long long FileSize(std::string const& path);

/// When it was last changed, in seconds since 1970, or nothing when the host cannot tell it.
std::optional<long long> ModificationTime(std::string const& path);

/// The moment in UTC. False when the host cannot break it down.
bool CalendarTime(long long seconds, std::tm& result);

} // namespace Zan::Orv::Core::Service::Platform
