#pragma once

#include <boost/filesystem.hpp>

#include <fstream>
#include <string>

namespace Zan::Orv::Core::Service::Tests {

/// An empty directory of its own under the system's temporary folder, removed at the end with all that is in
/// it, whatever its permissions. What links lead to stays.
class TemporaryDirectory
{
public:
    using Path = boost::filesystem::path;

    explicit TemporaryDirectory(Path const& under = boost::filesystem::temp_directory_path())
        : path_(boost::filesystem::canonical(under) /
                boost::filesystem::unique_path("orv-%%%%-%%%%-%%%%-%%%%"))
    {
        path_.make_preferred();
        boost::filesystem::create_directory(path_);
    }
    TemporaryDirectory(TemporaryDirectory const&) = delete;
    TemporaryDirectory& operator=(TemporaryDirectory const&) = delete;
    ~TemporaryDirectory()
    {
        boost::system::error_code ignored;
        MakeWritable(path_);
        boost::filesystem::remove_all(path_, ignored);
    }

    std::string Name() const { return path_.string(); }
    /// The path of an entry.
    std::string operator/(std::string const& name) const { return (path_ / name).make_preferred().string(); }

    /// Makes a directory and those above it; its path.
    std::string Make(std::string const& name) const
    {
        boost::filesystem::create_directories(path_ / name);
        return *this / name;
    }
    /// Writes a file and makes its directory; its path.
    std::string Write(std::string const& name, std::string const& content = "content") const
    {
        boost::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(*this / name, std::ios::binary) << content;
        return *this / name;
    }

private:
    static void MakeWritable(Path const& path)
    {
        namespace fs = boost::filesystem;
        boost::system::error_code ignored;
        fs::file_status const status = fs::symlink_status(path, ignored);
        if (fs::is_symlink(status))
            return;
        fs::permissions(path, fs::add_perms | fs::owner_all, ignored);
        if (!fs::is_directory(status))
            return;
        for (fs::directory_iterator entry(path, ignored), end; entry != end; entry.increment(ignored))
            MakeWritable(entry->path());
    }

    Path path_;
};

} // namespace Zan::Orv::Core::Service::Tests
