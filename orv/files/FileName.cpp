#include "orv/files/FileName.h"

#include "orv/foundation/Strings.h"
#include "orv/foundation/internal/Hash.h"
#include "orv/platform/FileStatus.h"
#include "orv/time/Time.h"

#include <boost/filesystem.hpp>

#include <algorithm>
#include <ctime>
#include <stdexcept>
#include <utility>

namespace Zan::Orv::Core::Service {

namespace fs = boost::filesystem;

namespace {

// One '/' for several in a row. The first byte is left out of it.
void CollapseSeparators(std::string& text)
{
    if (text.empty())
        return;
    auto const twoSlashes = [](char a, char b) { return a == '/' && b == '/'; };
    text.erase(std::unique(text.begin() + 1, text.end(), twoSlashes), text.end());
}

} // namespace

FileName::FileName(std::string const& name)
{
    Set(name, true);
}

void FileName::Set(std::string const& name, bool convertBackslashes)
{
    std::string text = name;
    if (convertBackslashes)
        StringReplaceChar(text, Directory::WindowsSeparator(), Directory::UnixSeparator());
    CollapseSeparators(text);
    fs::path const path(std::move(text));
    directory_.Set(path.parent_path().string(), false);
    SetFileName(path.filename().string());
}

void FileName::SetDirectory(std::string const& directory)
{
    directory_.Set(directory, true);
}

void FileName::AppendDirectory(std::string const& name)
{
    directory_.Append(name);
}

void FileName::SetFileName(std::string const& name)
{
    rootName_ = name;
    extension_ = RemoveExtension(rootName_);
}

std::string FileName::GetFileName() const
{
    return extension_.empty() ? rootName_ : rootName_ + '.' + extension_;
}

std::string FileName::GetFullName() const
{
    return (fs::path(directory_.Name()) / GetFileName()).string();
}

bool FileName::IsSet() const
{
    return !rootName_.empty() || !extension_.empty() || directory_.IsSet();
}

bool FileName::operator==(FileName const& other) const
{
    return NoCaseStringEqual(extension_, other.extension_) && NoCaseStringEqual(rootName_, other.rootName_) &&
           directory_ == other.directory_;
}

bool FileName::operator<(FileName const& other) const
{
    return NoCaseStringLess(GetFullName(), other.GetFullName());
}

bool FileName::FileExists() const
{
    return fs::exists(fs::path(GetFullName()));
}

bool FileName::IsFile() const
{
    fs::file_status const status = fs::status(fs::path(GetFullName()));
    return fs::exists(status) && !fs::is_directory(status);
}

long long FileName::FileLength() const
{
    return Platform::FileSize(GetFullName());
}

void FileName::TimeLastModified(Time& time) const
{
    auto const seconds = Platform::ModificationTime(GetFullName());
    if (!seconds)
        return;
    std::tm utc = {};
    // A file system may hold any 64 bits; what `Time` makes of years far outside its own is no date.
    if (!Platform::CalendarTime(*seconds, utc) || utc.tm_year < 1400 - 1900 || utc.tm_year > 9999 - 1900)
        throw std::runtime_error("FileName::TimeLastModified: can not convert time format");
    time = Time(utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec, 0);
}

bool FileName::IsCaseSensativeFile() const
{
    std::string const name = GetFileName();
    fs::path const directory = directory_.IsSet() ? fs::path(GetDirectory()) : fs::path(".");
    for (fs::directory_entry const& entry : fs::directory_iterator(directory))
        if (entry.path().filename().string() == name && !fs::is_directory(entry.status()))
            return true;
    return false;
}

void FileName::Remove(FileName const& file)
{
    fs::remove(fs::path(file.GetFullName()));
}

void FileName::Rename(FileName const& from, FileName const& to)
{
    fs::rename(fs::path(from.GetFullName()), fs::path(to.GetFullName()));
}

std::string FileName::RemoveExtension(std::string& name)
{
    std::size_t const dot = name.rfind('.');
    if (dot == std::string::npos)
        return {};
    std::string extension = name.substr(dot + 1);
    name.erase(dot);
    return extension;
}

} // namespace Zan::Orv::Core::Service

std::size_t
std::hash<Zan::Orv::Core::Service::FileName>::operator()(Zan::Orv::Core::Service::FileName const& name) const
{
    return Zan::Orv::Core::Service::Internal::HashOf(
        std::hash<Zan::Orv::Core::Service::Directory>()(name.directory_),
        Zan::Orv::Core::Service::Internal::NoCaseHash(name.rootName_),
        Zan::Orv::Core::Service::Internal::NoCaseHash(name.extension_));
}
