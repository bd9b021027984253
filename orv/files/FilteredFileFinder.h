#pragma once

#include "orv/Export.h"
#include "orv/files/FileCatalog.h"
#include "orv/files/IFileFinder.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Zan::Orv::Core::Service {

/// Answers from a copy of a catalog, which it takes through a root filter when it is made. It looks neither
/// at the disk nor at the catalog again: a file that it returns may be gone. As a catalog itself, it can be
/// the source of a narrower finder.
///
///     FilteredFileFinder const finder("runs", FileCatalog("/data/runs"),
///                                     FilenameExactNoCaseFilter::Create("tank"));
///     std::string const file = finder.GetFileInFilterPriority(
///         {ExtensionFilter::Create(".final"), NumberedExtensionFilter::Create('x', 4)});
///
/// A query walks the list once for each filter that it asks, and stops at the first match where one is
/// enough. A catalog that could not be read looks like an empty one.
///
/// A finder does not change, so that any number of threads may ask it.
class ORV_API FilteredFileFinder : public FileCatalogBase, public virtual IFilteredFileFinder
{
public:
    /// Takes every entry of `catalog`. The finder makes no use of its name.
    FilteredFileFinder(std::string const& name, IFileCatalog const& catalog);
    /// Takes the entries that `rootFilter` accepts. It must not be null.
    FilteredFileFinder(std::string const& name, IFileCatalog const& catalog,
                       std::shared_ptr<PathFilter const> const& rootFilter);
    FilteredFileFinder(FilteredFileFinder const&);
    FilteredFileFinder& operator=(FilteredFileFinder const&);
    ~FilteredFileFinder() override;

    std::string const GetName() const override;
    std::string
    GetFileInFilterPriority(std::vector<std::shared_ptr<PathFilter const>> const& filters) const override;
    std::vector<std::string>
    GetFilesInFilterPriority(std::vector<std::shared_ptr<PathFilter const>> const& filters) const override;
    std::vector<std::string> GetFiles(std::shared_ptr<PathFilter const> const& filter) const override;
    std::vector<std::string> GetAllSingleFilesInFilterPriority(
        std::vector<std::shared_ptr<PathFilter const>> const& filters) const override;
    std::vector<std::vector<std::string>>
    GetAllFilesInFilterPriority(std::vector<std::shared_ptr<PathFilter const>> const& filters) const override;
    std::string GetFile(std::shared_ptr<PathFilter const> const& filter) const override;
    std::shared_ptr<PathFilter const> GetRootFilter() const override;

private:
    // What these return is whether anything matched, but for BuildCache, which cannot fail.
    bool BuildCache(IFileCatalog const& catalog, PathFilter const& filter,
                    std::vector<PathCacheEntry>& entries);
    bool ProcessPath(PathCacheEntry const& entry, PathFilter const& filter,
                     std::vector<std::string>& files) const;
    // Appends matches until `files` has `maxCount` elements, and asks nothing when it has them at the start.
    bool ApplyFilterToCache(PathFilter const& filter, std::vector<std::string>& files,
                            std::size_t maxCount) const;
    // The first filter that matches.
    bool ApplyFiltersToCache(std::vector<std::shared_ptr<PathFilter const>> const& filters,
                             std::vector<std::string>& files, std::size_t maxCount) const;
    // Each filter in its turn.
    bool ApplyFiltersToCacheAllFiles(std::vector<std::shared_ptr<PathFilter const>> const& filters,
                                     std::vector<std::string>& files, std::size_t maxCount) const;

    std::string name_;
    std::shared_ptr<PathFilter const> rootFilter_;
};

} // namespace Zan::Orv::Core::Service
