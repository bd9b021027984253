#pragma once

#include "orv/Export.h"
#include "orv/files/FileName.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace Zan::Orv::Core::Service {

/// Functions on files: comparing, copying, finding a free name, and small questions.
///
///     FileName result("out/run.dat");
///     if (!FileUtils::CompareFiles(result, FileName("expected/run.dat"), true, true))
///         FileUtils::Copy(result, FileUtils::ConstructUniqueName(FileName("failed/run.dat")), false);
///
/// Files are read and written in blocks and may have any size. A pipe counts as a file, and opening one waits
/// for its other end. Failures of the disk reach the caller as `boost::filesystem::filesystem_error`, a
/// `std::exception`, from wherever a function asks whether something exists.
///
/// No state, no locks; any thread.
class ORV_API FileUtils
{
public:
    class ExtensionMatcher;
    class FileNameLess;

    /// Compares two files byte by byte, or with `textMode` line by line, and then with `floatTolerant` by
    /// `FloatTolerantCompare` where lines differ. Without `textMode`, `floatTolerant` counts for nothing.
    ///
    /// A last line without its newline differs from one with it. The host's text mode decides what else ends
    /// a line: on POSIX a carriage return is a character as any other.
    ///
    /// In text mode, false also where a file cannot be read.
    /// \throws std::runtime_error in the other: "Problem opening file: " and the full name, or "reading", or
    ///     "closing".
    static bool CompareFiles(FileName const& a, FileName const& b, bool textMode, bool floatTolerant);

    /// True when both lines have as many words, and each pair of words is the same or two numbers that are no
    /// farther apart than 1e-12 of the one in `a`. So `a` is the line to measure by, and a 0 there allows
    /// only another 0.
    ///
    /// A number consists of digits, '.', '+', '-', 'e' and 'E' alone, in any locale. As much of it counts as
    /// makes sense from the left, and if nothing does it is 0. Two that are too large for a double are equal.
    /// Neither line is changed.
    static bool FloatTolerantCompare(std::string& a, std::string& b);

    /// Appends the words of `text`, which space, tab and newline separate. `text` is not changed, and may not
    /// be an element of `words`.
    static void GetWords(std::string& text, std::vector<std::string>& words);

    /// A name like `file` that is free in its directory: the root name with "_1", or "_2", and so on. It is
    /// `file` itself where nothing has that name, or its directory is not set or is none. Nothing reserves
    /// it.
    ///
    /// A number is taken when a name in the directory has it in the same place with a '.', a '|' or a 'z'
    /// behind it, without regard to case, whatever the extension; a name that ends with the number does not
    /// count. The root name is read as an ECMAScript expression.
    /// \throws std::regex_error when it is none, or as for `Directory::Find`.
    /// \throws std::runtime_error when it finds a name whatever the number, as the alternatives of "a|b" do.
    static FileName ConstructUniqueName(FileName const& file);

    /// Copies the content of a file over or, with `append`, behind that of `to`. False when one of them
    /// cannot be opened, is a directory, or both are the same file, which is then left as it is. A disk that
    /// is full goes unnoticed: compare where it matters.
    static bool Copy(FileName const& from, FileName const& to, bool append);
    /// Copies what is left in a stream. False when it has failed or `to` cannot be opened. The stream must
    /// not read from `to`. Without `binary` the host translates line ends.
    static bool Copy(std::istream& from, FileName const& to, bool append, bool binary);

    /// `Directory::Accessible` for any path, taken as it stands: also true of what does not exist.
    static bool IsAccessible(std::string const& path);

    /// True when no byte is above 0x7F, among the first `maxCount` if that is above 0. False when the file
    /// cannot be read.
    static bool IsAscii(FileName const& file, int maxCount);

    /// The number of the line on which the byte at `position` lies, from 1. A newline belongs to the line
    /// that it ends. -1 for a position outside of the file or in a last line without newline, and for what is
    /// no file.
    static long long ComputeLineNumber(FileName const& file, std::streampos const& position);

    /// \{
    /// The functions of `FileName`.
    static void Remove(FileName const& file) { FileName::Remove(file); }
    static void Rename(FileName const& from, FileName const& to) { FileName::Rename(from, to); }
    /// \}
};

/// An expression made of a list of extensions, that a name has to match as a whole. For "dat" and "res" it is
///
///     .*\.(dat|res)\Z
///
/// The extensions stand in it as they are, so they may be expressions themselves. The end is the letter in
/// this grammar, ECMAScript's: "a.datZ" matches and "a.dat" does not.
///
/// The whole may have 4,000 characters, where "a{3}" counts as "aaa", and groups 500 deep. Matching takes bounded time, but
/// for an expression that refers back to a group.
///
/// Copies share the expression. Matching is safe on several threads as long as nobody sets the criteria.
class ORV_API FileUtils::ExtensionMatcher
{
public:
    /// `SetMatchCriteria`
    ExtensionMatcher(std::vector<std::string> const& extensions = {}, bool caseSensitive = false);

    /// \throws std::regex_error when the whole is no expression, or too large; it stays as it was.
    void SetMatchCriteria(std::vector<std::string> const& extensions, bool caseSensitive);

    /// Nothing matches a matcher that was moved from.
    /// \throws std::regex_error for a name of more than 500 bytes, where the expression refers back to a group.
    bool operator()(std::string const& name) const;

private:
    struct Expression;
    std::shared_ptr<Expression const> expression_;
};

/// The order of file names for containers: that of `NoCaseStringLess`, as names are not case-sensitive.
class ORV_API FileUtils::FileNameLess
{
public:
    /// True when `a` comes before `b`.
    bool operator()(std::string const& a, std::string const& b) const;
};

} // namespace Zan::Orv::Core::Service
