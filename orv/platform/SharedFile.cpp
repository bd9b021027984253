#include "orv/platform/SharedFile.h"

// What the C library does alike on every host.

namespace Zan::Orv::Core::Service::Platform {

void CloseSharedFile(std::FILE* file)
{
    std::fclose(file);
}

bool ReadSharedFile(std::FILE* file, char* to, std::size_t count)
{
    return std::fread(to, 1, count, file) == count && std::ferror(file) == 0;
}

} // namespace Zan::Orv::Core::Service::Platform
