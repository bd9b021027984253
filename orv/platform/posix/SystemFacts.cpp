#include "orv/platform/SystemFacts.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>
#include <vector>

namespace Zan::Orv::Core::Service::Platform {

namespace {

// Reads a number at the front of `text` and the point behind it. Leaves `number` alone where there is none.
char const* ReadPart(char const* text, std::uint32_t& number)
{
    char const* const end = std::from_chars(text, text + std::strlen(text), number).ptr;
    return *end == '.' ? end + 1 : end;
}

} // namespace

OperatingSystem DescribeOperatingSystem()
{
    OperatingSystem system;
    system.name = "Unix";
    utsname facts = {};
    if (::uname(&facts) < 0)
        return system;
    system.name = facts.sysname;
    char const* release = facts.release; // such as "6.1.0-18-amd64"
    for (std::uint32_t* const number : {&system.majorVersion, &system.minorVersion, &system.buildNumber})
        release = ReadPart(release, *number);
    return system;
}

std::string ComputerName()
{
    std::array<char, 256> name = {}; // POSIX has no longer ones
    if (::gethostname(name.data(), name.size() - 1) != 0)
        return {};
    return name.data();
}

std::string UserName()
{
    std::vector<char> buffer(1024);
    passwd entry = {};
    passwd* found = nullptr;
    int error = 0;
    while ((error = ::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found)) == ERANGE &&
           buffer.size() < (std::size_t{1} << 20))
        buffer.resize(2 * buffer.size());
    return error == 0 && found != nullptr ? found->pw_name : "";
}

int ProcessId()
{
    return static_cast<int>(::getpid());
}

} // namespace Zan::Orv::Core::Service::Platform
