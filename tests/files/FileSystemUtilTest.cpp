#include "orv/files/FileSystemUtil.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/ScopedCurrentDirectory.h"
#include "tests/support/TemporaryDirectory.h"

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

namespace fs = boost::filesystem;

std::string Content(fs::path const& file)
{
    std::ifstream stream(file.string(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool IsWritable(fs::path const& path)
{
    return (fs::status(path).permissions() & fs::owner_write) != 0;
}

void SetReadOnly(fs::path const& path)
{
    fs::permissions(path, fs::remove_perms | fs::owner_write | fs::group_write | fs::others_write);
}

// False where the host makes no links, or such as it does not follow.
bool Link(fs::path const& to, fs::path const& link)
{
    boost::system::error_code error;
    if (fs::is_directory(to))
        fs::create_directory_symlink(to, link, error);
    else
        fs::create_symlink(to, link, error);
    return !error && fs::status(link).type() == fs::status(to).type();
}

TEST(FileSystemUtil, KeepsThePlacesOfItsConstruction)
{
    TemporaryDirectory const place;
    ScopedCurrentDirectory const outer(place.Name());
    FileSystemUtil places("data", "work/");
    fs::create_directory("elsewhere");
    ScopedCurrentDirectory const inner("elsewhere");
    EXPECT_EQ(places.getDataDir().string(), place / "data");
    EXPECT_EQ(places.getDataDir("sub/../x.dat").string(), (place / "data/sub/../x.dat"));
    EXPECT_EQ(places.getWorkDir("y").string(), place / "work/y");
    EXPECT_FALSE(fs::exists(places.getWorkDir()));
}

TEST(FileSystemUtil, CopiesIntoAPreparedTree)
{
    TemporaryDirectory const place;
    place.Write("from/a/b/deep", "deep");
    SetReadOnly(place.Write("from/top", "new"));
    place.Make("to/a/b");
    place.Write("to/top", "old");
    place.Write("to/a/other", "stays");

    FileSystemUtil::copyDirectory(place / "from", place / "to", true);
    EXPECT_EQ(Content(place / "to/a/b/deep"), "deep");
    EXPECT_EQ(Content(place / "to/top"), "new");
    EXPECT_EQ(Content(place / "to/a/other"), "stays");
    EXPECT_TRUE(IsWritable(place / "to/top"));
    EXPECT_FALSE(IsWritable(place / "from/top"));
}

TEST(FileSystemUtil, CopyingCreatesNoDirectory)
{
    TemporaryDirectory const place;
    place.Write("from/sub/file");
    std::string const from = place / "from";
    std::string const file = place / "from/sub/file";
    std::string const to = place / "to";
    std::string const reason = " does not exist or is not a directory.";
    auto const copy = [](std::string const& source, std::string const& destination) {
        return [=] { FileSystemUtil::copyDirectory(source, destination, false); };
    };
    EXPECT_TRUE(Throws<std::runtime_error>(copy(from, to), "Destination directory " + to + reason));
    EXPECT_TRUE(Throws<std::runtime_error>(copy(to, from), "Source directory " + to + reason));
    EXPECT_TRUE(Throws<std::runtime_error>(copy(file, from), "Source directory " + file + reason));
    EXPECT_FALSE(fs::exists(to));
    place.Make("to");
    EXPECT_TRUE(
        Throws<std::runtime_error>(copy(from, to), "Destination directory " + place / "to/sub" + reason));
}

TEST(FileSystemUtil, CopyingOntoItselfKeepsTheFile)
{
    TemporaryDirectory const place;
    place.Write("from/file", "content");
    place.Make("to");
    fs::create_hard_link(place / "from/file", place / "to/file");
    for (std::string const to : {"from", "to"})
    {
        EXPECT_THROW(FileSystemUtil::copyDirectory(place / "from", place / to, false), fs::filesystem_error);
        EXPECT_EQ(Content(place / "from/file"), "content") << to;
    }
}

TEST(FileSystemUtil, LinksAreFollowedButNotInCircles)
{
    TemporaryDirectory const place;
    place.Write("outside/file", "seen");
    place.Make("from/sub");
    place.Make("to/out");
    place.Make("to/sub");
    if (!Link(place / "outside", place / "from/out"))
        GTEST_SKIP() << "needs links";
    FileSystemUtil::copyDirectory(place / "from", place / "to", false);
    EXPECT_EQ(Content(place / "to/out/file"), "seen");

    // Both trees lead back in the same way, so that a counterpart is always there.
    ASSERT_TRUE(Link(place / "from", place / "from/sub/up"));
    ASSERT_TRUE(Link(place / "to", place / "to/sub/up"));
    try
    {
        FileSystemUtil::copyDirectory(place / "from", place / "to", false);
        FAIL() << "came to an end";
    }
    catch (fs::filesystem_error const& e)
    {
        EXPECT_EQ(e.code(), boost::system::errc::too_many_symbolic_link_levels);
        EXPECT_EQ(e.path1().string(), place / "from/sub/up");
    }
}

TEST(FileSystemUtil, CreatesAndRemoves)
{
    TemporaryDirectory const place;
    std::string const file = place.Write("file");
    FileSystemUtil::createDirs(place / "a/b/c");
    FileSystemUtil::createDirs(place / "a/b");
    EXPECT_TRUE(fs::is_directory(place / "a/b/c"));
    FileSystemUtil::createDirs(file);
    EXPECT_TRUE(fs::is_regular_file(file));
    EXPECT_THROW(FileSystemUtil::createDirs(place / "file/below"), fs::filesystem_error);

    FileSystemUtil::removeDirs(place / "a", false);
    FileSystemUtil::removeDirs(place / "a", true);
    FileSystemUtil::removeDirs(file, false);
    FileSystemUtil::resetReadOnly(place / "a");
    EXPECT_TRUE(fs::is_empty(place.Name()));
}

TEST(FileSystemUtil, ResettingOpensTheWayToRemoval)
{
    TemporaryDirectory const place;
    std::string const file = place.Write("tree/sub/file");
    SetReadOnly(file);
    fs::permissions(place / "tree/sub", fs::owner_read);
    FileSystemUtil::resetReadOnly(place / "tree");
    EXPECT_TRUE(IsWritable(file));

    SetReadOnly(file);
    SetReadOnly(place / "tree/sub");
    boost::system::error_code error;
    fs::copy_file(file, place / "tree/sub/probe", error);
    if (error)
    {
        EXPECT_THROW(FileSystemUtil::removeDirs(place / "tree", false), fs::filesystem_error);
    }
    FileSystemUtil::removeDirs(place / "tree", true);
    EXPECT_FALSE(fs::exists(place / "tree"));
    if (!error)
        GTEST_SKIP() << "this user may write where nobody may: what a refusal does is not seen";
}

TEST(FileSystemUtil, NothingOutsideOfATreeIsTouched)
{
    TemporaryDirectory const place;
    std::string const file = place.Write("outside/file");
    place.Make("tree");
    if (!Link(place / "outside", place / "tree/out"))
        GTEST_SKIP() << "needs links";
    ASSERT_TRUE(Link(file, place / "tree/file"));
    ASSERT_TRUE(Link(place / "tree", place / "tree/up"));
    ASSERT_TRUE(Link(place / "nothing", place / "tree/dangling"));
    std::string const endings[] = {"", "/", "/./"};
    for (std::string const& ending : endings)
        ASSERT_TRUE(Link(place / "outside", place / "link" + std::to_string(ending.size())));
    SetReadOnly(file);

    FileSystemUtil::resetReadOnly(place / "tree");
    FileSystemUtil::resetReadOnly(place / "tree/dangling");
    FileSystemUtil::removeDirs(place / "tree", true);
    EXPECT_FALSE(fs::exists(fs::symlink_status(place / "tree")));
    for (std::string const& ending : endings)
    {
        std::string const link = place / "link" + std::to_string(ending.size());
        FileSystemUtil::removeDirs(link + ending, true);
        EXPECT_FALSE(fs::exists(fs::symlink_status(link))) << ending;
    }
    EXPECT_TRUE(fs::exists(file));
    EXPECT_FALSE(IsWritable(file));
}

TEST(FileSystemUtil, ComparesFileNames)
{
    EXPECT_TRUE(FileSystemUtil::filenameEquals("a/b.dat", "b.dat"));
    EXPECT_FALSE(FileSystemUtil::filenameEquals("a/b.DAT", "b.dat"));
    EXPECT_FALSE(FileSystemUtil::filenameEquals("a/b.dat", "a/b.dat"));
    EXPECT_TRUE(FileSystemUtil::containsFilename({"x/y.dat", "z/w.dat"}, "w.dat"));
    EXPECT_FALSE(FileSystemUtil::containsFilename({"x/y.dat", "z/w.dat"}, "x"));
    EXPECT_FALSE(FileSystemUtil::containsFilename({}, ""));
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
