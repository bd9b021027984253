#include "orv/platform/DirectoryFiles.h"

#include <cerrno>
#include <dirent.h>
#include <memory>
#include <optional>
#include <string_view>
#include <sys/stat.h>

namespace Zan::Orv::Core::Service::Platform {

namespace {

struct CloseDirectory
{
    void operator()(DIR* directory) const { ::closedir(directory); }
};

// Nothing when the host cannot tell. It is asked only where the directory itself does not say.
std::optional<bool> LeadsToDirectory(DIR* directory, dirent const& entry)
{
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat status;
    if (::fstatat(::dirfd(directory), entry.d_name, &status, 0) == 0)
        return S_ISDIR(status.st_mode);
    if (errno == ENOENT || errno == ENOTDIR)
        return false;
    return std::nullopt;
}

} // namespace

bool VisitFiles(std::string const& directory, std::function<void(std::string const& path)> const& visit)
{
    if (directory.empty())
        return false;
    std::string path = directory;
    if (path.back() != '/')
        path += '/';
    // Its "." is opened only for those who may also ask about its entries; the directory itself is for more.
    std::unique_ptr<DIR, CloseDirectory> const opened(::opendir((path + '.').c_str()));
    if (!opened)
        return false;

    std::size_t const prefix = path.size();
    for (;;)
    {
        errno = 0;
        dirent const* const entry = ::readdir(opened.get());
        if (entry == nullptr)
            return errno == 0;
        std::string_view const name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        std::optional<bool> const isDirectory = LeadsToDirectory(opened.get(), *entry);
        if (!isDirectory)
            return false;
        if (!*isDirectory)
        {
            path.replace(prefix, path.npos, name);
            visit(path);
        }
    }
}

} // namespace Zan::Orv::Core::Service::Platform
