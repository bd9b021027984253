#include "orv/files/Directory.h"
#include "orv/files/FileName.h"
#include "orv/files/FileSystemUtil.h"
#include "orv/time/Time.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

// Links, permissions, pipes and names that only some disks have.

namespace Zan::Orv::Core::Service::Tests {
namespace {

namespace fs = boost::filesystem;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

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

TEST(PosixDisk, LinksAreFollowedAndRemovedAlone)
{
    TemporaryDirectory const place, other;
    other.Write("kept");
    place.Make("tree/sub");
    fs::create_directory_symlink(other.Name(), place / "tree/link");
    fs::create_directory_symlink(other.Name(), place / "second");
    EXPECT_THAT(Leaves(place / "tree"), UnorderedElementsAre("kept", "link", "sub"));
    EXPECT_TRUE(Directory(place / "tree").CopyTo(Directory(place / "copy")));
    EXPECT_TRUE(FileName(place / "copy/link/kept").IsFile());

    EXPECT_TRUE(Directory(place / "tree").DeleteContent("link", false));
    EXPECT_TRUE(Directory(place / "second//").DeleteNoThrow()); // also by the name "second/."
    EXPECT_FALSE(FileName(place / "second").FileExists());
    fs::create_directory_symlink(other.Name(), place / "tree/link");
    Directory(place / "tree").Delete();
    EXPECT_THAT(Leaves(other.Name()), ElementsAre("kept"));
}

TEST(PosixDisk, LinksThatLeadNowhereOrRoundAnEnd)
{
    using namespace boost::system::errc;
    TemporaryDirectory const place;
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
    EXPECT_EQ(Directory(tree).Find("", false, false, true, true, false).size(), 2u);

    fs::create_symlink("self", place / "self");
    EXPECT_EQ(ErrorOf([&] { Directory(place / "self").Exists(); }), too_many_symbolic_link_levels);
    EXPECT_FALSE(Directory(place / "self").Accessible());
    EXPECT_EQ(ErrorOf([&] { Leaves(place.Name()); }), too_many_symbolic_link_levels);
}

TEST(PosixDisk, NamesAreBytes)
{
    TemporaryDirectory const place;
    std::vector<std::string> const names = {" a b ", "'\"", "\xFF\x80", "new\nline", "C:", "[(", "-rf"};
    for (std::string const& name : names)
        place.Write("from/" + name + "/" + name, name);
    EXPECT_TRUE(Directory(place / "from").CopyTo(Directory(place / "to")));
    EXPECT_THAT(Directory(place / "to").Find("", false, false, true, false, false),
                testing::UnorderedElementsAreArray(names));
    for (std::string const& name : names)
    {
        FileName const file(place / ("to/" + name + "/" + name));
        EXPECT_EQ(file.FileLength(), static_cast<long long>(name.size())) << name;
    }
}

TEST(PosixDisk, PipesAreNotWaitedFor)
{
    TemporaryDirectory const place;
    place.Make("from");
    ASSERT_EQ(::mkfifo((place / "from/pipe").c_str(), 0600), 0);
    EXPECT_EQ(ErrorOf([&] { Directory(place / "from").CopyTo(Directory(place / "to")); }),
              boost::system::errc::not_supported);
    EXPECT_EQ(ErrorOf([&] { FileSystemUtil::copyDirectory(place / "from", place / "to", false); }),
              boost::system::errc::not_supported);
    EXPECT_TRUE(FileName(place / "from/pipe").IsFile());
}

TEST(PosixDisk, WhatIsForbidden)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "to root nothing is forbidden";
    using boost::system::errc::permission_denied;
    TemporaryDirectory const place;
    FileName const inside(place.Write("closed/inside"));
    fs::permissions(place / "closed", fs::no_perms);
    Directory const within(place / "closed/inside");
    EXPECT_TRUE(Directory(place / "closed").AccessibleAndExists());
    EXPECT_FALSE(within.Accessible() || within.AccessibleAndExists() || within.IsDirectory());
    EXPECT_EQ(ErrorOf([&] { within.Exists(); }), permission_denied);
    EXPECT_EQ(ErrorOf([&] { within.Create(); }), permission_denied);
    EXPECT_EQ(ErrorOf([&] { inside.FileExists(); }), permission_denied);
    EXPECT_EQ(inside.FileLength(), -1);
    EXPECT_EQ(ErrorOf([&] { Leaves(place.Name()); }), permission_denied);
    EXPECT_THAT(Directory(place.Name()).Find("", false, false, true, true, false), ElementsAre("closed"));

    place.Write("readonly/file");
    fs::permissions(place / "readonly/file", fs::owner_read);
    fs::permissions(place / "readonly", fs::owner_read | fs::owner_exe);
    EXPECT_FALSE(Directory(place / "readonly/new").Create());
    EXPECT_FALSE(Directory(place / "readonly").DeleteNoThrow());
    EXPECT_EQ(ErrorOf([&] { Directory(place / "readonly").Delete(); }), permission_denied);
    EXPECT_TRUE(Directory(place / "readonly").CopyTo(Directory(place / "copy")));
}

TEST(PosixDisk, NamesCanBeTooLong)
{
    TemporaryDirectory const place;
    Directory const tooLong(place / std::string(300, 'x'));
    EXPECT_EQ(ErrorOf([&] { tooLong.Exists(); }), boost::system::errc::filename_too_long);
    EXPECT_EQ(ErrorOf([&] { tooLong.Create(); }), boost::system::errc::filename_too_long);
    EXPECT_FALSE(tooLong.IsDirectory() || tooLong.Accessible() || tooLong.AccessibleAndExists());
}

TEST(PosixDisk, CopiesAcrossFileSystems)
{
    struct stat here, there;
    TemporaryDirectory const place;
    if (::stat("/dev/shm", &there) != 0 || ::access("/dev/shm", W_OK) != 0 ||
        ::stat(place.Name().c_str(), &here) != 0 || here.st_dev == there.st_dev)
        GTEST_SKIP() << "no second file system at /dev/shm";
    TemporaryDirectory const memory("/dev/shm");
    place.Write("a/b/file", "12345");
    EXPECT_TRUE(Directory(place / "a").CopyTo(Directory(memory / "a")));
    EXPECT_EQ(FileName(memory / "a/b/file").FileLength(), 5);
    EXPECT_EQ(ErrorOf([&] { FileName::Rename(FileName(place / "a/b/file"), FileName(memory / "f")); }),
              boost::system::errc::cross_device_link);
}

TEST(PosixDisk, TimesOutsideOfTheCalendar)
{
    TemporaryDirectory const place(fs::exists("/dev/shm") ? "/dev/shm" : "/tmp"); // any 64 bits, in memory
    FileName const file(place.Write("x"));
    auto const set = [&](std::time_t seconds) {
        fs::last_write_time(file.GetFullName(), seconds);
        return fs::last_write_time(file.GetFullName()) == seconds;
    };
    Time time;
    ASSERT_TRUE(set(-1));
    file.TimeLastModified(time);
    EXPECT_EQ(time, Time(1969, 12, 31, 23, 59, 59, 0));

    Time const before = time;
    std::time_t const year67536 = 31556952ll * 65566; // in 16 bits it would be the year 2000
    for (std::time_t const seconds : {std::time_t(-17987443201), std::time_t(253402300800), year67536,
                                      std::numeric_limits<std::time_t>::max()})
    {
        if (!set(seconds)) // the disk took the nearest it can hold
            continue;
        EXPECT_TRUE(Throws<std::runtime_error>([&] { file.TimeLastModified(time); },
                                               "FileName::TimeLastModified: can not convert time format"))
            << seconds;
    }
    EXPECT_EQ(time, before);
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
