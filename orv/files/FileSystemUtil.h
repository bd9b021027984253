#pragma once

#include "orv/Export.h"

#include <boost/filesystem/path.hpp>

#include <string>
#include <vector>

/// \file
/// Whole directory trees, for programs that keep their paths in Boost.Filesystem's own type. `Directory` and
/// `FileName` are the library's types for the same; this class knows neither.
///
///     FileSystemUtil places("data", "work");
///     FileSystemUtil::createDirs(places.getWorkDir("run1"));
///     boost::filesystem::path const deck = places.getDataDir("model/main.dat");
///     FileSystemUtil::removeDirs(places.getWorkDir("run1"), true);

namespace Zan::Orv::Core::Service {

/// A data directory and a work directory, against which relative names are resolved, and static functions for
/// trees. A value; the static functions may run on any thread, as far as the disk allows.
///
/// Errors of the disk are `boost::filesystem::filesystem_error`, and what was done before one stays done.
class ORV_API FileSystemUtil
{
public:
    /// Relative paths are completed with the process's current directory of this moment. Nothing needs to
    /// exist, and nothing is created.
    FileSystemUtil(boost::filesystem::path const& dataDir, boost::filesystem::path const& workDir);

    /// \{
    /// Absolute, in the host's separators. `relative` is appended as it stands, ".." included.
    boost::filesystem::path getDataDir();
    boost::filesystem::path getDataDir(std::string const& relative);
    boost::filesystem::path getWorkDir();
    boost::filesystem::path getWorkDir(std::string const& relative);
    /// \}

    /// Copies what stands in `source` into `destination` at every depth, over files of the same name. No
    /// directory is created: each one below `source` needs its counterpart below `destination`, and the first
    /// one without it ends the copy. With `resetReadOnlyFlag`, `resetReadOnly` follows on each copy.
    ///
    /// Links are followed. One that leads back to a directory on its own way, a file that would be copied
    /// onto itself, and a pipe, are errors.
    /// \throws std::runtime_error for a source or a destination that is no directory, with its name.
    static void copyDirectory(boost::filesystem::path const& source,
                              boost::filesystem::path const& destination, bool resetReadOnlyFlag);

    /// Creates `directory` with all that is missing above it, in five attempts, as other programs may be busy
    /// there. Whatever exists already is left alone, be it a directory or not.
    static void createDirs(boost::filesystem::path const& directory);

    /// Removes the tree, or the file, in five attempts; with `resetReadOnlyFlag`, `resetReadOnly` begins
    /// each. What does not exist is no error, and that holds for a link to nothing, which stays. Of a link,
    /// at any place, the link goes, and what it leads to is neither removed nor changed.
    static void removeDirs(boost::filesystem::path const& directory, bool resetReadOnlyFlag);

    /// Allows everything to everybody (0777; on Windows, clears the read-only attribute) on `target` and on
    /// all that stands below it. What does not exist is no error. `target` itself may be a link and is
    /// followed; links below it are left alone, with what they lead to, since they may leave the tree.
    static void resetReadOnly(boost::filesystem::path const& target);

    /// True when the last element of `path` is `name`, in the same case. `name` is taken whole: one with a
    /// directory equals none.
    static bool filenameEquals(boost::filesystem::path const& path, std::string const& name);
    /// True when `filenameEquals` is, for one of `paths`.
    static bool containsFilename(std::vector<std::string> const& paths, std::string const& name);

private:
    boost::filesystem::path dataDir_;
    boost::filesystem::path workDir_;
};

} // namespace Zan::Orv::Core::Service
