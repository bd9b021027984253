#pragma once

#include <string>

namespace Zan::Orv::Core::Service::Platform {

/// The value of an environment variable of this process. Empty when there is none, or when the host fails.
std::string EnvironmentVariable(std::string const& name);

/// Changes the environment by a text "name=value", of which the first '=' divides and a zero byte is the end.
/// An empty value removes the variable. What the host refuses, such as a text without a name, changes nothing.
void ChangeEnvironment(std::string const& assignment);

} // namespace Zan::Orv::Core::Service::Platform
