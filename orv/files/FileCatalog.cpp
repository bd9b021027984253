#include "orv/files/FileCatalog.h"

#include "orv/files/Directory.h"
#include "orv/platform/DirectoryFiles.h"

namespace Zan::Orv::Core::Service {

IFileCatalog::~IFileCatalog() = default;

FileCatalogBase::FileCatalogBase() = default;

FileCatalogBase::FileCatalogBase(std::string const& root)
    : root_(Directory(root).Name()), rootWithSeparator_(root_ + Directory::NativeSeparator())
{}

FileCatalogBase::~FileCatalogBase() = default;

std::string const FileCatalogBase::GetRoot() const
{
    return root_;
}

std::vector<PathCacheEntry> const& FileCatalogBase::GetEntries() const
{
    return entries_;
}

std::string FileCatalogBase::GetFullPath(std::string const& name) const
{
    return rootWithSeparator_ + name;
}

FileCatalog::FileCatalog(std::string const& root) : FileCatalogBase(root)
{
    isValid_ = ScanPath(root, entries_);
}

// What is scanned is the text that the caller gave. The normal form may name another directory: behind a
// link, ".." is not the parent that the text tells, and a '\' may be part of a name.
bool FileCatalog::ScanPath(std::string const& root, std::vector<PathCacheEntry>& entries) const
{
    std::vector<PathCacheEntry> found;
    if (!Platform::VisitFiles(root, [&](std::string const& path) { found.emplace_back(path); }))
        return false;
    entries.swap(found);
    return true;
}

} // namespace Zan::Orv::Core::Service
