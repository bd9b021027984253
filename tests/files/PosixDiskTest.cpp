#include "orv/files/Directory.h"
#include "orv/files/FileCatalog.h"
#include "orv/files/FileName.h"
#include "orv/files/FileSystemUtil.h"
#include "orv/files/FileUtils.h"
#include "orv/time/Time.h"
#include "tests/files/DiskTest.h"

#include <limits>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

// Links, permissions, pipes and names that only some disks have.

namespace Zan::Orv::Core::Service::Tests {
namespace {

using namespace boost::system::errc;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using PosixDisk = DiskTest;

// What root may do whatever the permissions are. scripts/test runs the tests of files once more as the user nobody
// (scripts/internal/files-as-nobody), for whom none of these is skipped.
class PosixPermissions : public DiskTest
{
protected:
    void SetUp() override
    {
        if (::geteuid() == 0)
            GTEST_SKIP() << "to root nothing is forbidden";
    }
};

std::vector<std::string> Leaves(std::string const& directory)
{
    return Directory(directory).Find("", false, false, true, true, true);
}

// The error of the host with which `action` ends.
template<class Action>
boost::system::error_code ErrorOf(Action action)
{
    try
    {
        action();
    }
    catch (fs::filesystem_error const& e)
    {
        return e.code();
    }
    return {};
}

TEST_F(PosixDisk, LinksAreFollowedAndRemovedAlone)
{
    place.Write("other/kept");
    place.Make("tree/sub");
    fs::create_directory_symlink(place / "other", place / "tree/link");
    fs::create_directory_symlink(place / "other", place / "second");
    EXPECT_THAT(Leaves(place / "tree"), UnorderedElementsAre("kept", "link", "sub"));
    EXPECT_TRUE(Directory(place / "tree").CopyTo(Directory(place / "copy")));
    EXPECT_TRUE(FileName(place / "copy/link/kept").IsFile());

    fs::create_directory_symlink(place / "other", place / "copy/outwards");
    Directory(place / "copy").Delete();
    EXPECT_TRUE(Directory(place / "second//").DeleteNoThrow()); // also by the name "second/."
    EXPECT_FALSE(FileName(place / "second").FileExists());
    EXPECT_TRUE(Directory(place / "tree").DeleteContent("link", false));
    EXPECT_THAT(Leaves(place.Name()), UnorderedElementsAre("kept", "other", "sub", "tree"));
}

TEST_F(PosixDisk, LinksThatLeadNowhereOrRoundAnEnd)
{
    place.Make("a/b/c");
    Directory const tree(place / "a");
    fs::create_symlink("missing", place / "a/dangling");
    EXPECT_THAT(Leaves(tree.Name()), UnorderedElementsAre("c", "b", "dangling"));
    EXPECT_EQ(ErrorOf([&] { tree.CopyTo(Directory(place / "copy")); }), no_such_file_or_directory);

    // Two of them, which lead upwards in as many ways as there are steps to the second power.
    for (std::string const name : {"a/b/c/one", "a/b/c/two"})
        fs::create_directory_symlink("..", place / name);
    EXPECT_EQ(ErrorOf([&] { Leaves(tree.Name()); }), too_many_symbolic_link_levels);
    EXPECT_EQ(ErrorOf([&] { tree.CopyTo(Directory(place / "round")); }), too_many_symbolic_link_levels);
    EXPECT_FALSE(Directory(place / "round").Exists());

    fs::create_symlink("self", place / "self");
    EXPECT_EQ(ErrorOf([&] { Directory(place / "self").Exists(); }), too_many_symbolic_link_levels);
    EXPECT_FALSE(Directory(place / "self").Accessible());
}

TEST_F(PosixDisk, CopyingFollowsLinksButNotInCircles)
{
    place.Write("outside/file", "seen");
    place.Make("from/sub");
    place.Make("to/out");
    place.Make("to/sub");
    fs::create_directory_symlink(place / "outside", place / "from/out");
    FileSystemUtil::copyDirectory(place / "from", place / "to", false);
    EXPECT_EQ(Content(place / "to/out/file"), "seen");

    // Both trees lead back in the same way, so that a counterpart is always there.
    fs::create_directory_symlink("..", place / "from/sub/up");
    fs::create_directory_symlink("..", place / "to/sub/up");
    EXPECT_EQ(ErrorOf([&] { FileSystemUtil::copyDirectory(place / "from", place / "to", false); }),
              too_many_symbolic_link_levels);
}

TEST_F(PosixDisk, NothingOutsideOfATreeIsTouched)
{
    std::string const file = place.Write("outside/file");
    SetReadOnly(file);
    place.Make("tree");
    fs::create_directory_symlink(place / "outside", place / "tree/out");
    fs::create_symlink(file, place / "tree/file");
    fs::create_directory_symlink(place / "tree", place / "tree/up");
    fs::create_symlink("nothing", place / "tree/dangling");
    FileSystemUtil::resetReadOnly(place / "tree");
    FileSystemUtil::resetReadOnly(place / "tree/dangling");
    FileSystemUtil::removeDirs(place / "tree", true);
    for (std::string const ending : {"", "/", "/./"})
    {
        fs::create_directory_symlink(place / "outside", place / "link");
        FileSystemUtil::removeDirs(place / "link" + ending, true);
        EXPECT_THAT(Leaves(place.Name()), UnorderedElementsAre("outside", "file")) << ending;
    }
    EXPECT_FALSE(IsWritable(file));
}

TEST_F(PosixDisk, ACatalogFollowsLinks)
{
    place.Write("below/inner.dat");
    fs::create_symlink(place / "below/inner.dat", place / "to-file");
    fs::create_directory_symlink(place / "below", place / "to-directory");
    fs::create_symlink("gone", place / "to-nothing");
    EXPECT_THAT(NamesOf(FileCatalog(place.Name())), UnorderedElementsAre("to-file", "to-nothing"));
    EXPECT_THAT(NamesOf(FileCatalog(place / "to-directory")), ElementsAre("inner.dat"));

    // Of a link to itself, nobody can tell whether it is a file.
    fs::create_symlink("loop", place / "loop");
    Opened<FileCatalog> const unknown(place.Name());
    EXPECT_THAT(NamesOf(unknown), IsEmpty());
    EXPECT_FALSE(unknown.isValid_);
}

TEST_F(PosixDisk, OddNamesAreCopiedToAnotherFileSystem)
{
    ASSERT_TRUE(fs::is_directory("/dev/shm")) << "needs a second file system, beside that of temporary files";
    TemporaryDirectory const memory("/dev/shm");
    std::vector<std::string> const names = {" a b ", "'\"", "\xFF\x80", "new\nline", "C:", "[(", "-rf"};
    for (std::string const& name : names)
        EXPECT_EQ(FileName(place.Write("from/" + name)).FileLength(), 7) << name;
    EXPECT_TRUE(Directory(place / "from").CopyTo(Directory(memory / "to")));
    EXPECT_THAT(Leaves(memory / "to"), testing::UnorderedElementsAreArray(names));
    EXPECT_EQ(Content(memory / "to/-rf"), "content");
}

TEST_F(PosixDisk, PipesAreNotWaitedFor)
{
    place.Make("from");
    ASSERT_EQ(::mkfifo((place / "from/pipe").c_str(), 0600), 0);
    EXPECT_EQ(ErrorOf([&] { Directory(place / "from").CopyTo(Directory(place / "to")); }), not_supported);
    EXPECT_EQ(ErrorOf([&] { FileSystemUtil::copyDirectory(place / "from", place / "to", false); }),
              not_supported);
    EXPECT_TRUE(FileName(place / "from/pipe").IsFile());
}

TEST_F(PosixPermissions, AClosedDirectoryTellsNothing)
{
    FileName const inside(place.Write("closed/inside"));
    fs::permissions(place / "closed", fs::no_perms);
    Directory const within(inside.GetFullName());
    EXPECT_TRUE(Directory(place / "closed").AccessibleAndExists());
    EXPECT_FALSE(within.Accessible() || within.AccessibleAndExists() || within.IsDirectory());
    EXPECT_FALSE(FileUtils::IsAccessible(inside.GetFullName()));
    EXPECT_EQ(ErrorOf([&] { within.Exists(); }), permission_denied);
    EXPECT_EQ(ErrorOf([&] { within.Create(); }), permission_denied);
    EXPECT_EQ(ErrorOf([&] { inside.FileExists(); }), permission_denied);
    EXPECT_EQ(inside.FileLength(), -1);
    EXPECT_EQ(ErrorOf([&] { Leaves(place.Name()); }), permission_denied);
    EXPECT_THAT(Directory(place.Name()).Find("", false, false, true, true, false), ElementsAre("closed"));

    for (fs::perms const permissions : {fs::owner_read, fs::owner_exe})
    {
        fs::permissions(place / "closed", permissions);
        Opened<FileCatalog> const catalog(place / "closed");
        EXPECT_THAT(NamesOf(catalog), IsEmpty()) << permissions;
        EXPECT_FALSE(catalog.isValid_) << permissions;
    }
}

TEST_F(PosixPermissions, AReadOnlyDirectoryStaysAsItIs)
{
    SetReadOnly(place.Write("readonly/file"));
    SetReadOnly(place / "readonly");
    Directory const directory(place / "readonly");
    EXPECT_FALSE(Directory(place / "readonly/new").Create());
    EXPECT_FALSE(directory.DeleteNoThrow());
    EXPECT_EQ(ErrorOf([&] { directory.Delete(); }), permission_denied);
    EXPECT_EQ(ErrorOf([&] { FileSystemUtil::removeDirs(place / "readonly", false); }), permission_denied);
    EXPECT_TRUE(directory.CopyTo(Directory(place / "copy")));
    FileSystemUtil::removeDirs(place / "readonly", true);
    EXPECT_FALSE(directory.Exists());
}

TEST_F(PosixDisk, TimesOutsideOfTheCalendar)
{
    ASSERT_TRUE(fs::is_directory("/dev/shm")) << "needs a file system in memory";
    TemporaryDirectory const memory("/dev/shm"); // which keeps any 64 bits
    FileName const file(memory.Write("x"));
    Time time;
    fs::last_write_time(file.GetFullName(), -1);
    file.TimeLastModified(time);
    std::time_t const year67536 = 31556952ll * 65566; // in 16 bits it would be the year 2000
    for (std::time_t const seconds : {std::time_t(-17987443201), std::time_t(253402300800), year67536,
                                      std::numeric_limits<std::time_t>::max()})
    {
        fs::last_write_time(file.GetFullName(), seconds);
        ASSERT_EQ(fs::last_write_time(file.GetFullName()), seconds);
        EXPECT_TRUE(Throws<std::runtime_error>([&] { file.TimeLastModified(time); },
                                               "FileName::TimeLastModified: can not convert time format"))
            << seconds;
    }
    EXPECT_EQ(time, Time(1969, 12, 31, 23, 59, 59, 0));
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
