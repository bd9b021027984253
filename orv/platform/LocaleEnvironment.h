#pragma once

namespace Zan::Orv::Core::Service::Platform {

/// Every variable of the environment as "NAME=value", with a null pointer behind the last one. May be null itself. Valid
/// until the environment changes.
char const* const* EnvironmentVariables();

} // namespace Zan::Orv::Core::Service::Platform
