#include "orv/files/Directory.h"
#include "orv/files/FileName.h"
#include "tests/files/DiskTest.h"

// Drives, a disk that ignores case, and the read-only attribute.

namespace Zan::Orv::Core::Service::Tests {
namespace {

using WindowsDisk = DiskTest;

TEST_F(WindowsDisk, IgnoresCase)
{
    place.Write("Sub/a.txt", "12345");
    FileName const other(place / "SUB/A.TXT");
    EXPECT_TRUE(other.IsFile());
    EXPECT_EQ(other.FileLength(), 5);
    EXPECT_FALSE(other.IsCaseSensativeFile());
    EXPECT_TRUE(FileName(place / "SUB/a.txt").IsCaseSensativeFile());
    EXPECT_FALSE(Directory(place / "Sub").CopyContentsTo(Directory(place / "sUB/x"), true));
}

TEST(Drives, AreRootsWithADirectoryOfTheirOwn)
{
    Directory const current = Directory::Current();
    EXPECT_TRUE(current.IsComplete() && current.IsDirectory());
    Directory relative("some/where");
    relative.MakeComplete(current);
    EXPECT_TRUE(relative.IsDescendantOf(current));
    EXPECT_TRUE(Directory(current.RootPath()).IsDirectory());
    EXPECT_FALSE(Directory(current.RootPath()).HasRelativePath());
}

TEST_F(WindowsDisk, ReadOnlyFilesAreCopiedAndRemoved)
{
    SetReadOnly(place.Write("from/file"));
    EXPECT_TRUE(Directory(place / "from").CopyTo(Directory(place / "to")));
    EXPECT_TRUE(FileName(place / "to/file").IsFile());
    EXPECT_TRUE(Directory(place / "to").DeleteNoThrow());
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
