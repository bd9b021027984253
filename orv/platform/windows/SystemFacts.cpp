#include "orv/platform/SystemFacts.h"

#include "orv/platform/windows/WindowsHeaders.h"

#include <array>
#include <cstring>

namespace Zan::Orv::Core::Service::Platform {

OperatingSystem DescribeOperatingSystem()
{
    OperatingSystem system;
    system.name = "Windows";
    OSVERSIONINFOA record = {};
    static_assert(sizeof record == 148);
    record.dwOSVersionInfoSize = sizeof record;
    if (::GetVersionExA(&record) == 0)
        return system;
    system.majorVersion = record.dwMajorVersion;
    system.minorVersion = record.dwMinorVersion;
    system.buildNumber = record.dwBuildNumber;
    system.platformId = record.dwPlatformId;
    system.servicePack.assign(record.szCSDVersion,
                              ::strnlen(record.szCSDVersion, sizeof record.szCSDVersion));
    return system;
}

std::string ComputerName()
{
    std::array<char, MAX_COMPUTERNAME_LENGTH + 1> name = {};
    auto size = static_cast<DWORD>(name.size());
    return ::GetComputerNameA(name.data(), &size) != 0 ? name.data() : "";
}

std::string UserName()
{
    std::array<char, 1024> name = {};
    auto size = static_cast<DWORD>(name.size());
    return ::GetUserNameA(name.data(), &size) != 0 ? name.data() : "";
}

int ProcessId()
{
    return static_cast<int>(::GetCurrentProcessId());
}

} // namespace Zan::Orv::Core::Service::Platform
