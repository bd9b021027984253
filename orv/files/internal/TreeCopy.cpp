#include "orv/files/internal/TreeCopy.h"

#include <boost/filesystem/exception.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/system/errc.hpp>

namespace Zan::Orv::Core::Service::Internal {

namespace fs = boost::filesystem;
using namespace boost::system::errc;

void RefuseToGoRound(fs::directory_entry const& entry, WalkedDirectory const& innermost)
{
    if (!fs::is_symlink(entry.symlink_status()))
        return;
    for (WalkedDirectory const* on = &innermost; on != nullptr; on = on->above)
        if (fs::equivalent(entry.path(), on->path))
            throw fs::filesystem_error("A link leads back to a directory on the way to it", entry.path(),
                                       on->path, make_error_code(too_many_symbolic_link_levels));
}

void RefuseToCopy(fs::directory_entry const& entry, fs::path const& target)
{
    boost::system::error_code ignored; // of a target that is not there
    if (fs::equivalent(entry.path(), target, ignored))
        throw fs::filesystem_error("A file can not replace itself", entry.path(), target,
                                   make_error_code(file_exists));
    if (entry.status().type() == fs::fifo_file)
        throw fs::filesystem_error("A pipe can not be copied", entry.path(), target,
                                   make_error_code(not_supported));
}

} // namespace Zan::Orv::Core::Service::Internal
