#include "orv/foundation/Environment.h"

#include "orv/platform/Environment.h"

namespace Zan::Orv::Core::Service {

std::string GetEnvVariable(std::string const& name)
{
    return Platform::EnvironmentVariable(name);
}

void SetEnvVariable(std::string const& name, std::string const& value)
{
    Platform::ChangeEnvironment(name + '=' + value);
}

} // namespace Zan::Orv::Core::Service
