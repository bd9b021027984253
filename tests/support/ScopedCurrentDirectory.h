#pragma once

#include <boost/filesystem.hpp>

namespace Zan::Orv::Core::Service::Tests {

/// Makes a directory the process's current one, and puts back what was.
class ScopedCurrentDirectory
{
public:
    explicit ScopedCurrentDirectory(boost::filesystem::path const& path)
        : before_(boost::filesystem::current_path())
    {
        boost::filesystem::current_path(path);
    }
    ScopedCurrentDirectory(ScopedCurrentDirectory const&) = delete;
    ScopedCurrentDirectory& operator=(ScopedCurrentDirectory const&) = delete;
    ~ScopedCurrentDirectory() { boost::filesystem::current_path(before_); }

private:
    boost::filesystem::path before_;
};

} // namespace Zan::Orv::Core::Service::Tests
