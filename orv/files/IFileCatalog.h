#pragma once

#include "orv/Export.h"

#include <string>
#include <vector>

namespace Zan::Orv::Core::Service {

class PathCacheEntry;

/// The files of one directory as a list in memory. A `FilteredFileFinder` is made of one, and is one. The library's
/// own do not change once they are made, so that any number of threads may read one.
class ORV_API IFileCatalog
{
public:
    IFileCatalog() = default;
    IFileCatalog(IFileCatalog const&) = default;
    IFileCatalog& operator=(IFileCatalog const&) = default;
    virtual ~IFileCatalog();

    /// The directory that the files stand in.
    virtual std::string const GetRoot() const = 0;
    /// Valid as long as the catalog.
    virtual std::vector<PathCacheEntry> const& GetEntries() const = 0;
};

} // namespace Zan::Orv::Core::Service
