#include "orv/platform/SharedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Zan::Orv::Core::Service::Platform {

// On 32-bit hosts, the build has to ask for it.
static_assert(sizeof(off_t) == sizeof(long long), "define _FILE_OFFSET_BITS=64");

std::FILE* OpenSharedFile(char const* name)
{
    int const descriptor = ::open(name, O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (descriptor < 0)
        return nullptr;
    struct stat status;
    std::FILE* const file =
        ::fstat(descriptor, &status) == 0 && !S_ISDIR(status.st_mode) ? ::fdopen(descriptor, "rb") : nullptr;
    if (file == nullptr)
        ::close(descriptor);
    else
        std::setvbuf(file, nullptr, _IONBF, 0);
    return file;
}

bool SeekSharedFile(std::FILE* file, long long position, bool fromEnd)
{
    std::clearerr(file);
    return ::fseeko(file, position, fromEnd ? SEEK_END : SEEK_SET) == 0;
}

long long TellSharedFile(std::FILE* file)
{
    return ::ftello(file);
}

} // namespace Zan::Orv::Core::Service::Platform
