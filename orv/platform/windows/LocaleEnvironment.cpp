#include "orv/platform/LocaleEnvironment.h"

#include <stdlib.h>

namespace Zan::Orv::Core::Service::Platform {

char const* const* EnvironmentVariables()
{
    return _environ;
}

} // namespace Zan::Orv::Core::Service::Platform
