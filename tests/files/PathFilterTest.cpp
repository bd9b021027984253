#include "orv/files/PathFilter.h"
#include "orv/files/CombinedFilters.h"
#include "orv/files/ExtensionFilters.h"
#include "orv/files/FilenameFilters.h"
#include "orv/files/PathCacheEntry.h"

#include <boost/filesystem/path.hpp>
#include <gtest/gtest.h>

#include <limits>
#include <tuple>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using FilterPtr = std::shared_ptr<PathFilter const>;

// Extension, name without it, whole name.
using Pieces = std::tuple<std::string, std::string, std::string>;

Pieces PiecesOf(std::string const& path)
{
    PathCacheEntry const entry(path);
    return {entry.GetLowercaseExtension(), entry.GetLowercaseFilenameOnly(), entry.GetFullFilename()};
}

bool Accepts(FilterPtr const& filter, std::string const& path)
{
    return (*filter)(PathCacheEntry(path));
}

TEST(PathCacheEntry, TakesANameApart)
{
    struct
    {
        std::string path;
        Pieces pieces;
    } const cases[] = {
        {"REPORT.Tar.GZ", {".gz", "report.tar", "REPORT.Tar.GZ"}},
        {"name.", {".", "name", "name."}},
        {"..", {"", "..", ".."}},
        {"//Run1.X0004", {".x0004", "//run1", "//Run1.X0004"}}, // the name of a root, not of a file
        {"", {"", "", ""}},
    };
    for (auto const& [path, pieces] : cases)
        EXPECT_EQ(PiecesOf(path), pieces) << path;

    bool const backslashSeparates = boost::filesystem::path::preferred_separator == '\\';
    EXPECT_EQ(std::get<2>(PiecesOf("C:\\Data\\Run1.X0004")),
              backslashSeparates ? "Run1.X0004" : "C:\\Data\\Run1.X0004");
}

TEST(PathFilter, AcceptsNames)
{
    auto const dat = ExtensionFilter::Create(".DAT");
    auto const letter = NumberedExtensionFilter::Create('X', 4);
    auto const prefix = NumberedStringExtensionFilter::Create("Ab", 2);
    auto const name = FilenameExactNoCaseFilter::Create("RUN1");
    // The lengths of such extensions wrap around.
    std::size_t const most = std::numeric_limits<std::size_t>::max();
    auto const wrapped = OrFilter::Create(NumberedExtensionFilter::Create('x', most - 1),
                                          NumberedExtensionFilter::Create('\0', most),
                                          NumberedStringExtensionFilter::Create("ab", most - 2));
    struct
    {
        char const* name;
        FilterPtr filter;
        std::vector<std::string> accepted, refused;
    } const cases[] = {
        {"extension", dat, {"a.dat", "A.b.Dat"}, {"a.data", "a.da", "dat", ""}},
        {"no extension", ExtensionFilter::Create(""), {"a", "..", ""}, {"a.", ".a"}},
        {"three", ExtensionFilter::Create(".a", ".b", ".C"), {"x.a", "x.b", "x.c"}, {"x.d"}},
        {"letter", letter, {"a.x0001", "a.X1234"}, {"a.x123", "a.x12345", "a.y0001", "a.x12a4", "a"}},
        {"high letter", NumberedExtensionFilter::Create('\xC4', 0), {"a.\xC4"}, {"a.\xFF", "a.x"}},
        {"prefix", prefix, {"a.AB01"}, {"a.ab1", "a.ab001", "a.ac01", "a.ab0x", "a.ab\xB2\xB2"}},
        {"the dot", NumberedStringExtensionFilter::Create("", 0), {"a."}, {"a", "a.1"}},
        {"wrapped", wrapped, {}, {"a", "a.", "a.x", "a.ab"}},
        {"name", name, {"run1.x0001", "Run1.dat", "run1"}, {"run1.a.b", "run", "run10", ".run1"}},
        {"whole name",
         FilenameExtensionNoCaseFilter::Create("x/Run1.DAT"),
         {"run1.dat", "z/RUN1.Dat"},
         {"run1.x0001", "run1", "run1.dat.dat"}},
        {"not", NotFilter::Create(name), {"run2", ""}, {"run1", "RUN1.x"}},
        {"and", AndFilter::Create(name, letter), {"run1.x0001"}, {"run1.dat", "run2.x0001"}},
        {"or", OrFilter::Create(name, letter), {"run1.dat", "run2.x0001"}, {"run2.dat"}},
        {"and of 0", AndFilter::Create(std::vector<FilterPtr>()), {"a", ""}, {}},
        {"or of 0", OrFilter::Create(std::vector<FilterPtr>()), {}, {"a", ""}},
    };
    for (auto const& [label, filter, accepted, refused] : cases)
    {
        for (std::string const& path : accepted)
            EXPECT_TRUE(Accepts(filter, path)) << label << " for '" << path << '\'';
        for (std::string const& path : refused)
            EXPECT_FALSE(Accepts(filter, path)) << label << " for '" << path << '\'';
    }
}

// A filter that is never asked may be anything, also none at all.
TEST(PathFilter, CombinationsStopAtTheAnswer)
{
    FilterPtr const no = BasicFilter<0>::Instance();
    FilterPtr const yes = BasicFilter<1>::Instance();
    EXPECT_FALSE(Accepts(AndFilter::Create({yes, no, nullptr}), "a"));
    EXPECT_TRUE(Accepts(OrFilter::Create({no, yes, nullptr}), "a"));
}

template<class Filter>
Filter As(FilterPtr const& filter)
{
    return dynamic_cast<Filter const&>(*filter);
}

TEST(PathFilter, TellsWhatItWasMadeOf)
{
    EXPECT_EQ(As<ExtensionFilter>(ExtensionFilter::Create(".B", ".a")).GetExtensions(),
              (std::vector<std::string>{".b", ".a"}));
    auto const letter = As<NumberedExtensionFilter>(NumberedExtensionFilter::Create('X', 7));
    EXPECT_EQ(letter.GetAlphaCharacter(), 'x');
    EXPECT_EQ(letter.GetDigitsCount(), 7u);
    auto const prefix = As<NumberedStringExtensionFilter>(NumberedStringExtensionFilter::Create("Ab", 2));
    EXPECT_EQ(prefix.GetPrefix(), "ab");
    EXPECT_EQ(prefix.GetDigitsCount(), 2u);
    EXPECT_EQ(As<FilenameExactNoCaseFilter>(FilenameExactNoCaseFilter::Create("Run1")).GetFilename(), "run1");
    auto const whole = As<FilenameExtensionNoCaseFilter>(FilenameExtensionNoCaseFilter::Create("x/R.DAT"));
    EXPECT_EQ(whole.GetFilepath(), "x/R.DAT");
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
