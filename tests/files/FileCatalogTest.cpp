#include "orv/files/FileCatalog.h"
#include "orv/files/Directory.h"
#include "tests/support/TemporaryDirectory.h"

#include <boost/filesystem.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

namespace fs = boost::filesystem;

using testing::IsEmpty;
using testing::UnorderedElementsAre;

template<class Catalog>
struct Opened : Catalog
{
    using Catalog::Catalog;
    using Catalog::GetFullPath;
    using Catalog::isValid_;
};

std::vector<std::string> NamesOf(IFileCatalog const& catalog)
{
    std::vector<std::string> names;
    for (PathCacheEntry const& entry : catalog.GetEntries())
        names.push_back(entry.GetFullFilename());
    return names;
}

// It does not descend, and does not look again.
TEST(FileCatalog, IsASnapshotOfOneDirectory)
{
    TemporaryDirectory const folder;
    folder.Write("below/inner.dat");
    folder.Write(".hidden");
    std::string const file = folder.Write("Run1.X0001");
    FileCatalog catalog(folder.Name());
    FileCatalog const copy = catalog;
    folder.Write("new");
    fs::remove(file);
    EXPECT_THAT(NamesOf(catalog), UnorderedElementsAre("Run1.X0001", ".hidden"));

    catalog = FileCatalog(folder / "below/");
    EXPECT_THAT(NamesOf(catalog), UnorderedElementsAre("inner.dat"));
    EXPECT_EQ(catalog.GetRoot(), folder / "below");
    EXPECT_THAT(NamesOf(copy), UnorderedElementsAre("Run1.X0001", ".hidden"));
    EXPECT_EQ(copy.GetRoot(), folder.Name());
}

// The pieces of any name, and the order, as the path library delivers them.
TEST(FileCatalog, AgreesWithTheLibrarysIteration)
{
    TemporaryDirectory const folder;
    std::vector<std::string> names{"a b.C", "no_extension", "x.y.Z"};
    if (Directory::NativeSeparator() == '/') // the other host has no such names
        names.insert(names.end(),
                     {"...", "dot.", "line\nbreak.dat", "\xC4\xFF.\xE4", "back\\slash.d", "C:colon.d"});
    for (int i = 0; i < 100; ++i)
        names.push_back("Run.X" + std::to_string(i));
    for (std::string const& name : names)
        folder.Write(name);

    std::vector<std::string> expected;
    for (fs::directory_entry const& entry : fs::directory_iterator(folder.Name()))
        expected.push_back(entry.path().filename().string());
    EXPECT_EQ(NamesOf(FileCatalog(folder.Name())), expected);
    EXPECT_THAT(expected, testing::UnorderedElementsAreArray(names));
}

TEST(FileCatalog, FollowsLinks)
{
    TemporaryDirectory const folder;
    folder.Write("below/inner.dat");
    boost::system::error_code failed;
    fs::create_symlink(folder / "below/inner.dat", folder / "to-file", failed);
    if (!fs::is_symlink(folder / "to-file", failed)) // some hosts say that they made it
        GTEST_SKIP() << "The host makes no links.";
    fs::create_directory_symlink(folder / "below", folder / "to-directory");
    fs::create_symlink(folder / "gone", folder / "to-nothing");
    fs::create_symlink(folder / "below/inner.dat/x", folder / "to-below-a-file");
    EXPECT_THAT(NamesOf(FileCatalog(folder.Name())),
                UnorderedElementsAre("to-file", "to-nothing", "to-below-a-file"));
    EXPECT_THAT(NamesOf(FileCatalog(folder / "to-directory")), UnorderedElementsAre("inner.dat"));

    // Of a link to itself, nobody can tell whether it is a file.
    fs::create_symlink(folder / "loop", folder / "loop");
    Opened<FileCatalog> const unknown(folder.Name());
    EXPECT_THAT(unknown.GetEntries(), IsEmpty());
    EXPECT_FALSE(unknown.isValid_);
}

bool LibraryLists(std::string const& directory)
{
    try
    {
        for (fs::directory_entry const& entry : fs::directory_iterator(directory))
            entry.status();
        return true;
    }
    catch (fs::filesystem_error const&)
    {
        return false;
    }
}

TEST(FileCatalog, OfWhatCannotBeReadIsEmpty)
{
    TemporaryDirectory const folder;
    for (std::string const& root : {folder / "missing", folder.Write("file"), std::string()})
    {
        Opened<FileCatalog> const catalog(root);
        EXPECT_THAT(catalog.GetEntries(), IsEmpty()) << root;
        EXPECT_FALSE(catalog.isValid_) << root;
        EXPECT_EQ(catalog.GetRoot(), Directory(root).Name());
    }

    Opened<FileCatalog> const readable(folder.Name());
    EXPECT_TRUE(readable.isValid_);

    // Some users may read anything, and some hosts keep no permissions.
    std::string const locked = folder.Make("locked");
    folder.Write("locked/file");
    for (fs::perms const permissions : {fs::no_perms, fs::owner_read, fs::owner_exe})
    {
        fs::permissions(locked, permissions);
        Opened<FileCatalog> const catalog(locked);
        EXPECT_EQ(catalog.isValid_, LibraryLists(locked)) << permissions;
        EXPECT_EQ(catalog.GetEntries().size(), catalog.isValid_ ? 1u : 0u) << permissions;
    }
}

TEST(FileCatalog, HasARootAsText)
{
    std::string const separator(1, Directory::NativeSeparator());
    Opened<FileCatalogBase> const nowhere;
    EXPECT_TRUE(nowhere.isValid_);
    EXPECT_EQ(nowhere.GetRoot(), "");
    EXPECT_EQ(nowhere.GetFullPath("x.dat"), "x.dat");
    EXPECT_EQ(Opened<FileCatalogBase>("").GetFullPath("x.dat"), separator + "x.dat");

    Opened<FileCatalogBase> const catalog("a/./b\\");
    EXPECT_EQ(catalog.GetRoot(), "a" + separator + "b");
    EXPECT_EQ(catalog.GetFullPath("../x"),
              "a" + separator + "b" + separator + "../x"); // text, not made normal
    EXPECT_EQ(Opened<FileCatalogBase>("/").GetFullPath("x.dat"), separator + separator + "x.dat");
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
