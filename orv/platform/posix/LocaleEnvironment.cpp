#include "orv/platform/LocaleEnvironment.h"

#include <unistd.h>

namespace Zan::Orv::Core::Service::Platform {

char const* const* EnvironmentVariables()
{
    return environ;
}

} // namespace Zan::Orv::Core::Service::Platform
