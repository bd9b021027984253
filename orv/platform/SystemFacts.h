#pragma once

#include <cstdint>
#include <string>

namespace Zan::Orv::Core::Service::Platform {

/// What the host says of itself. What it does not say stays zero or empty.
struct OperatingSystem
{
    std::string name; ///< "Windows", or what the host calls itself
    std::uint32_t majorVersion = 0;
    std::uint32_t minorVersion = 0;
    std::uint32_t buildNumber = 0; ///< elsewhere than on Windows the third number of the release
    std::uint32_t platformId = 0;  ///< of the Windows API: 1 for the line that ended with Me, 2 for the other
    std::string servicePack;
};

OperatingSystem DescribeOperatingSystem();

/// The computer's name, and that of the user whom the process runs as. Empty when the host cannot tell.
std::string ComputerName();
std::string UserName();

int ProcessId();

} // namespace Zan::Orv::Core::Service::Platform
