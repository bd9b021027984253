#include "orv/files/FileSystemUtil.h"
#include "tests/files/DiskTest.h"
#include "tests/support/ScopedCurrentDirectory.h"

#include <stdexcept>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using FileSystemUtilTest = DiskTest;

TEST_F(FileSystemUtilTest, KeepsThePlacesOfItsConstruction)
{
    ScopedCurrentDirectory const outer(place.Name());
    FileSystemUtil places("data", "work/");
    ScopedCurrentDirectory const inner(place.Make("elsewhere"));
    EXPECT_EQ(places.getDataDir().string(), place / "data");
    EXPECT_EQ(places.getDataDir("sub/../x.dat").string(), (place / "data/sub/../x.dat"));
    EXPECT_EQ(places.getWorkDir("y").string(), place / "work/y");
    EXPECT_FALSE(fs::exists(places.getWorkDir()));
}

TEST_F(FileSystemUtilTest, CopiesIntoAPreparedTree)
{
    place.Write("from/a/b/deep", "deep");
    SetReadOnly(place.Write("from/top", "new"));
    place.Make("to/a/b");
    place.Write("to/top", "old");

    FileSystemUtil::copyDirectory(place / "from", place / "to", true);
    EXPECT_EQ(Content(place / "to/a/b/deep"), "deep");
    EXPECT_EQ(Content(place / "to/top"), "new");
    EXPECT_TRUE(IsWritable(place / "to/top"));
}

TEST_F(FileSystemUtilTest, CopyingCreatesNoDirectory)
{
    std::string const file = place.Write("from/sub/file");
    std::string const from = place / "from";
    std::string const to = place / "to";
    std::string const reason = " does not exist or is not a directory.";
    auto const copy = [](std::string const& source, std::string const& destination) {
        return [=] { FileSystemUtil::copyDirectory(source, destination, false); };
    };
    EXPECT_TRUE(Throws<std::runtime_error>(copy(from, to), "Destination directory " + to + reason));
    EXPECT_TRUE(Throws<std::runtime_error>(copy(file, from), "Source directory " + file + reason));
    EXPECT_FALSE(fs::exists(to));
    place.Make("to");
    EXPECT_TRUE(
        Throws<std::runtime_error>(copy(from, to), "Destination directory " + place / "to/sub" + reason));
}

TEST_F(FileSystemUtilTest, CopyingOntoItselfKeepsTheFile)
{
    place.Write("from/file", "content");
    place.Make("to");
    fs::create_hard_link(place / "from/file", place / "to/file");
    EXPECT_THROW(FileSystemUtil::copyDirectory(place / "from", place / "to", false), fs::filesystem_error);
    EXPECT_EQ(Content(place / "from/file"), "content");
}

TEST_F(FileSystemUtilTest, CreatesAndRemoves)
{
    std::string const file = place.Write("file");
    FileSystemUtil::createDirs(place / "a/b/c");
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

TEST_F(FileSystemUtilTest, ResettingOpensTheWayToRemoval)
{
    std::string const file = place.Write("tree/sub/file");
    SetReadOnly(file);
    fs::permissions(place / "tree/sub", fs::owner_read);
    FileSystemUtil::resetReadOnly(place / "tree");
    EXPECT_TRUE(IsWritable(file));

    SetReadOnly(file);
    SetReadOnly(place / "tree/sub");
    FileSystemUtil::removeDirs(place / "tree", true);
    EXPECT_FALSE(fs::exists(place / "tree"));
}

TEST(FileSystemUtil, ComparesFileNames)
{
    EXPECT_FALSE(FileSystemUtil::filenameEquals("a/b.dat", "a/b.dat"));
    EXPECT_TRUE(FileSystemUtil::containsFilename({"x/y.dat", "z/w.dat"}, "w.dat"));
    EXPECT_FALSE(FileSystemUtil::containsFilename({"x/y.dat", "z/w.dat"}, "x"));
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
