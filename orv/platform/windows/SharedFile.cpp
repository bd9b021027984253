#include "orv/platform/SharedFile.h"

#include <share.h>
#include <stdio.h>

namespace Zan::Orv::Core::Service::Platform {

std::FILE* OpenSharedFile(char const* name)
{
    std::FILE* const file = ::_fsopen(name, "rb", _SH_DENYNO);
    if (file != nullptr)
        std::setvbuf(file, nullptr, _IONBF, 0);
    return file;
}

bool SeekSharedFile(std::FILE* file, long long position, bool fromEnd)
{
    std::clearerr(file);
    return ::_fseeki64(file, position, fromEnd ? SEEK_END : SEEK_SET) == 0;
}

long long TellSharedFile(std::FILE* file)
{
    return ::_ftelli64(file);
}

} // namespace Zan::Orv::Core::Service::Platform
