#include "orv/platform/FileStatus.h"

#include <sys/stat.h>
#include <time.h>

namespace Zan::Orv::Core::Service::Platform {

long long FileSize(std::string const& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 ? static_cast<long long>(status.st_size) : -1;
}

std::optional<long long> ModificationTime(std::string const& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return static_cast<long long>(status.st_mtime);
}

bool CalendarTime(long long seconds, std::tm& result)
{
    auto const time = static_cast<std::time_t>(seconds);
    return ::gmtime_r(&time, &result) != nullptr;
}

} // namespace Zan::Orv::Core::Service::Platform
