#pragma once

#include "orv/Export.h"
#include "orv/files/IFileCatalog.h"

#include <memory>
#include <string>
#include <vector>

namespace Zan::Orv::Core::Service {

class PathFilter;

/// A catalog that answers which of its files a filter accepts. Results are full paths: the root, a separator,
/// and the name in the case that it has on the disk. Several results stand in the order of the catalog, and
/// where one is asked for, the first in that order is taken without comment. No result is an empty text or an
/// empty vector. The library's own may be asked by any number of threads.
///
/// Where several filters are given, the earlier ones come first: "the file of this name, or else those with
/// that extension". No pointer may be null.
class ORV_API IFileFinder : public virtual IFileCatalog
{
public:
    IFileFinder() = default;
    IFileFinder(IFileFinder const&) = default;
    IFileFinder(IFileFinder&&) = default;
    IFileFinder& operator=(IFileFinder const&) = default;
    IFileFinder& operator=(IFileFinder&&) = default;
    ~IFileFinder() override;

    /// What its maker called it.
    virtual std::string const GetName() const = 0;

    /// The first match of the first filter that has one.
    virtual std::string
    GetFileInFilterPriority(std::vector<std::shared_ptr<PathFilter const>> const& filters) const = 0;
    /// All matches of the first filter that has one.
    virtual std::vector<std::string>
    GetFilesInFilterPriority(std::vector<std::shared_ptr<PathFilter const>> const& filters) const = 0;
    /// All matches of the filter.
    virtual std::vector<std::string> GetFiles(std::shared_ptr<PathFilter const> const& filter) const = 0;
    /// The matches of each filter, one after the other. A file stands there as often as it is accepted.
    virtual std::vector<std::string> GetAllSingleFilesInFilterPriority(
        std::vector<std::shared_ptr<PathFilter const>> const& filters) const = 0;
    /// The same, with a vector for each filter that has a match. A filter without one has no vector, so that
    /// the positions are not those of the filters.
    virtual std::vector<std::vector<std::string>>
    GetAllFilesInFilterPriority(std::vector<std::shared_ptr<PathFilter const>> const& filters) const = 0;
    /// The first match of the filter.
    virtual std::string GetFile(std::shared_ptr<PathFilter const> const& filter) const = 0;
};

/// A finder that sees only what one filter accepts.
class ORV_API IFilteredFileFinder : public virtual IFileFinder
{
public:
    IFilteredFileFinder() = default;
    IFilteredFileFinder(IFilteredFileFinder const&) = default;
    IFilteredFileFinder(IFilteredFileFinder&&) = default;
    IFilteredFileFinder& operator=(IFilteredFileFinder const&) = default;
    IFilteredFileFinder& operator=(IFilteredFileFinder&&) = default;
    ~IFilteredFileFinder() override;

    /// What accepts the files that are seen.
    virtual std::shared_ptr<PathFilter const> GetRootFilter() const = 0;
};

} // namespace Zan::Orv::Core::Service
