#pragma once

#include <ctime>

namespace Zan::Orv::Core::Service::Platform {

/// The local wall-clock time, in whole seconds. False when the host cannot tell it.
bool LocalTime(std::tm& result);

} // namespace Zan::Orv::Core::Service::Platform
