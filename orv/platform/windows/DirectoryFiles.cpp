#include "orv/platform/DirectoryFiles.h"

#include <boost/filesystem.hpp>

namespace Zan::Orv::Core::Service::Platform {

bool VisitFiles(std::string const& directory, std::function<void(std::string const& path)> const& visit)
{
    namespace fs = boost::filesystem;
    try
    {
        for (fs::directory_entry const& entry : fs::directory_iterator(fs::path(directory)))
        {
            if (entry.status().type() != fs::directory_file)
                visit(entry.path().string());
        }
        return true;
    }
    catch (fs::filesystem_error const&)
    {
        return false;
    }
}

} // namespace Zan::Orv::Core::Service::Platform
