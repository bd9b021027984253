#include "orv/files/Directory.h"
#include "orv/files/FileName.h"
#include "orv/foundation/Exception.h"
#include "tests/files/DiskTest.h"

#include <algorithm>
#include <regex>

// Paths as text. What only one kind of host knows as a root stands in the tables with a column for each.

namespace Zan::Orv::Core::Service::Tests {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using DirectoryOnDisk = DiskTest;

bool const onWindows = Directory::NativeSeparator() == '\\';

std::string Native(std::string text)
{
    if (onWindows)
        std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

TEST(Directory, HasOneNormalForm)
{
    struct
    {
        char const *in, *posix, *windows;
    } const rows[] = {
        {"", "", ""},
        {"a\\b\\", "a/b", "a\\b"},
        {"a//b//", "a/b/.", "a\\b\\."}, // one separator goes, the other one is an element
        {"../a/../..", "../..", "..\\.."},
        {"/", "/", "\\"},
        {"/a/../..", "/..", "\\.."},
        {"//host/share/", "//host/share", "\\\\host\\share"},
        {"C:\\", "C:/.", "C:\\"}, // where there are no drives, "C:" is a name like any other
        {"C:/a/../..", ".", "C:\\.."},
    };
    for (auto const& row : rows)
        EXPECT_EQ(Directory(row.in).Name(), onWindows ? row.windows : row.posix) << row.in;

    Directory unconverted;
    unconverted.Set("a\\\\b\\\\", false);
    EXPECT_EQ(unconverted.Name(), onWindows ? "a\\b\\." : "a\\\\b\\");
}

TEST(Directory, IsTakenApart)
{
    struct Pieces
    {
        std::string leaf, rootName, rootDirectory, parent;
        bool complete, relative;
    };
    struct
    {
        char const* in;
        Pieces posix, windows;
    } const rows[] = {
        {"/", {"/", "", "/", "", false, false}, {"\\", "", "\\", "", false, false}},
        {"//n", {"//n", "//n", "", "", false, false}, {"\\\\n", "\\\\n", "", "", false, false}},
        {"//n/s/a", {"a", "//n", "/", "//n/s", true, false}, {"a", "\\\\n", "\\", "\\\\n\\s", true, false}},
        {"C:/a", {"a", "", "", "C:", false, true}, {"a", "C:", "\\", "C:\\", true, false}},
        {"C:a", {"C:a", "", "", "", false, true}, {"a", "C:", "", "C:", false, false}},
    };
    for (auto const& row : rows)
    {
        Directory const directory(row.in);
        Pieces const& expected = onWindows ? row.windows : row.posix;
        SCOPED_TRACE(row.in);
        EXPECT_EQ(directory.LeafName(), expected.leaf);
        EXPECT_EQ(directory.RootName(), expected.rootName);
        EXPECT_EQ(directory.RootDirectory(), expected.rootDirectory);
        EXPECT_EQ(directory.RootPath(), expected.rootName + expected.rootDirectory);
        EXPECT_EQ(directory.Parent().Name(), expected.parent);
        EXPECT_EQ(directory.HasParent(), !expected.parent.empty());
        EXPECT_EQ(directory.IsComplete(), expected.complete);
        EXPECT_EQ(directory.IsRelativePath(), expected.relative);
    }
}

TEST(Directory, IsAValue)
{
    Directory a("a/b");
    Directory const moved = std::move(a);
    EXPECT_EQ(moved, Directory("a/b"));
    EXPECT_TRUE(!a.IsSet() && a.Name().empty() && !a.HasParent() && a == Directory());
    EXPECT_TRUE(Directory("A/b") == Directory("a/B") && Directory("a") != Directory("b"));
    EXPECT_TRUE(Directory::StringMatch("A", "a") && !Directory::StringMatch("a*", "ab"));
    EXPECT_TRUE(moved.HasRelativePath() && !Directory("/").HasRelativePath());
    EXPECT_EQ(Directory::Current().Name(), fs::current_path().string());
}

TEST(Directory, IsExtendedAndMadeComplete)
{
    Directory extended("a");
    extended.Append("../b/./c/");
    EXPECT_EQ(extended.Name(), Native("b/c/."));

    struct
    {
        char const *path, *base, *posix, *windows;
    } const rows[] = {
        {"", "//n/s/b", "//n/s/b", "\\\\n\\s\\b"}, //
        {"x/../y", "//n/s/b", "//n/s/b/y", "\\\\n\\s\\b\\y"},
        {"../x", "//n/s/b", "//n/s/x", "\\\\n\\s\\x"},
        {"C:work", "//n/s", "//n/s/C:work", "C:/work"},
        {"C:/work", "//n/s", "//n/s/C:/work", "C:\\work"},
        {"//m/t", "//n/s", "//m/t", "\\\\m\\t"},
        {"x", onWindows ? "C:/b" : "//n/b", "//n/b/x", "C:\\b\\x"},
    };
    for (auto const& row : rows)
    {
        Directory path(row.path);
        path.MakeComplete(Directory(row.base));
        EXPECT_EQ(path.Name(), onWindows ? row.windows : row.posix) << row.path << " at " << row.base;
    }
    Directory path("x");
    EXPECT_TRUE(Throws<DirectoryException>([&] { path.MakeComplete(Directory("/b")); },
                                           "Directory::MakeComplete: !base.IsComplete()"));
    EXPECT_EQ(path.Name(), "x");
}

TEST(Directory, RelatesToOthers)
{
    using Names = std::pair<char const*, char const*>;
    for (auto const& [path, above] : {Names{"A/b/c", "a"}, {"/a/b", "/"}, {"//n/s/a", "//n"}, {"a", ""}})
        EXPECT_TRUE(Directory(path).IsDescendantOf(Directory(above))) << path << " of " << above;
    for (auto const& [path, other] : {Names{"a", "a"}, {"ab/c", "a"}, {"a/b", ""}, {"a/../b", "a"}})
        EXPECT_FALSE(Directory(path).IsDescendantOf(Directory(other))) << path << " of " << other;

    auto const wayFrom = [](char const* base, char const* path) {
        Directory result("stale");
        bool const related = Directory(path).RelativePathFrom(Directory(base), result);
        return std::pair(related, result.Name());
    };
    EXPECT_EQ(wayFrom("C:\\x\\z\\w", "C:\\x\\y"), std::pair(true, Native("../../y")));
    EXPECT_EQ(wayFrom("c/b", "a/b"), std::pair(false, ""s));
    Directory self("a/b");
    Directory copy("c");
    copy = self;
    EXPECT_TRUE(self.RelativePathFrom(Directory("a"), self));
    EXPECT_EQ(self.Name() + copy.Name(), "b" + Native("a/b"));
}

TEST_F(DirectoryOnDisk, CreatesAndAnswers)
{
    Directory const made(place / "a/b/c");
    EXPECT_TRUE(!made.Exists() && !made.IsDirectory() && made.Accessible() && !made.AccessibleAndExists());
    EXPECT_TRUE(made.Create() && made.Create());
    EXPECT_TRUE(made.Exists() && made.IsDirectory() && made.Accessible() && made.AccessibleAndExists());

    Directory file(place / "a");
    place.Write("a/file");
    file.Append("file"); // names a file from here on
    EXPECT_TRUE(file.Exists() && !file.IsDirectory() && file.AccessibleAndExists());
    EXPECT_TRUE(Throws<DirectoryException>([&] { file.Create(); },
                                           "Directory::Create: directory path points to an existing file"));
    EXPECT_FALSE(Directory().Create());

    EXPECT_FALSE(Directory().DeleteNoThrow());
    EXPECT_TRUE(Directory(place / "a").DeleteNoThrow());
    EXPECT_NO_THROW(Directory(place / "a").Delete());
}

TEST_F(DirectoryOnDisk, FindsByTheLastElement)
{
    for (std::string const file : {"data.txt", "old.dat", "dat", "sub dat/DAT", "other/deep/x.dat"})
        place.Write(file);
    Directory const directory(place.Name());
    auto const find = [&](std::string const& filter, bool ignoreCase, bool directories, bool files,
                          bool recursive) {
        return directory.Find(filter, ignoreCase, false, directories, files, recursive);
    };
    EXPECT_THAT(find("dat", false, false, true, false), UnorderedElementsAre("data.txt", "old.dat", "dat"));
    EXPECT_THAT(find("^dat$", false, true, true, true), ElementsAre("dat"));
    EXPECT_THAT(find("^dat$", true, true, true, true), UnorderedElementsAre("dat", "DAT"));
    EXPECT_THAT(find("", false, true, false, true), UnorderedElementsAre("sub dat", "deep", "other"));
    EXPECT_THAT(find("^dat$\0x"s, false, false, true, false), ElementsAre("dat"));
    EXPECT_THROW(find("(", false, false, false, false), std::regex_error);

    // The whole path is no part of it, and children come first.
    EXPECT_THAT(directory.Find("x|deep|other", false, true, true, true, true),
                testing::IsSupersetOf({place / "other/deep/x.dat", place / "other/deep", place / "other"}));
    EXPECT_THAT(Directory(place / "dat").Find("(", false, true, true, true, true), IsEmpty()); // a file
}

TEST_F(DirectoryOnDisk, DeletesWhatTheFilterFinds)
{
    for (std::string const file : {"keep.txt", "a.dat", "dat/keep.txt", "dat/deep/x"})
        place.Write(file);
    Directory const directory(place.Name());
    EXPECT_THROW(directory.DeleteContent("[", false), std::regex_error);
    EXPECT_TRUE(directory.DeleteContent("DAT", true));
    EXPECT_THAT(directory.Find("", false, false, true, true, true), ElementsAre("keep.txt"));
    EXPECT_TRUE(Directory::DeleteContent(place.Name(), "", false));
    EXPECT_TRUE(directory.Exists());
}

TEST_F(DirectoryOnDisk, CopiesOntoWhatIsThere)
{
    place.Write("from/sub/file", "new");
    Directory const from(place / "from");
    auto const files = [&](std::string const& name) {
        return Directory(place / name).Find("", false, true, false, true, true);
    };
    EXPECT_TRUE(from.CopyTo(Directory(place / "to"))); // becomes the copy
    EXPECT_TRUE(from.CopyTo(Directory(place / "to"))); // gets a child
    EXPECT_THAT(files("to"), UnorderedElementsAre(place / "to/sub/file", place / "to/from/sub/file"));

    Directory const merged(place / "new/merged");
    EXPECT_TRUE(from.CopyContentsTo(merged, false));
    EXPECT_TRUE(from.CopyContentsTo(merged, false)); // "sub" exists: one level deeper
    EXPECT_THAT(files("new"), UnorderedElementsAre(merged.Name() + Native("/sub/file"),
                                                   merged.Name() + Native("/sub/sub/file")));
    EXPECT_THROW(from.CopyContentsTo(merged, false), fs::filesystem_error);
    place.Write("new/merged/sub/file", "older");
    EXPECT_TRUE(from.CopyContentsTo(merged, true));
    EXPECT_EQ(Content(place / "new/merged/sub/file"), "new");

    EXPECT_THROW(from.CopyContentsTo(from, true), fs::filesystem_error);
    EXPECT_EQ(Content(place / "from/sub/file"), "new"); // it did not replace itself
    EXPECT_FALSE(from.CopyContentsTo(Directory(place / "from/inner"), true));
    EXPECT_FALSE(Directory(place / "from/sub/file").CopyTo(Directory(place / "x")));

    // Into itself: what stood there before.
    EXPECT_TRUE(from.CopyTo(Directory(place / "from/sub")));
    EXPECT_THAT(files("from"),
                UnorderedElementsAre(place / "from/sub/file", place / "from/sub/from/sub/file"));
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
