#include "orv/foundation/SystemInfo.h"

#include "orv/foundation/internal/OperatingSystemText.h"
#include "orv/platform/SystemFacts.h"

namespace Zan::Orv::Core::Service {

std::string const& GetHostname()
{
    static std::string const name = Platform::ComputerName();
    return name;
}

std::string const& GetUsername()
{
    static std::string const name = Platform::UserName();
    return name;
}

std::string const& GetOperatingSystem()
{
    static std::string const text = Internal::OperatingSystemText(Platform::DescribeOperatingSystem());
    return text;
}

} // namespace Zan::Orv::Core::Service
