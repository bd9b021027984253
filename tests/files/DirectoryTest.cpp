#include "orv/files/Directory.h"
#include "orv/files/FileName.h"
#include "orv/foundation/Exception.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <regex>

// Paths as text. What only one kind of host knows as a root stands in the tables with a column for each.

namespace Zan::Orv::Core::Service::Tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

bool const onWindows = Directory::NativeSeparator() == '\\';

std::string Native(std::string text)
{
    if (onWindows)
        std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

Directory Unconverted(std::string const& path)
{
    Directory directory;
    directory.Set(path, false);
    return directory;
}

TEST(Directory, HasOneNormalForm)
{
    struct
    {
        char const *in, *posix, *windows;
    } const rows[] = {
        {"", "", ""},
        {"a\\b\\", "a/b", "a\\b"},
        {"a/./b/../c", "a/c", "a\\c"},
        {"a//b//", "a/b/.", "a\\b\\."}, // one separator goes, the other one is an element
        {"a/..", ".", "."},
        {"../a/../..", "../..", "..\\.."},
        {"/", "/", "\\"},
        {"//", "/", "\\"},
        {"/a/../..", "/..", "\\.."},
        {"//host/share/", "//host/share", "\\\\host\\share"},
        {"C:\\", "C:/.", "C:\\"}, // where there are no drives, "C:" is a name like any other
        {"C:/a/../..", ".", "C:\\.."},
        {"C:work/", "C:work", "C:work"},
        {"C:", "C:", "C:"},
        {"a b/\xE4\n'\"", "a b/\xE4\n'\"", "a b\\\xE4\n'\""},
    };
    for (auto const& row : rows)
        EXPECT_EQ(Directory(row.in).Name(), onWindows ? row.windows : row.posix) << row.in;

    EXPECT_EQ(Unconverted("a\\b\\").Name(), "a\\b");
    EXPECT_EQ(Unconverted("a\\\\b\\\\").Name(), onWindows ? "a\\b\\." : "a\\\\b\\");
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
        {"", {"", "", "", "", false, true}, {"", "", "", "", false, true}},
        {"a/b", {"b", "", "", "a", false, true}, {"b", "", "", "a", false, true}},
        {"/", {"/", "", "/", "", false, false}, {"\\", "", "\\", "", false, false}},
        {"/a", {"a", "", "/", "/", false, false}, {"a", "", "\\", "\\", false, false}},
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
        EXPECT_EQ(directory.IsSet(), *row.in != '\0');
    }
}

TEST(Directory, IsAValue)
{
    Directory a("a/b");
    Directory const copy = a;
    a = *&a;
    EXPECT_EQ(a.Name(), copy.Name());
    Directory const moved = std::move(a);
    EXPECT_EQ(moved, copy);
    EXPECT_TRUE(!a.IsSet() && a.Name().empty() && !a.HasParent() && a == Directory());
    a.Append("x");
    EXPECT_EQ(a.Name(), "x");
    EXPECT_TRUE(Directory("A/b") == Directory("a/B") && Directory("a") != Directory("b"));
    EXPECT_TRUE(Directory::StringMatch("A", "a") && !Directory::StringMatch("a*", "ab"));
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
        {"/x", "//n/s", "/x", "\\\\n\\x"},
        {"C:work", "//n/s", "//n/s/C:work", "C:/work"},
        {"C:/work", "//n/s", "//n/s/C:/work", "C:\\work"},
        {"//m/t", "//n/s", "//m/t", "\\\\m\\t"},
        {"x", "C:/b", nullptr, "C:\\b\\x"},
        {"x", "/b", nullptr, nullptr},
        {"x", "b", nullptr, nullptr},
        {"x", "C:", nullptr, nullptr},
        {"x", "", nullptr, nullptr},
    };
    for (auto const& row : rows)
    {
        Directory path(row.path);
        SCOPED_TRACE(testing::Message() << row.path << " at " << row.base);
        auto const complete = [&] { path.MakeComplete(Directory(row.base)); };
        if (char const* const expected = onWindows ? row.windows : row.posix; expected != nullptr)
        {
            complete();
            EXPECT_EQ(path.Name(), expected);
            continue;
        }
        EXPECT_TRUE(Throws<DirectoryException>(complete, "Directory::MakeComplete: !base.IsComplete()"));
        EXPECT_EQ(path.Name(), Directory(row.path).Name());
    }
}

TEST(Directory, RelatesToOthers)
{
    struct
    {
        char const *path, *ancestor;
        bool descends;
    } const ancestors[] = {{"a/b", "a", true},   {"A/b/c", "a", true}, {"a", "a", false},
                           {"ab/c", "a", false}, {"/a/b", "/", true},  {"//n/s/a", "//n", true},
                           {"a", "", true},      {"a/b", "", false},   {"a/../b", "a", false}};
    for (auto const& row : ancestors)
        EXPECT_EQ(Directory(row.path).IsDescendantOf(Directory(row.ancestor)), row.descends)
            << row.path << " of " << row.ancestor;

    struct
    {
        char const *path, *base;
        bool related;
        char const* relative;
    } const ways[] = {{"C:\\x\\y", "C:\\x\\z\\w", true, "../../y"},
                      {"a/b", "A/B", true, ""},
                      {"a/b", "c/b", false, ""},
                      {"/a", "/b", true, "../a"},
                      {"", "", false, ""},
                      {"a/b", "a", true, "b"}};
    for (auto const& row : ways)
    {
        Directory result("stale");
        SCOPED_TRACE(testing::Message() << row.path << " from " << row.base);
        EXPECT_EQ(Directory(row.path).RelativePathFrom(Directory(row.base), result), row.related);
        EXPECT_EQ(result.Name(), Native(row.relative));
    }
    Directory self("a/b");
    EXPECT_TRUE(self.RelativePathFrom(Directory("a"), self));
    EXPECT_EQ(self.Name(), "b");
}

// What holds for every path, tried on texts that nobody would write.
TEST(Directory, KeepsItsRulesForAnyText)
{
    std::mt19937 random(20171018);
    std::string const alphabet = "//\\..:ab";
    for (int i = 0; i < 30000; ++i)
    {
        std::string text(random() % 13, ' ');
        for (char& c : text)
            c = alphabet[random() % alphabet.size()];
        SCOPED_TRACE(text);

        Directory const directory(text);
        Directory above = directory;
        for (int step = 0; above.HasParent(); ++step)
        {
            ASSERT_LT(step, 13);
            above = above.Parent();
            ASSERT_TRUE(directory.IsDescendantOf(above)) << above.Name();
        }

        // Only a dot at the end gets lost in a file name.
        std::string collapsed = text;
        std::replace(collapsed.begin(), collapsed.end(), '\\', '/');
        for (std::size_t at = 0; (at = collapsed.find("//", 1)) != std::string::npos;)
            collapsed.erase(at, 1);
        boost::filesystem::path const path(collapsed);
        FileName const file(text);
        ASSERT_EQ(file.GetDirectory(), Directory(path.parent_path().string()).Name());
        std::string leaf = path.filename().string();
        if (!leaf.empty() && leaf.back() == '.')
            leaf.pop_back();
        ASSERT_EQ(file.GetFileName(), leaf);
    }
}

TEST(Directory, CreatesAndAnswers)
{
    TemporaryDirectory const place;
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
    EXPECT_NO_THROW(Directory().Delete());
    EXPECT_TRUE(Directory(place / "a").DeleteNoThrow());
    EXPECT_FALSE(Directory(place / "a").DeleteNoThrow());
    EXPECT_NO_THROW(Directory(place / "a").Delete());
}

TEST(Directory, FindsByTheLastElement)
{
    TemporaryDirectory const place;
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
    EXPECT_THAT(find(std::string("^dat$\0x", 7), false, false, true, false), ElementsAre("dat"));
    EXPECT_THAT(find(std::string("\0x", 2), false, false, true, false).size(), 3u);
    EXPECT_THAT(find("", false, false, false, true), IsEmpty());
    EXPECT_THROW(find("(", false, false, false, false), std::regex_error);

    // The whole path is no part of it, and children come first.
    EXPECT_THAT(directory.Find("x|deep|other", false, true, true, true, true),
                testing::IsSupersetOf({place / "other/deep/x.dat", place / "other/deep", place / "other"}));
    EXPECT_THAT(Directory(place / "other").Find("", false, false, true, true, true),
                ElementsAre("x.dat", "deep"));
    EXPECT_THAT(Directory(place / "dat").Find("(", false, true, true, true, true), IsEmpty()); // a file
}

TEST(Directory, DeletesWhatTheFilterFinds)
{
    TemporaryDirectory const place;
    for (std::string const file : {"keep.txt", "a.dat", "dat/keep.txt", "dat/deep/x"})
        place.Write(file);
    Directory const directory(place.Name());
    EXPECT_THROW(directory.DeleteContent("[", false), std::regex_error);
    EXPECT_FALSE(directory.DeleteContent("DAT", false));
    EXPECT_TRUE(directory.DeleteContent("DAT", true));
    EXPECT_THAT(directory.Find("", false, false, true, true, true), ElementsAre("keep.txt"));
    EXPECT_TRUE(Directory::DeleteContent(place.Name(), "", false));
    EXPECT_TRUE(directory.Exists());
    EXPECT_FALSE(directory.DeleteContent("", false));
    EXPECT_FALSE(Directory(place / "missing").DeleteContent("(", false));
}

std::string Content(std::string const& file)
{
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

TEST(Directory, CopiesOntoWhatIsThere)
{
    TemporaryDirectory const place;
    place.Write("from/sub/file", "new");
    Directory const from(place / "from");
    auto const all = [&](std::string const& name) {
        auto found = Directory(place / name).Find("", false, true, false, true, true);
        for (std::string& file : found)
            file.erase(0, place.Name().size() + name.size() + 2);
        std::sort(found.begin(), found.end());
        return found;
    };
    EXPECT_TRUE(from.CopyTo(Directory(place / "to"))); // becomes the copy
    EXPECT_THAT(all("to"), ElementsAre(Native("sub/file")));
    EXPECT_TRUE(from.CopyTo(Directory(place / "to"))); // gets a child
    EXPECT_THAT(all("to"), ElementsAre(Native("from/sub/file"), Native("sub/file")));

    Directory const merged(place / "new/merged");
    EXPECT_TRUE(from.CopyContentsTo(merged, false));
    EXPECT_TRUE(from.CopyContentsTo(merged, false)); // "sub" exists: one level deeper
    EXPECT_THAT(all("new/merged"), ElementsAre(Native("sub/file"), Native("sub/sub/file")));
    EXPECT_THROW(from.CopyContentsTo(merged, false), boost::filesystem::filesystem_error);
    place.Write("new/merged/sub/file", "older");
    EXPECT_TRUE(from.CopyContentsTo(merged, true));
    EXPECT_EQ(Content(place / "new/merged/sub/file"), "new");

    EXPECT_THROW(from.CopyContentsTo(from, true), boost::filesystem::filesystem_error);
    EXPECT_EQ(Content(place / "from/sub/file"), "new"); // it did not replace itself
    EXPECT_FALSE(from.CopyContentsTo(Directory(place / "from/inner"), true));
    EXPECT_FALSE(Directory(place / "missing").CopyTo(Directory(place / "x")));
    EXPECT_FALSE(Directory(place / "from/sub/file").CopyTo(Directory(place / "x")));

    // Into itself: what stood there before.
    EXPECT_TRUE(from.CopyTo(Directory(place / "from/sub")));
    EXPECT_THAT(all("from"), ElementsAre(Native("sub/file"), Native("sub/from/sub/file")));
}

TEST(Directory, GoesDeep)
{
    char const* const memory = "/dev/shm"; // where there is one, a thousand directories cost little
    TemporaryDirectory const place(
        boost::filesystem::exists(memory) ? memory : boost::filesystem::temp_directory_path());
    std::string deep = "d";
    while (deep.size() < (onWindows ? 100 : 1999))
        deep += "/d";
    EXPECT_TRUE(Directory(place / deep).Create());
    std::size_t const depth = deep.size() / 2 + 1;
    Directory const top(place / "d");
    EXPECT_TRUE(top.CopyTo(Directory(place / "e")));
    EXPECT_EQ(Directory(place / "e").Find("^d$", false, false, true, true, true).size(), depth - 1);
    EXPECT_TRUE(top.DeleteNoThrow());
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
