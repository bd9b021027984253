#include "orv/platform/FileStatus.h"

#include <sys/stat.h>
#include <time.h>

namespace Zan::Orv::Core::Service::Platform {

long long FileSize(std::string const& path)
{
    struct _stat64 status;
    return ::_stat64(path.c_str(), &status) == 0 ? static_cast<long long>(status.st_size) : -1;
}

std::optional<long long> ModificationTime(std::string const& path)
{
    struct _stat64i32 status;
    if (::_stat64i32(path.c_str(), &status) != 0)
        return std::nullopt;
    return static_cast<long long>(status.st_mtime);
}

bool CalendarTime(long long seconds, std::tm& result)
{
    __time64_t const time = seconds;
    return ::_gmtime64_s(&result, &time) == 0;
}

} // namespace Zan::Orv::Core::Service::Platform
