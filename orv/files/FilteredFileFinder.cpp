#include "orv/files/FilteredFileFinder.h"

#include "orv/files/CombinedFilters.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

namespace Zan::Orv::Core::Service {

namespace {

constexpr std::size_t noLimit = SIZE_MAX;

} // namespace

IFileFinder::~IFileFinder() = default;

IFilteredFileFinder::~IFilteredFileFinder() = default;

FilteredFileFinder::FilteredFileFinder(std::string const& name, IFileCatalog const& catalog)
    : FilteredFileFinder(name, catalog, BasicFilter<1>::Instance())
{}

FilteredFileFinder::FilteredFileFinder(std::string const& name, IFileCatalog const& catalog,
                                       std::shared_ptr<PathFilter const> const& rootFilter)
    : FileCatalogBase(catalog.GetRoot()), name_(name), rootFilter_(rootFilter)
{
    isValid_ = BuildCache(catalog, *rootFilter_, entries_);
}

FilteredFileFinder::FilteredFileFinder(FilteredFileFinder const&) = default;

FilteredFileFinder& FilteredFileFinder::operator=(FilteredFileFinder const&) = default;

FilteredFileFinder::~FilteredFileFinder() = default;

std::string const FilteredFileFinder::GetName() const
{
    return name_;
}

std::string FilteredFileFinder::GetFileInFilterPriority(
    std::vector<std::shared_ptr<PathFilter const>> const& filters) const
{
    std::vector<std::string> files;
    return ApplyFiltersToCache(filters, files, 1) ? std::move(files.back()) : std::string();
}

std::vector<std::string> FilteredFileFinder::GetFilesInFilterPriority(
    std::vector<std::shared_ptr<PathFilter const>> const& filters) const
{
    std::vector<std::string> files;
    ApplyFiltersToCache(filters, files, noLimit);
    return files;
}

std::vector<std::string> FilteredFileFinder::GetFiles(std::shared_ptr<PathFilter const> const& filter) const
{
    std::vector<std::string> files;
    ApplyFilterToCache(*filter, files, noLimit);
    return files;
}

std::vector<std::string> FilteredFileFinder::GetAllSingleFilesInFilterPriority(
    std::vector<std::shared_ptr<PathFilter const>> const& filters) const
{
    std::vector<std::string> files;
    ApplyFiltersToCacheAllFiles(filters, files, noLimit);
    return files;
}

std::vector<std::vector<std::string>> FilteredFileFinder::GetAllFilesInFilterPriority(
    std::vector<std::shared_ptr<PathFilter const>> const& filters) const
{
    std::vector<std::vector<std::string>> result;
    for (auto const& filter : filters)
    {
        std::vector<std::string> files;
        if (ApplyFilterToCache(*filter, files, noLimit))
            result.push_back(std::move(files));
    }
    return result;
}

std::string FilteredFileFinder::GetFile(std::shared_ptr<PathFilter const> const& filter) const
{
    std::vector<std::string> files;
    return ApplyFilterToCache(*filter, files, 1) ? std::move(files.back()) : std::string();
}

std::shared_ptr<PathFilter const> FilteredFileFinder::GetRootFilter() const
{
    return rootFilter_;
}

bool FilteredFileFinder::BuildCache(IFileCatalog const& catalog, PathFilter const& filter,
                                    std::vector<PathCacheEntry>& entries)
{
    std::vector<PathCacheEntry> const& all = catalog.GetEntries();
    std::copy_if(all.begin(), all.end(), std::back_inserter(entries),
                 [&](PathCacheEntry const& entry) { return filter(entry); });
    return true;
}

bool FilteredFileFinder::ProcessPath(PathCacheEntry const& entry, PathFilter const& filter,
                                     std::vector<std::string>& files) const
{
    if (!filter(entry))
        return false;
    files.push_back(GetFullPath(entry.GetFullFilename()));
    return true;
}

bool FilteredFileFinder::ApplyFilterToCache(PathFilter const& filter, std::vector<std::string>& files,
                                            std::size_t maxCount) const
{
    if (files.size() == maxCount)
        return false;
    bool matched = false;
    for (PathCacheEntry const& entry : entries_)
    {
        matched |= ProcessPath(entry, filter, files);
        if (files.size() == maxCount)
            break;
    }
    return matched;
}

bool FilteredFileFinder::ApplyFiltersToCache(std::vector<std::shared_ptr<PathFilter const>> const& filters,
                                             std::vector<std::string>& files, std::size_t maxCount) const
{
    return std::any_of(filters.begin(), filters.end(),
                       [&](auto const& filter) { return ApplyFilterToCache(*filter, files, maxCount); });
}

bool FilteredFileFinder::ApplyFiltersToCacheAllFiles(
    std::vector<std::shared_ptr<PathFilter const>> const& filters, std::vector<std::string>& files,
    std::size_t maxCount) const
{
    bool matched = false;
    for (auto const& filter : filters)
        matched |= ApplyFilterToCache(*filter, files, maxCount);
    return matched;
}

} // namespace Zan::Orv::Core::Service
