#include "orv/files/Directory.h"

#include "orv/files/internal/GivenExpression.h"
#include "orv/files/internal/TreeCopy.h"
#include "orv/foundation/Exception.h"
#include "orv/foundation/Strings.h"
#include "orv/foundation/internal/Hash.h"

#include <boost/filesystem.hpp>

#include <cstdint>
#include <optional>
#include <utility>

namespace Zan::Orv::Core::Service {

namespace fs = boost::filesystem;
using boost::system::error_code;

struct Directory::Path
{
    fs::path value;
};

namespace {

fs::path MadeNormal(fs::path const& path)
{
    fs::path normal = path.lexically_normal();
    normal.make_preferred();
    return normal;
}

// The normal form of a path that may end in a separator.
fs::path WithoutSeparatorMadeNormal(fs::path path)
{
    auto const& text = path.string();
    std::size_t const size = text.size();
    if (size >= 2 && (text[size - 1] == '\\' || text[size - 1] == '/') && text[size - 2] != ':')
        path = fs::path(text.substr(0, size - 1));
    return MadeNormal(path);
}

fs::path ParentOf(fs::path const& path)
{
    return path.has_parent_path() ? WithoutSeparatorMadeNormal(path.parent_path()) : fs::path();
}

bool SamePath(fs::path const& a, fs::path const& b)
{
    return NoCaseStringEqual(a.string(), b.string());
}

fs::file_status StatusNoThrow(fs::path const& path)
{
    error_code ignored;
    return fs::status(path, ignored);
}

fs::path Extended(fs::path const& path, fs::path const& name)
{
    fs::path const extended = path / name;
    error_code error;
    fs::file_type const type = fs::status(extended, error).type();
    // Not the question whether it is a file: of one that is plainly there, the host tells without an error.
    if (error != error_code() && (type == fs::regular_file || type > fs::directory_file))
        throw DirectoryException("Directory: specified path can only point to a directory");
    return MadeNormal(extended);
}

bool CreateWithParents(fs::path const& path)
{
    if (path.empty())
        return false;
    if (fs::file_status const status = fs::status(path); fs::exists(status))
    {
        if (!fs::is_directory(status))
            throw DirectoryException("Directory::Create: directory path points to an existing file");
        return true;
    }
    if (fs::path const parent = ParentOf(path); !parent.empty() && !fs::exists(parent))
        CreateWithParents(parent);
    error_code error;
    fs::create_directory(path, error);
    return !error;
}

// An entry of a directory that has been read, with what is inside of it.
struct Entry
{
    fs::directory_entry entry;
    std::vector<Entry> content;

    bool IsDirectory() const { return fs::is_directory(entry.status()); }
};

// A directory is read to its end, and closed, before those inside are opened.
std::vector<Entry> Read(fs::path const& directory, bool recursive,
                        Internal::WalkedDirectory const* above = nullptr)
{
    std::vector<Entry> entries;
    for (fs::directory_entry const& entry : fs::directory_iterator(directory))
        entries.push_back({entry, {}});
    Internal::WalkedDirectory const here{directory, above};
    for (Entry& inner : entries)
        if (inner.IsDirectory() && recursive)
        {
            Internal::RefuseToGoRound(inner.entry, here);
            inner.content = Read(inner.entry.path(), true, &here);
        }
    return entries;
}

void CopyFile(fs::directory_entry const& entry, fs::path const& target, bool overwrite)
{
    Internal::RefuseToCopy(entry, target);
    if (overwrite && fs::exists(target))
        fs::remove(target);
    fs::copy_file(entry.path(), target, fs::copy_options::none);
}

void CopyDirectory(fs::path const& leaf, std::vector<Entry> const& content, fs::path const& destination,
                   bool overwrite);

void CopyEntries(std::vector<Entry> const& entries, fs::path const& target, bool overwrite)
{
    for (Entry const& inner : entries)
    {
        fs::path const leaf = inner.entry.path().filename();
        if (inner.IsDirectory())
            CopyDirectory(leaf, inner.content, Extended(target, leaf), overwrite);
        else
            CopyFile(inner.entry, target / leaf, overwrite);
    }
}

void CopyDirectory(fs::path const& leaf, std::vector<Entry> const& content, fs::path const& destination,
                   bool overwrite)
{
    bool const asChild = fs::exists(destination) && !overwrite;
    fs::path const target = asChild ? Extended(destination, leaf) : destination;
    CreateWithParents(target);
    CopyEntries(content, target, overwrite);
}

// A "." at the end would lead through a link to what is behind it.
std::uintmax_t RemoveTree(fs::path const& path)
{
    bool const hasDot = path.filename_is_dot() && path.has_parent_path();
    return fs::remove_all(hasDot ? path.parent_path() : path);
}

// What the caller's expression finds; everything, where it is empty.
class LeafFilter
{
public:
    LeafFilter(std::string const& filter, bool ignoreCase)
    {
        if (!filter.empty())
            expression_.emplace(filter.substr(0, filter.find('\0')), ignoreCase);
    }

    bool Finds(fs::path const& path) const
    {
        return !expression_ || expression_->IsFoundIn(path.filename().string());
    }

private:
    std::optional<Internal::GivenExpression> expression_;
};

struct Query
{
    LeafFilter filter;
    bool fullPath;
    bool includeDirectories;
    bool includeFiles;
};

void Collect(std::vector<Entry> const& entries, Query const& query, std::vector<std::string>& result)
{
    for (Entry const& inner : entries)
    {
        Collect(inner.content, query, result);
        fs::path const& path = inner.entry.path();
        if (query.filter.Finds(path) && (inner.IsDirectory() ? query.includeDirectories : query.includeFiles))
            result.push_back(query.fullPath ? path.string() : path.filename().string());
    }
}

} // namespace

Directory::Directory() noexcept = default;

Directory::Directory(std::string const& path)
{
    Set(path, true);
}

Directory::Directory(Directory const& other)
    : path_(other.path_ ? std::make_unique<Path>(*other.path_) : nullptr)
{}

Directory::Directory(Directory&& other) noexcept = default;

Directory& Directory::operator=(Directory const& other)
{
    return *this = Directory(other);
}

Directory& Directory::operator=(Directory&& other) noexcept = default;

Directory::~Directory() = default;

Directory::Path const& Directory::Held() const
{
    static Path const unset;
    return path_ ? *path_ : unset;
}

void Directory::Set(std::string const& path, bool convertBackslashes)
{
    std::string text = path;
    if (convertBackslashes)
        StringReplaceChar(text, WindowsSeparator(), UnixSeparator());
    path_ = std::make_unique<Path>(Path{WithoutSeparatorMadeNormal(fs::path(std::move(text)))});
}

void Directory::Append(std::string const& name)
{
    path_ = std::make_unique<Path>(Path{Extended(Held().value, fs::path(name))});
}

void Directory::MakeComplete(Directory const& base)
{
    if (!base.IsComplete())
        throw DirectoryException("Directory::MakeComplete: !base.IsComplete()");
    fs::path const& path = Held().value;
    fs::path complete;
    if (path.empty())
        complete = base.Held().value;
    else if (HasRootName() && !HasRootDirectory())
        complete = path.root_name() / ("/" + path.relative_path().string());
    else
        complete = MadeNormal(fs::absolute(path, base.Held().value));
    path_ = std::make_unique<Path>(Path{std::move(complete)});
}

std::string Directory::Name() const
{
    return Held().value.string();
}

std::string Directory::LeafName() const
{
    return Held().value.filename().string();
}

std::string Directory::RootName() const
{
    return Held().value.root_name().string();
}

std::string Directory::RootDirectory() const
{
    return Held().value.root_directory().string();
}

std::string Directory::RootPath() const
{
    return Held().value.root_path().string();
}

Directory Directory::Parent() const
{
    Directory parent;
    parent.path_ = std::make_unique<Path>(Path{ParentOf(Held().value)});
    return parent;
}

bool Directory::IsSet() const
{
    return !Held().value.empty();
}

bool Directory::HasParent() const
{
    return Held().value.has_parent_path();
}

bool Directory::HasRelativePath() const
{
    return Held().value.has_relative_path();
}

bool Directory::HasRootDirectory() const
{
    return Held().value.has_root_directory();
}

bool Directory::HasRootName() const
{
    return Held().value.has_root_name();
}

bool Directory::IsDescendantOf(Directory const& ancestor) const
{
    fs::path path = Held().value;
    do
    {
        path = ParentOf(path);
        if (SamePath(path, ancestor.Held().value))
            return true;
    } while (path.has_parent_path());
    return false;
}

bool Directory::RelativePathFrom(Directory const& base, Directory& result) const
{
    fs::path const& path = Held().value;
    fs::path const& from = base.Held().value;
    auto own = path.begin();
    auto other = from.begin();
    while (own != path.end() && other != from.end() && SamePath(*own, *other))
    {
        ++own;
        ++other;
    }
    bool const related = own != path.begin();
    fs::path relative;
    if (related)
    {
        for (; other != from.end(); ++other)
            relative /= "..";
        for (; own != path.end(); ++own)
            relative /= *own;
    }
    result.Set(relative.string(), true); // which may be one of the two
    return related;
}

bool Directory::operator==(Directory const& other) const
{
    return SamePath(Held().value, other.Held().value);
}

bool Directory::Exists() const
{
    return fs::exists(Held().value);
}

bool Directory::IsDirectory() const
{
    return fs::is_directory(StatusNoThrow(Held().value));
}

bool Directory::Accessible() const
{
    fs::file_status const status = StatusNoThrow(Held().value);
    return fs::status_known(status) && status.permissions() != fs::perms_not_known;
}

bool Directory::AccessibleAndExists() const
{
    error_code error;
    fs::file_status const status = fs::status(Held().value, error);
    return !error && fs::exists(status) && status.permissions() != fs::perms_not_known;
}

bool Directory::Create() const
{
    return CreateWithParents(Held().value);
}

bool Directory::CopyTo(Directory const& destination) const
{
    fs::path const& path = Held().value;
    if (!IsDirectory())
        return false;
    CopyDirectory(path.filename(), Read(path, true), destination.Held().value, false);
    return true;
}

bool Directory::CopyContentsTo(Directory const& destination, bool overwrite) const
{
    if (!IsDirectory() || destination.IsDescendantOf(*this))
        return false;
    std::vector<Entry> const entries = Read(Held().value, true);
    fs::path const& target = destination.Held().value;
    if (!fs::exists(target))
        CreateWithParents(target);
    CopyEntries(entries, target, overwrite);
    return true;
}

void Directory::Delete() const
{
    if (IsSet())
        RemoveTree(Held().value);
}

bool Directory::DeleteNoThrow() const
{
    if (!IsSet())
        return false;
    try
    {
        return RemoveTree(Held().value) > 0;
    }
    catch (fs::filesystem_error const&)
    {
        return false;
    }
}

bool Directory::DeleteContent(std::string const& filter, bool ignoreCase) const
{
    if (!Exists())
        return false;
    LeafFilter const wanted(filter, ignoreCase);
    bool removed = false;
    for (Entry const& inner : Read(Held().value, false))
        if (wanted.Finds(inner.entry.path()) && fs::remove_all(inner.entry.path()) > 0)
            removed = true;
    return removed;
}

bool Directory::DeleteContent(std::string const& directory, std::string const& filter, bool ignoreCase)
{
    return Directory(directory).DeleteContent(filter, ignoreCase);
}

std::vector<std::string> Directory::Find(std::string const& filter, bool ignoreCase, bool fullPath,
                                         bool includeDirectories, bool includeFiles, bool recursive) const
{
    std::vector<std::string> result;
    if (!IsDirectory())
        return result;
    Query const query{LeafFilter(filter, ignoreCase), fullPath, includeDirectories, includeFiles};
    if (includeDirectories || includeFiles)
        Collect(Read(Held().value, recursive), query, result);
    return result;
}

Directory Directory::Current()
{
    Directory current;
    current.path_ = std::make_unique<Path>(Path{fs::current_path()});
    return current;
}

bool Directory::StringMatch(std::string const& a, std::string const& b)
{
    return NoCaseStringEqual(a, b);
}

char Directory::NativeSeparator()
{
    return static_cast<char>(fs::path::preferred_separator);
}

} // namespace Zan::Orv::Core::Service

std::size_t std::hash<Zan::Orv::Core::Service::Directory>::operator()(
    Zan::Orv::Core::Service::Directory const& directory) const
{
    return Zan::Orv::Core::Service::Internal::NoCaseHash(directory.Held().value.string());
}
