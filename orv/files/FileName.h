#pragma once

#include "orv/Export.h"
#include "orv/files/Directory.h"

#include <cstddef>
#include <string>

namespace Zan::Orv::Core::Service {

class Time;

/// The name of a file, as a value in three pieces that are set and read by themselves: the directory, the
/// root name, and the extension, which is what follows the last dot of the leaf. It is no handle: no such
/// file need exist.
///
///     FileName name("/data/north.in.csv");   // directory "/data", root name "north.in", extension "csv"
///     name.SetExtension("out");
///     name.AppendDirectory("results");
///     name.GetFullName();                    // "/data/results/north.in.out"
///
/// Pieces are kept as given: a dot in a root name or an extension that was set divides nothing. A dot at
/// the end of a name is lost, "base." is "base"; ".hidden" is an extension without a root name; for a text
/// that ends in a separator both are empty.
///
/// Names are compared without regard to case, on any host, and hashed so; see `Directory`. What goes wrong on the disk is reported as
/// `boost::filesystem::filesystem_error`, a `std::exception`, where a member does not say otherwise.
///
/// No locks: distinct objects may be used on distinct threads, one object by several as long as nobody
/// changes it.
class ORV_API FileName
{
public:
    /// Not set: three empty pieces.
    FileName() = default;
    /// `Set(name, true)`.
    FileName(std::string const& name);

    /// Splits `name`. Several separators in a row count as one, but for two at the front, which begin a
    /// network path. With `convertBackslashes`, every '\' counts as '/', also where it is an ordinary byte
    /// of a name.
    void Set(std::string const& name, bool convertBackslashes);

    /// `Directory::Set` of the directory, with backslashes converted.
    void SetDirectory(std::string const& directory);
    /// Extends the directory.
    /// \throws DirectoryException as `Directory::Append`.
    void AppendDirectory(std::string const& name);
    /// Sets root name and extension from the name of a file: without a dot in it, there is no extension.
    void SetFileName(std::string const& name);
    /// As it is: a dot in it divides nothing.
    void SetRootName(std::string const& rootName) { rootName_ = rootName; }
    /// Without the dot.
    void SetExtension(std::string const& extension) { extension_ = extension; }

    /// The whole path of the directory.
    std::string GetDirectory() const { return directory_.Name(); }
    /// The name without directory and extension.
    std::string GetRootName() const { return rootName_; }
    /// Without the dot.
    std::string GetExtension() const { return extension_; }
    /// The root name, and behind a dot the extension when there is one.
    std::string GetFileName() const;
    /// The file name in its directory.
    std::string GetFullName() const;

    /// The directory itself, to be asked or changed.
    Directory& Dir() { return directory_; }
    Directory const& Dir() const { return directory_; }

    /// Any of the pieces is.
    bool IsSet() const;

    bool operator==(FileName const& other) const;
    bool operator!=(FileName const& other) const { return !(*this == other); }
    friend struct std::hash<FileName>;
    /// The order of `NoCaseStringLess` of the full names.
    bool operator<(FileName const& other) const;

    /// Never: names are compared without regard to case.
    static bool IsCaseSensitive() { return false; }

    /// Something of that name exists, be it a directory.
    bool FileExists() const;
    /// Something of that name exists that is no directory.
    bool IsFile() const;
    /// `Directory::Accessible()` of the directory; the file itself is not asked about.
    bool FileAccessible() const { return directory_.Accessible(); }
    /// Both of these.
    bool FileAccessibleAndExists() const { return FileAccessible() && FileExists(); }
    /// In bytes; -1 when it cannot be told.
    long long FileLength() const;
    /// Sets `time` to when the file was last changed, in whole seconds of UTC. It stays as it is when there
    /// is no such file.
    /// \throws std::runtime_error when that was in no year of `Time`'s, or of the host's calendar; on
    ///     Windows that one goes from 1970 to 3000.
    void TimeLastModified(Time& time) const;
    /// A file, not a directory, stands in the directory under exactly these letters, also where the disk
    /// takes others for the same name.
    bool IsCaseSensativeFile() const;

    /// Removes the file, or the empty directory. That it is missing is no error.
    static void Remove(FileName const& file);
    /// Renames or moves it within its file system, and replaces a file that has the new name.
    static void Rename(FileName const& from, FileName const& to);

private:
    static std::string RemoveExtension(std::string& name);

    Directory directory_;
    std::string rootName_;
    std::string extension_;
};

} // namespace Zan::Orv::Core::Service

/// For unordered containers. By the three pieces without regard to case, as equality is; see `Directory`.
template<>
struct ORV_API std::hash<Zan::Orv::Core::Service::FileName>
{
    std::size_t operator()(Zan::Orv::Core::Service::FileName const& name) const;
};
