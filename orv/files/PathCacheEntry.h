#pragma once

#include "orv/Export.h"

#include <string>

namespace Zan::Orv::Core::Service {

/// The name of one file, taken apart and folded once, so that a `PathFilter` only compares strings. It is
/// text: nothing on the disk is looked at, and the directory is not kept. Entries are matched and not compared: there is
/// neither equality nor a hash.
///
///     PathCacheEntry const entry("/data/Run1.X0004");
///     entry.GetLowercaseExtension();    // .x0004
///     entry.GetLowercaseFilenameOnly(); // run1
///     entry.GetFullFilename();          // Run1.X0004
///
/// What the leaf and the extension of a path are is said by Boost.Filesystem in its version 3: the extension
/// runs from the last dot to the end, also where the name starts with that dot, and a path that ends in a
/// separator has the leaf ".". Case folds byte by byte, as `StringToLower` does it.
/// A plain value.
class ORV_API PathCacheEntry
{
public:
    /// `path` is a name, with or without directories.
    /// \throws boost::system::system_error on Windows, when the bytes mean nothing in the code page of file names.
    PathCacheEntry(std::string const& path);

    /// With its dot. Empty when the name has none, and for the names "." and "..".
    std::string const& GetLowercaseExtension() const { return lowercaseExtension_; }
    /// The name without its extension.
    std::string const& GetLowercaseFilenameOnly() const { return lowercaseFilenameOnly_; }
    /// The name with its extension, and its case kept.
    std::string const& GetFullFilename() const { return fullFilename_; }

private:
    std::string lowercaseExtension_;
    std::string lowercaseFilenameOnly_;
    std::string fullFilename_;
};

} // namespace Zan::Orv::Core::Service
