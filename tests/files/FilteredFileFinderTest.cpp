#include "orv/files/FilteredFileFinder.h"
#include "orv/files/CombinedFilters.h"
#include "orv/files/Directory.h"
#include "orv/files/ExtensionFilters.h"
#include "orv/files/FilenameFilters.h"
#include "tests/files/DiskTest.h"

#include <optional>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using namespace std::string_literals;

using FilterPtr = std::shared_ptr<PathFilter const>;
using Filters = std::vector<FilterPtr>;
using Names = std::vector<std::string>;

class GivenCatalog : public FileCatalogBase
{
public:
    GivenCatalog() : FileCatalogBase("data/./r/") { entries_ = {"B.dat"s, "a.DAT"s, "c.txt"s}; }
};

class FilteredFileFinderTest : public testing::Test
{
protected:
    FilterPtr const dat = ExtensionFilter::Create(".dat");
    FilterPtr const txt = ExtensionFilter::Create(".txt");
    FilterPtr const none = ExtensionFilter::Create(".none");
    FilterPtr const everything = BasicFilter<1>::Instance();
    FilteredFileFinder const finder{"results", GivenCatalog()};

    std::string const root = fs::path("data/r/").make_preferred().string();
    std::string const a = root + "a.DAT", b = root + "B.dat", c = root + "c.txt";
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

TEST_F(FilteredFileFinderTest, AsksNoFilterBehindTheAnswer)
{
    EXPECT_EQ(finder.GetFileInFilterPriority({none, dat, nullptr}), b);
    EXPECT_EQ(finder.GetFilesInFilterPriority({dat, nullptr}), (Names{b, a}));
}

TEST_F(FilteredFileFinderTest, SeesOnlyWhatItsRootFilterAccepts)
{
    // A finder is a source for the next, and is not needed any more once that is made.
    FilterPtr const notA = NotFilter::Create(FilenameExactNoCaseFilter::Create("a"));
    std::optional<FilteredFileFinder> source(std::in_place, "source", finder, notA);
    FilteredFileFinder data("other", finder);
    data = FilteredFileFinder("data", *source, dat);
    source.reset();
    EXPECT_EQ(data.GetFiles(everything), Names{b});
    EXPECT_EQ(data.GetRootFilter(), dat);
    EXPECT_EQ(data.GetRoot() + Directory::NativeSeparator(), root);
    EXPECT_EQ(finder.GetRootFilter(), everything);

    IFilteredFileFinder const& asFinder = data;
    IFileCatalog const& asCatalog = data;
    EXPECT_EQ(&asFinder.GetEntries(), &asCatalog.GetEntries());
    EXPECT_EQ(FilteredFileFinder(data).GetName(), "data");
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
