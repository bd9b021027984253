#include "orv/files/FileUtils.h"

#include "orv/files/internal/FileComparison.h"
#include "orv/files/internal/FreeName.h"
#include "orv/files/internal/GivenExpression.h"
#include "orv/files/internal/TolerantComparison.h"
#include "orv/foundation/Strings.h"

#include <boost/filesystem/operations.hpp>

#include <algorithm>
#include <array>
#include <fstream>
#include <limits>
#include <string_view>

namespace Zan::Orv::Core::Service {

namespace fs = boost::filesystem;

namespace {

bool CanBeWritten(FileName const& file)
{
    return !file.FileExists() || file.IsFile();
}

bool AreSameFile(FileName const& a, FileName const& b)
{
    boost::system::error_code ignored;
    return fs::equivalent(a.GetFullName(), b.GetFullName(), ignored);
}

// Hands the file over in blocks, until `take` returns false. False when the file could not be read to there.
template<class Take>
bool ReadBlocks(FileName const& file, Take take)
{
    std::ifstream stream(file.GetFullName(), std::ios::binary);
    std::array<char, 64 * 1024> block;
    while (stream.good())
    {
        stream.read(block.data(), block.size());
        if (!take(std::string_view(block.data(), static_cast<std::size_t>(stream.gcount()))))
            return true;
    }
    return stream.eof();
}

bool IsAsciiText(std::string_view bytes)
{
    // Without a branch for each byte, so that many are looked at together.
    char all = 0;
    for (char const c : bytes)
        all = static_cast<char>(all | c);
    return (all & 0x80) == 0;
}

} // namespace

bool FileUtils::CompareFiles(FileName const& a, FileName const& b, bool textMode, bool floatTolerant)
{
    if (textMode)
        return Internal::EqualLines(a.GetFullName(), b.GetFullName(), floatTolerant);
    return Internal::EqualBytes(a.GetFullName(), b.GetFullName());
}

bool FileUtils::FloatTolerantCompare(std::string& a, std::string& b)
{
    return Internal::TolerantEqual(a, b);
}

void FileUtils::GetWords(std::string& text, std::vector<std::string>& words)
{
    std::string_view rest = text;
    for (std::string_view word = Internal::TakeWord(rest); !word.empty(); word = Internal::TakeWord(rest))
        words.emplace_back(word);
}

FileName FileUtils::ConstructUniqueName(FileName const& file)
{
    FileName free = file;
    Directory const& directory = file.Dir();
    // A directory that exists and is none, one that is not set, and one that does not exist are all no
    // directory.
    if (!directory.IsSet() || !directory.Exists() || !directory.IsDirectory() || !file.FileExists())
        return free;
    std::string const root = file.GetRootName();
    auto const number = Internal::FirstFreeNumber(root, directory.Find("", true, false, true, true, false));
    free.SetRootName(root + "_" + std::to_string(number));
    return free;
}

bool FileUtils::Copy(FileName const& from, FileName const& to, bool append)
{
    // A file written over itself would be emptied before it is read, and one appended to itself has no end.
    if (!from.IsFile() || !CanBeWritten(to) || AreSameFile(from, to))
        return false;
    std::ifstream stream(from.GetFullName(), std::ios::binary);
    return Copy(stream, to, append, true);
}

bool FileUtils::Copy(std::istream& from, FileName const& to, bool append, bool binary)
{
    if (!CanBeWritten(to) || from.fail())
        return false;
    auto const mode =
        (binary ? std::ios::binary : std::ios::openmode()) | (append ? std::ios::app : std::ios::trunc);
    std::ofstream target(to.GetFullName(), std::ios::out | mode);
    if (!target)
        return false;
    std::array<char, 10000> block;
    // A target that takes no more ends the copy: a source need not have an end.
    while (from.good() && target.good())
    {
        from.read(block.data(), block.size());
        target.write(block.data(), from.gcount());
    }
    return true;
}

bool FileUtils::IsAccessible(std::string const& path)
{
    boost::system::error_code ignored;
    fs::file_status const status = fs::status(path, ignored);
    return fs::status_known(status) && status.permissions() != fs::perms_not_known;
}

bool FileUtils::IsAscii(FileName const& file, int maxCount)
{
    if (!file.FileExists())
        return false;
    auto left = maxCount > 0 ? static_cast<std::size_t>(maxCount) : std::numeric_limits<std::size_t>::max();
    bool isAscii = true;
    bool const isRead = ReadBlocks(file, [&](std::string_view block) {
        block = block.substr(0, left);
        left -= block.size();
        isAscii = IsAsciiText(block);
        return isAscii && left > 0;
    });
    return isRead && isAscii;
}

long long FileUtils::ComputeLineNumber(FileName const& file, std::streampos const& position)
{
    std::streamoff const offset = position;
    if (!file.IsFile() || offset < 0 || offset >= file.FileLength())
        return -1;
    long long line = 1;
    std::streamoff before = offset; // bytes that are still ahead of the position
    bool isEnded = false;           // the newline of its line has come
    ReadBlocks(file, [&](std::string_view block) {
        auto const passed =
            static_cast<std::size_t>(std::min(before, static_cast<std::streamoff>(block.size())));
        line += std::count(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(passed), '\n');
        before -= static_cast<std::streamoff>(passed);
        isEnded = before == 0 && block.find('\n', passed) != std::string_view::npos;
        return !isEnded;
    });
    return isEnded ? line : -1;
}

// ---- FileUtils::ExtensionMatcher ----

struct FileUtils::ExtensionMatcher::Expression
{
    Internal::GivenExpression value;
};

FileUtils::ExtensionMatcher::ExtensionMatcher(std::vector<std::string> const& extensions, bool caseSensitive)
{
    SetMatchCriteria(extensions, caseSensitive);
}

void FileUtils::ExtensionMatcher::SetMatchCriteria(std::vector<std::string> const& extensions,
                                                   bool caseSensitive)
{
    std::string text = ".*\\.(";
    for (std::size_t i = 0; i < extensions.size(); ++i)
        text += (i == 0 ? "" : "|") + extensions[i];
    text += ")\\Z";
    expression_ =
        std::make_shared<Expression const>(Expression{Internal::GivenExpression(text, !caseSensitive)});
}

bool FileUtils::ExtensionMatcher::operator()(std::string const& name) const
{
    return expression_ && expression_->value.Matches(name);
}

// ---- FileUtils::FileNameLess ----

bool FileUtils::FileNameLess::operator()(std::string const& a, std::string const& b) const
{
    return FileName::IsCaseSensitive() ? a < b : NoCaseStringLess(a, b);
}

} // namespace Zan::Orv::Core::Service
