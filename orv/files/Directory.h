#pragma once

#include "orv/Export.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Zan::Orv::Core::Service {

/// The path of a directory, as a value: kept in one normal form, taken apart, related to other directories,
/// and acted upon. It is no handle: what it names need not exist, and may go while the object lives.
///
///     Directory cases("/data/models/../cases/");       // "/data/cases"
///     cases.Append("north");                           // "/data/cases/north"
///     cases.Create();
///     for (std::string const& file : cases.Find("\\.dat$", true, true, false, true, true))
///         Read(file);
///
/// The normal form is made of the text alone, by Boost.Filesystem's rules: the host's separators, one at a
/// time; no "." and no ".." that could be resolved; none at the end but that of a root such as "/" or
/// "C:/". Three results may lie outside of it, for they keep what was given: `Current()`, the
/// drive-relative branch of `MakeComplete`, and a name that ended in several separators, which becomes the
/// element ".".
///
/// Paths are compared without regard to case, on any host, and hashed so as keys of unordered containers; the
/// C library's locale says how case folds, and has to stay as long as a container holds paths. They become
/// bytes, and bytes paths, by Boost.Filesystem's conversion: as they are on POSIX, by the ANSI code page on
/// Windows.
///
/// What goes wrong on the disk is reported as `boost::filesystem::filesystem_error`, a `std::exception`,
/// where a member does not say otherwise. Links are followed when a tree is read, and removed as links,
/// never with what they lead to. A link back to a directory on the way to it ends the reading of the tree
/// with `too_many_symbolic_link_levels`; elsewhere links are followed as often as they stand there.
///
/// A moved-from object is not set. No locks: distinct objects may be used on distinct threads, one object
/// by several as long as nobody changes it.
class ORV_API Directory
{
public:
    /// Not set: the empty path.
    Directory() noexcept;
    /// `Set(path, true)`.
    Directory(std::string const& path);
    Directory(Directory const& other);
    Directory(Directory&& other) noexcept;
    Directory& operator=(Directory const& other);
    Directory& operator=(Directory&& other) noexcept;
    ~Directory();

    /// With `convertBackslashes`, every '\' counts as '/', also where it is an ordinary byte of a name. One
    /// separator of either kind is taken off the end, but not from behind a ':' and not the only byte.
    void Set(std::string const& path, bool convertBackslashes);

    /// Extends the path. The result is normal, but a separator at the end of `name` becomes the element
    /// ".". That the result names a file is no error.
    /// \throws DirectoryException when the host fails to tell what the result is, and yet says that it is
    ///     something other than a directory; the path is unchanged.
    void Append(std::string const& name);

    /// Makes the path one that means the same wherever the process stands. An unset path becomes `base`.
    /// With a root name alone it becomes absolute there: "C:work" is "C:/work", with this slash. Any other
    /// is resolved against `base` as `boost::filesystem::absolute` does it.
    /// \throws DirectoryException for a base that is not complete; the path is unchanged.
    void MakeComplete(Directory const& base);

    /// The whole path.
    std::string Name() const;
    /// The last element. For a root it is the root itself.
    std::string LeafName() const;
    /// "C:" or "//host".
    std::string RootName() const;
    /// The separator behind the root name, or at the front.
    std::string RootDirectory() const;
    /// Root name and root directory together.
    std::string RootPath() const;
    /// Not set when there is none.
    Directory Parent() const;

    /// False for the empty path alone.
    bool IsSet() const;
    /// \{
    /// Whether the part of that name is not empty, by the text alone. A relative path is what follows the root.
    bool HasParent() const;
    bool HasRelativePath() const;
    bool HasRootDirectory() const;
    bool HasRootName() const;
    bool HasRootPath() const { return HasRootDirectory() || HasRootName(); }
    /// \}
    /// Both a root name and a root directory. Where there are no drives only "//host/..." is complete.
    bool IsComplete() const { return HasRootName() && HasRootDirectory(); }
    /// Neither a root name nor a root directory.
    bool IsRelativePath() const { return !HasRootPath(); }

    /// By the text alone. No directory descends from itself. An unset `ancestor` is one of the paths that
    /// have no parent, and of no other.
    bool IsDescendantOf(Directory const& ancestor) const;

    /// Sets `result` to the way from `base` to this, by the text alone: unset for equal paths. False, and
    /// `result` unset, when they have not even their first element in common.
    bool RelativePathFrom(Directory const& base, Directory& result) const;

    bool operator==(Directory const& other) const;
    bool operator!=(Directory const& other) const { return !(*this == other); }
    friend struct std::hash<Directory>;

    /// Something of that name exists, be it a file.
    bool Exists() const;
    /// False as well when it cannot be told. Does not throw.
    bool IsDirectory() const;
    /// Whether the question for it can be answered at all; also true of what does not exist. Does not
    /// throw.
    bool Accessible() const;
    /// Does not throw.
    bool AccessibleAndExists() const;

    /// Creates the directory and those above it that are missing. True when it is there at the end; false
    /// when it cannot be made, or the path is not set.
    /// \throws DirectoryException when something else has that name.
    bool Create() const;

    /// Copies the tree. A destination that exists gets it as a new child; one that does not exist becomes
    /// the copy. The same holds for each directory inside: where one of its name exists, the copy lands one
    /// level deeper. An unset destination is the current directory. False when this is no directory.
    ///
    /// What is copied is what stood there before the first byte was: also a destination inside of the tree
    /// ends. A failure, such as a file of that name, leaves what has been copied so far.
    bool CopyTo(Directory const& destination) const;

    /// Copies what stands in the directory into `destination`, which is created where it is missing. With
    /// `overwrite`, directories merge and files replace their namesakes, though no file is replaced by
    /// itself; without, as `CopyTo`. False also when `destination` is a descendant of this.
    bool CopyContentsTo(Directory const& destination, bool overwrite) const;

    /// Removes the tree. That it is missing, or that the path is not set, is no error.
    void Delete() const;
    /// The same, true when anything was removed. No failure of the disk is reported.
    bool DeleteNoThrow() const;
    /// Removes the entries, with all inside them, whose own name `filter` finds, as `Find` does. True when
    /// anything was removed.
    /// \throws std::regex_error for a filter that `Find` refuses, before anything is removed.
    bool DeleteContent(std::string const& filter, bool ignoreCase) const;
    static bool DeleteContent(std::string const& directory, std::string const& filter, bool ignoreCase);

    /// Lists the directory: paths that begin with this one, or only the last elements. `filter` is an
    /// ECMAScript expression that is searched in the last element, so "dat" finds "old.dat" as well as
    /// "data"; it ends at its first NUL. An empty one finds everything. With `recursive` the entries of
    /// directories inside come ahead of these, whether or not their names are found; apart from that the
    /// order is the host's.
    ///
    /// Empty when this is no directory.
    /// \throws std::regex_error for a filter that is none, has more than 4,000 characters, where "a{3}" counts as "aaa", or
    ///     groups more than 500 deep; and for a name of more than 500 bytes, where the filter refers back to a group.
    std::vector<std::string> Find(std::string const& filter, bool ignoreCase, bool fullPath,
                                  bool includeDirectories, bool includeFiles, bool recursive) const;

    /// The process's current directory, as the host gives it.
    static Directory Current();

    /// Never: paths are compared without regard to case.
    static bool IsCaseSensitive() { return false; }
    /// Equality without regard to case. There are no patterns.
    static bool StringMatch(std::string const& a, std::string const& b);

    /// The one that `Name()` shows: '\' on Windows, '/' elsewhere.
    static char NativeSeparator();
    /// "/", on any host.
    static char UnixSeparator() { return '/'; }
    /// The backslash, on any host.
    static char WindowsSeparator() { return '\\'; }

private:
    struct Path;

    Path const& Held() const;

    std::unique_ptr<Path> path_; // null stands for the empty path
};

} // namespace Zan::Orv::Core::Service

/// For unordered containers. By the path without regard to case, as equality is.
template<>
struct ORV_API std::hash<Zan::Orv::Core::Service::Directory>
{
    std::size_t operator()(Zan::Orv::Core::Service::Directory const& directory) const;
};
