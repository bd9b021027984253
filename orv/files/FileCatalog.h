#pragma once

#include "orv/Export.h"
#include "orv/files/IFileCatalog.h"
#include "orv/files/PathCacheEntry.h"

#include <string>
#include <vector>

namespace Zan::Orv::Core::Service {

/// What catalogs have in common: a root, and the list that a derived class fills when it is made.
class ORV_API FileCatalogBase : public virtual IFileCatalog
{
public:
    FileCatalogBase();
    /// `root` takes the normal form of a `Directory`.
    explicit FileCatalogBase(std::string const& root);
    FileCatalogBase(FileCatalogBase const&) = default;
    FileCatalogBase(FileCatalogBase&&) = default;
    FileCatalogBase& operator=(FileCatalogBase const&) = default;
    FileCatalogBase& operator=(FileCatalogBase&&) = default;
    ~FileCatalogBase() override;

    std::string const GetRoot() const override;
    std::vector<PathCacheEntry> const& GetEntries() const override;

protected:
    /// The root, a separator and `name`, as text. The separator also follows a root that ends in one: "/" and
    /// "a" are "//a". Without a root there is none, unless the empty text was given for it.
    std::string GetFullPath(std::string const& name) const;

    /// False when filling the list failed. For derived classes: the library only writes it.
    bool isValid_ = true;
    /// What `GetEntries` shows.
    std::vector<PathCacheEntry> entries_;

private:
    std::string root_;
    std::string rootWithSeparator_;
};

/// The files of a directory, as they were when the catalog was made: later changes on the disk are not seen,
/// and a new look takes a new catalog.
///
///     FileCatalog const catalog("/data/runs");
///     for (PathCacheEntry const& entry : catalog.GetEntries())
///         std::cout << entry.GetFullFilename() << '\n';
///
/// A file is whatever is no directory and no link to one; a link to nothing is a file as well. Directories
/// inside are not entered. The order is the host's, which is none that a user would expect.
///
/// Nothing tells an empty directory from one that cannot be read: the list is empty in both cases, also when
/// reading failed midway or it could not be found out what one of the entries is.
///
/// A catalog does not change, so that any number of threads may read it.
class ORV_API FileCatalog : public FileCatalogBase
{
public:
    /// Without a root; nothing is read.
    FileCatalog() = default;
    /// Reads the directory. Nothing tells that it cannot be read.
    explicit FileCatalog(std::string const& root);

private:
    bool ScanPath(std::string const& root, std::vector<PathCacheEntry>& entries) const;
};

} // namespace Zan::Orv::Core::Service
