#include "orv/files/FileName.h"
#include "orv/time/Time.h"
#include "tests/files/DiskTest.h"

namespace Zan::Orv::Core::Service::Tests {
namespace {

using FileNameOnDisk = DiskTest;

TEST(FileName, IsTakenApart)
{
    struct
    {
        char const *in, *directory, *root, *extension;
    } const rows[] = {
        {"", "", "", ""},
        {"dir/base.tar.gz", "dir", "base.tar", "gz"},
        {"dir\\base.", "dir", "base", ""},
        {"dir/.hidden", "dir", "", "hidden"},
        {"//srv//share/c.txt", "//srv/share", "c", "txt"},
        {"..", "", ".", ""},
    };
    for (auto const& row : rows)
    {
        FileName const name(row.in);
        SCOPED_TRACE(row.in);
        EXPECT_EQ(name.GetDirectory(), Directory(row.directory).Name());
        EXPECT_EQ(name.GetRootName(), row.root);
        EXPECT_EQ(name.GetExtension(), row.extension);
        EXPECT_EQ(name.IsSet(), *row.in != '\0');
    }
    FileName unconverted;
    unconverted.Set("a//b\\c.txt", false);
    EXPECT_EQ(unconverted.GetFileName(), Directory::NativeSeparator() == '/' ? "b\\c.txt" : "c.txt");
}

TEST(FileName, IsChangedPieceByPiece)
{
    FileName name("dir/x.txt");
    auto const full = [&] { return fs::path(name.GetFullName()).generic_string(); };
    name.SetExtension("dat");
    EXPECT_EQ(full(), "dir/x.dat");
    name.SetRootName("a.b");
    name.SetExtension("");
    EXPECT_EQ(full(), "dir/a.b");
    EXPECT_EQ(name.GetRootName(), "a.b"); // divided by nothing
    name.SetFileName("y");
    name.AppendDirectory("deep");
    EXPECT_EQ(full(), "dir/deep/y");
    name.Dir() = name.Dir().Parent();
    name.SetFileName("");
    EXPECT_EQ(full(), "dir");
    name.SetDirectory("");
    EXPECT_FALSE(name.IsSet());

    EXPECT_TRUE(FileName("D/A.TXT") == FileName("d/a.txt") && FileName("a.txt") != FileName("a.txt2"));
    EXPECT_TRUE(FileName("a/b") < FileName("A/C") && !(FileName("A/b") < FileName("a/B")));
}

TEST_F(FileNameOnDisk, AnswersAndActs)
{
    FileName const file(place.Write("x.txt", "12345"));
    FileName const directory(place.Make("sub"));
    FileName const missing(place / "none/x.txt");
    EXPECT_TRUE(file.FileExists() && file.IsFile() && file.FileAccessible() &&
                file.FileAccessibleAndExists());
    EXPECT_TRUE(!missing.FileExists() && !missing.IsFile() && missing.FileAccessible());
    EXPECT_EQ(missing.FileLength(), -1);
    EXPECT_EQ(file.FileLength(), 5);
    fs::resize_file(file.GetFullName(), 5ull << 30);
    EXPECT_EQ(file.FileLength(), 5ll << 30);

    EXPECT_TRUE(file.IsCaseSensativeFile());
    EXPECT_FALSE(FileName(place / "X.txt").IsCaseSensativeFile());
    EXPECT_THROW(missing.IsCaseSensativeFile(), fs::filesystem_error);
    EXPECT_FALSE(FileName("no such file").IsCaseSensativeFile()); // in the current directory

    FileName const renamed(place / "sub/y.txt");
    FileName::Rename(file, renamed);
    EXPECT_TRUE(!file.FileExists() && renamed.IsFile());
    EXPECT_THROW(FileName::Rename(file, renamed), fs::filesystem_error);
    EXPECT_THROW(FileName::Remove(directory), fs::filesystem_error); // it is not empty
    FileName::Remove(renamed);
    EXPECT_NO_THROW(FileName::Remove(renamed));
}

TEST_F(FileNameOnDisk, TellsWhenItWasChanged)
{
    FileName const file(place.Write("x"));
    Time time(2001, 2, 3, 4, 5, 6, 7);
    Time const before = time;
    FileName(place / "missing").TimeLastModified(time);
    EXPECT_EQ(time, before);

    fs::last_write_time(file.GetFullName(), 951782400); // the end of a leap day, in UTC
    file.TimeLastModified(time);
    EXPECT_EQ(time, Time(2000, 2, 29, 0, 0, 0, 0));
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
