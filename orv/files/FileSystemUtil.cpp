#include "orv/files/FileSystemUtil.h"

#include "orv/files/internal/TreeCopy.h"

#include <boost/filesystem/directory.hpp>
#include <boost/filesystem/exception.hpp>
#include <boost/filesystem/operations.hpp>

#include <algorithm>
#include <stdexcept>

namespace Zan::Orv::Core::Service {

namespace fs = boost::filesystem;

namespace {

fs::path Preferred(fs::path path)
{
    return path.make_preferred();
}

fs::path Absolute(fs::path const& path)
{
    return Preferred(fs::absolute(path, fs::current_path()));
}

// Calls `attempt` until it succeeds, but not more than five times. Scanners and indexers hold files for
// moments.
template<class Attempt>
void Insist(Attempt attempt)
{
    constexpr int attempts = 5;
    for (int failures = 0;;)
    {
        try
        {
            attempt();
            return;
        }
        catch (fs::filesystem_error const&)
        {
            if (++failures == attempts)
                throw;
        }
    }
}

void RequireDirectory(char const* role, fs::path const& path)
{
    if (!fs::is_directory(Preferred(path)))
        throw std::runtime_error(role + (" directory " + path.string()) +
                                 " does not exist or is not a directory.");
}

void CopyTree(fs::path const& source, fs::path const& destination, bool resetReadOnlyFlag,
              Internal::WalkedDirectory const* above)
{
    RequireDirectory("Source", source);
    RequireDirectory("Destination", destination);
    fs::path const from = Preferred(source);
    fs::path const to = Preferred(destination);
    Internal::WalkedDirectory const here{from, above};

    // Read to its end first, so that it does not stay open while those below it are copied.
    std::vector<fs::directory_entry> const entries(fs::directory_iterator{from}, fs::directory_iterator{});
    for (fs::directory_entry const& entry : entries)
    {
        fs::path const target = to / entry.path().filename();
        if (!fs::is_directory(entry.status()))
        {
            Internal::RefuseToCopy(entry, target);
            fs::copy_file(entry.path(), target, fs::copy_options::overwrite_existing);
            if (resetReadOnlyFlag)
                FileSystemUtil::resetReadOnly(target);
        }
        else
        {
            Internal::RefuseToGoRound(entry, here);
            CopyTree(entry.path(), target, resetReadOnlyFlag, &here);
        }
    }
}

} // namespace

FileSystemUtil::FileSystemUtil(fs::path const& dataDir, fs::path const& workDir)
    : dataDir_(Absolute(dataDir)), workDir_(Absolute(workDir))
{}

fs::path FileSystemUtil::getDataDir()
{
    return dataDir_;
}

fs::path FileSystemUtil::getDataDir(std::string const& relative)
{
    return Preferred(dataDir_ / fs::path(relative));
}

fs::path FileSystemUtil::getWorkDir()
{
    return workDir_;
}

fs::path FileSystemUtil::getWorkDir(std::string const& relative)
{
    return Preferred(workDir_ / fs::path(relative));
}

void FileSystemUtil::copyDirectory(fs::path const& source, fs::path const& destination,
                                   bool resetReadOnlyFlag)
{
    CopyTree(source, destination, resetReadOnlyFlag, nullptr);
}

void FileSystemUtil::createDirs(fs::path const& directory)
{
    fs::path const path = Preferred(directory);
    if (fs::exists(path))
        return;
    Insist([&] { fs::create_directories(path); });
}

void FileSystemUtil::removeDirs(fs::path const& directory, bool resetReadOnlyFlag)
{
    fs::path path = Preferred(directory);
    // With a separator or a dot behind it, the name of a link is that of what it leads to.
    while (path.filename() == "." && path.has_parent_path())
        path = path.parent_path();
    if (!fs::exists(path))
        return;
    Insist([&] {
        if (resetReadOnlyFlag && !fs::is_symlink(fs::symlink_status(path)))
            resetReadOnly(path);
        fs::remove_all(path);
    });
}

void FileSystemUtil::resetReadOnly(fs::path const& target)
{
    // A list of what is still to come, so that no directory stays open while those below it are read.
    std::vector<fs::path> pending{target};
    while (!pending.empty())
    {
        fs::path const path = std::move(pending.back());
        pending.pop_back();

        fs::file_status const status = fs::status(path);
        if (!fs::exists(status))
            continue;
        fs::permissions(path, status.permissions() | fs::all_all);
        // A directory opens up by what was just done, so its entries come after it.
        if (!fs::is_directory(status))
            continue;
        for (fs::directory_entry const& entry : fs::directory_iterator(path))
            if (!fs::is_symlink(entry.symlink_status()))
                pending.push_back(entry.path());
    }
}

bool FileSystemUtil::filenameEquals(fs::path const& path, std::string const& name)
{
    return path.filename().compare(fs::path(name)) == 0;
}

bool FileSystemUtil::containsFilename(std::vector<std::string> const& paths, std::string const& name)
{
    return std::any_of(paths.begin(), paths.end(),
                       [&](std::string const& path) { return filenameEquals(path, name); });
}

} // namespace Zan::Orv::Core::Service
