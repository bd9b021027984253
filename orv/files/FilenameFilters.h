#pragma once

#include "orv/Export.h"
#include "orv/files/PathFilter.h"

#include <memory>
#include <string>

/// \file
/// The filters that ask for the name itself, without regard to case.

namespace Zan::Orv::Core::Service {

/// True for one name before the extension, whatever the extension is: "Run1" for "run1", "RUN1.x0001" and
/// "Run1.dat".
class ORV_API FilenameExactNoCaseFilter : public PathFilter
{
public:
    /// `filename` is compared as it is: neither a directory nor an extension is taken off it.
    static std::shared_ptr<PathFilter const> Create(std::string const& filename);

    bool operator()(PathCacheEntry const& entry) const override;

    /// In lower case.
    std::string GetFilename() const { return filename_; }

private:
    explicit FilenameExactNoCaseFilter(std::string const& filename);

    std::string filename_;
};

/// True for one whole name, that at the end of a path: "/data/Run1.DAT" for "run1.dat", wherever it is.
class ORV_API FilenameExtensionNoCaseFilter : public PathFilter
{
public:
    /// A path without an extension asks for names without one.
    /// \throws what making a `PathCacheEntry` of the path does.
    static std::shared_ptr<PathFilter const> Create(std::string const& filepath);

    bool operator()(PathCacheEntry const& entry) const override;

    /// As it was given.
    std::string GetFilepath() const { return filepath_; }

private:
    explicit FilenameExtensionNoCaseFilter(std::string const& filepath);

    std::string filepath_;
    std::shared_ptr<PathFilter const> filenameFilter_;
    std::shared_ptr<PathFilter const> extensionFilter_;
};

} // namespace Zan::Orv::Core::Service
