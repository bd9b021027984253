#include "orv/platform/Environment.h"

#include <cstring>
#include <stdlib.h>

namespace Zan::Orv::Core::Service::Platform {

std::string EnvironmentVariable(std::string const& name)
{
    char const* const value = ::getenv(name.c_str());
    return value != nullptr ? value : "";
}

void ChangeEnvironment(std::string const& assignment)
{
    char const* const text = assignment.c_str();
    char const* const sign = std::strchr(text, '=');
    if (sign == nullptr)
        return;
    std::string const name(text, sign);
    // putenv would keep our text and would not remove; setenv keeps a copy of its own.
    if (sign[1] == '\0')
        ::unsetenv(name.c_str());
    else
        ::setenv(name.c_str(), sign + 1, 1);
}

} // namespace Zan::Orv::Core::Service::Platform
