#pragma once

#include "orv/Export.h"

#include <string>

/// \file
/// The environment of this process. As safe between threads as the host's own calls, which is: read by many,
/// or changed by one.

namespace Zan::Orv::Core::Service {

/// The value of the variable `name`. Empty for a variable that is not set, that is set to nothing, or that
/// the host cannot tell.
ORV_API std::string GetEnvVariable(std::string const& name);

/// Sets the variable `name` for this process and the processes that it starts; an empty `value` removes it.
/// What the host refuses is silently left undone.
ORV_API void SetEnvVariable(std::string const& name, std::string const& value);

} // namespace Zan::Orv::Core::Service
