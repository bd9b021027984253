#include "orv/files/FileCatalog.h"
#include "orv/files/Directory.h"
#include "tests/files/DiskTest.h"

namespace Zan::Orv::Core::Service::Tests {
namespace {

using testing::UnorderedElementsAre;

using FileCatalogOnDisk = DiskTest;

// It does not descend, and does not look again.
TEST_F(FileCatalogOnDisk, IsASnapshotOfOneDirectory)
{
    place.Write("below/inner.dat");
    place.Write(".hidden");
    std::string const file = place.Write("Run1.X0001");
    FileCatalog catalog(place.Name());
    place.Write("new");
    fs::remove(file);
    EXPECT_THAT(NamesOf(catalog), UnorderedElementsAre("Run1.X0001", ".hidden"));

    catalog = FileCatalog(place / "below/");
    EXPECT_THAT(NamesOf(catalog), UnorderedElementsAre("inner.dat"));
    EXPECT_EQ(catalog.GetRoot(), place / "below");
}

TEST_F(FileCatalogOnDisk, OfWhatCannotBeReadIsEmpty)
{
    for (std::string const& root : {place / "missing", place.Write("file"), std::string()})
    {
        Opened<FileCatalog> const catalog(root);
        EXPECT_EQ(catalog.GetEntries().size(), 0u) << root;
        EXPECT_FALSE(catalog.isValid_) << root;
        EXPECT_EQ(catalog.GetRoot(), Directory(root).Name());
    }
    EXPECT_TRUE(Opened<FileCatalog>(place.Name()).isValid_);
}

TEST(FileCatalog, HasARootAsText)
{
    std::string const separator(1, Directory::NativeSeparator());
    EXPECT_EQ(Opened<FileCatalogBase>().GetFullPath("x.dat"), "x.dat");
    EXPECT_EQ(Opened<FileCatalogBase>("").GetFullPath("x.dat"), separator + "x.dat");

    // The name is text, not made normal.
    Opened<FileCatalogBase> const catalog("a/./b\\");
    EXPECT_EQ(catalog.GetFullPath("../x"), "a" + separator + "b" + separator + "../x");
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
