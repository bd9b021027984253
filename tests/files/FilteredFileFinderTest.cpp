#include "orv/files/FilteredFileFinder.h"
#include "orv/files/CombinedFilters.h"
#include "orv/files/Directory.h"
#include "orv/files/ExtensionFilters.h"
#include "tests/support/TemporaryDirectory.h"

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using FilterPtr = std::shared_ptr<PathFilter const>;
using Filters = std::vector<FilterPtr>;
using Names = std::vector<std::string>;

// A list of a caller's own.
class GivenCatalog : public IFileCatalog
{
public:
    explicit GivenCatalog(Names const& names) : entries_(names.begin(), names.end()) {}

    std::string const GetRoot() const override { return "data/./r/"; }
    std::vector<PathCacheEntry> const& GetEntries() const override { return entries_; }

private:
    std::vector<PathCacheEntry> entries_;
};

// Counts how often it is asked.
class CountingFilter : public PathFilter
{
public:
    bool operator()(PathCacheEntry const& entry) const override
    {
        ++asked;
        return entry.GetLowercaseExtension() == ".dat";
    }

    mutable int asked = 0;
};

std::string InRoot(std::string const& name)
{
    std::string const separator(1, Directory::NativeSeparator());
    return "data" + separator + "r" + separator + name;
}

class FilteredFileFinderTest : public testing::Test
{
protected:
    FilterPtr const dat = ExtensionFilter::Create(".dat");
    FilterPtr const txt = ExtensionFilter::Create(".txt");
    FilterPtr const none = ExtensionFilter::Create(".none");
    FilterPtr const everything = BasicFilter<1>::Instance();
    GivenCatalog const catalog{{"B.dat", "a.DAT", "c.txt"}};
    FilteredFileFinder const finder{"results", catalog};

    std::string const a = InRoot("a.DAT"), b = InRoot("B.dat"), c = InRoot("c.txt");
};

TEST_F(FilteredFileFinderTest, AnswersByPriority)
{
    struct
    {
        char const* name;
        Filters filters;
        std::string file;
        Names files, allSingle;
        std::vector<Names> all;
    } const cases[] = {
        {"no filters", {}, "", {}, {}, {}},
        {"no match", {none}, "", {}, {}, {}},
        {"one", {dat}, b, {b, a}, {b, a}, {{b, a}}},
        {"second matches", {none, txt, dat}, c, {c}, {c, b, a}, {{c}, {b, a}}},
        {"both match", {dat, txt}, b, {b, a}, {b, a, c}, {{b, a}, {c}}},
        {"twice", {dat, dat}, b, {b, a}, {b, a, b, a}, {{b, a}, {b, a}}},
    };
    for (auto const& [name, filters, file, files, allSingle, all] : cases)
    {
        SCOPED_TRACE(name);
        EXPECT_EQ(finder.GetFileInFilterPriority(filters), file);
        EXPECT_EQ(finder.GetFilesInFilterPriority(filters), files);
        EXPECT_EQ(finder.GetAllSingleFilesInFilterPriority(filters), allSingle);
        EXPECT_EQ(finder.GetAllFilesInFilterPriority(filters), all);
        if (filters.size() == 1)
        {
            EXPECT_EQ(finder.GetFile(filters[0]), file);
            EXPECT_EQ(finder.GetFiles(filters[0]), files);
        }
    }
}

TEST_F(FilteredFileFinderTest, AsksNoMoreThanItNeeds)
{
    auto const counting = std::make_shared<CountingFilter const>();
    auto const asked = [&](auto query) {
        counting->asked = 0;
        query();
        return counting->asked;
    };
    EXPECT_EQ(asked([&] { finder.GetFile(counting); }), 1);
    EXPECT_EQ(asked([&] { finder.GetFiles(counting); }), 3);
    EXPECT_EQ(asked([&] { finder.GetFileInFilterPriority({txt, counting}); }), 0);
    EXPECT_EQ(asked([&] { finder.GetFileInFilterPriority({none, counting, nullptr}); }), 1);
    EXPECT_EQ(asked([&] { finder.GetFilesInFilterPriority({counting, nullptr}); }), 3);
    EXPECT_EQ(asked([&] { finder.GetAllFilesInFilterPriority({dat, counting}); }), 3);
}

TEST_F(FilteredFileFinderTest, SeesOnlyWhatItsRootFilterAccepts)
{
    FilteredFileFinder const data("data", finder, dat);
    EXPECT_EQ(data.GetFiles(everything), (Names{b, a}));
    EXPECT_EQ(data.GetFile(txt), "");
    EXPECT_EQ(data.GetRootFilter(), dat);
    EXPECT_EQ(data.GetName(), "data");
    EXPECT_EQ(data.GetRoot(), InRoot("").substr(0, 6));

    // A finder is a source for the next, and is not needed any more once that is made.
    std::optional<FilteredFileFinder> source(data);
    IFileCatalog const& sameCatalog = *source;
    IFilteredFileFinder const& sameFinder = *source;
    EXPECT_EQ(&sameFinder.GetEntries(), &sameCatalog.GetEntries());
    FilteredFileFinder const narrower("first", sameCatalog, NotFilter::Create(txt));
    source.reset();
    EXPECT_EQ(narrower.GetEntries().size(), 2u);
    EXPECT_EQ(narrower.GetFiles(everything), (Names{b, a}));
    EXPECT_EQ(finder.GetRootFilter(), everything);
}

TEST_F(FilteredFileFinderTest, CopiesAreWhole)
{
    FilteredFileFinder copy("nowhere", FileCatalog());
    EXPECT_EQ(copy.GetRoot(), "");
    EXPECT_EQ(copy.GetFiles(everything), Names());
    FilteredFileFinder const texts("texts", catalog, txt);
    copy = texts;
    EXPECT_EQ(copy.GetName(), "texts");
    EXPECT_EQ(copy.GetRootFilter(), txt);
    EXPECT_EQ(FilteredFileFinder(copy).GetFiles(everything), Names{c});
}

TEST_F(FilteredFileFinderTest, ReturnsPathsThatOpen)
{
    TemporaryDirectory const folder;
    std::string const file = folder.Write("Run1.X0004");
    folder.Make("dir.X0005");
    FilteredFileFinder const onDisk("runs", FileCatalog(folder.Name()));
    FilterPtr const numbered = NumberedExtensionFilter::Create('x', 4);
    EXPECT_EQ(onDisk.GetFiles(numbered), Names{file});
    EXPECT_TRUE(boost::filesystem::exists(onDisk.GetFile(numbered)));
    boost::filesystem::remove(file);
    EXPECT_EQ(onDisk.GetFiles(numbered), Names{file}); // the disk is not asked again
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
