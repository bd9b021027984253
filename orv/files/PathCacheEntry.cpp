#include "orv/files/PathCacheEntry.h"

#include "orv/foundation/Strings.h"

#include <boost/filesystem/path.hpp>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <type_traits>

namespace Zan::Orv::Core::Service {

namespace {

namespace fs = boost::filesystem;

// Where paths are wide, there are drives and a second separator, and text is converted there and back.
constexpr bool pathsAreWide = !std::is_same_v<fs::path::value_type, char>;
constexpr std::string_view separators = pathsAreWide ? "/\\" : "/";

// Where the leaf of `path` starts, if nothing but the last separator decides that; otherwise npos. Making a
// path of each name takes several times as long.
std::size_t FindPlainLeaf(std::string_view path)
{
    constexpr std::size_t longestPrefix = 4; // of a root that is no directory: "//", or "\\?\" and its like
    std::size_t const start = path.find_last_of(separators) + 1; // npos + 1 is 0
    std::string_view const leaf = path.substr(start);
    bool const mayBeRoot =
        start > 0 && start <= longestPrefix && separators.find(path[0]) != std::string_view::npos;
    if (leaf.empty() || mayBeRoot || leaf.find('\0') != std::string_view::npos)
        return std::string_view::npos;

    auto const isASCII = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (pathsAreWide &&
        (leaf.find(':') != std::string_view::npos || !std::all_of(path.begin(), path.end(), isASCII)))
        return std::string_view::npos;
    return start;
}

std::string_view ExtensionOf(std::string_view leaf)
{
    std::size_t const dot = leaf.rfind('.');
    return dot == std::string_view::npos || leaf == "." || leaf == ".." ? "" : leaf.substr(dot);
}

} // namespace

PathCacheEntry::PathCacheEntry(std::string const& path)
{
    if (std::size_t const start = FindPlainLeaf(path); start != std::string::npos)
    {
        fullFilename_.assign(path, start);
        lowercaseExtension_ = ExtensionOf(fullFilename_);
    }
    else
    {
        fs::path const parsed(path);
        fullFilename_ = parsed.filename().string();
        lowercaseExtension_ = parsed.extension().string();
    }
    // By the lengths: an extension ends at a NUL, and then the end of the name is missing here as well.
    lowercaseFilenameOnly_.assign(fullFilename_, 0, fullFilename_.size() - lowercaseExtension_.size());
    StringToLower(lowercaseExtension_);
    StringToLower(lowercaseFilenameOnly_);
}

} // namespace Zan::Orv::Core::Service
