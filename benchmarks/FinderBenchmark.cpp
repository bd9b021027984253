#include "Batch.h"

#include "orv/files/ExtensionFilters.h"
#include "orv/files/FileCatalog.h"
#include "orv/files/FilenameFilters.h"
#include "orv/files/FilteredFileFinder.h"

#include <boost/filesystem.hpp>

#include <cstdio>
#include <dirent.h>
#include <fnmatch.h>
#include <fstream>
#include <iterator>
#include <memory>
#include <regex>
#include <string>
#include <vector>

// A directory of many results: reading it, and asking which of them are wanted.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

namespace fs = boost::filesystem;

constexpr std::size_t fileCount = 100000;
constexpr std::size_t wantedCount = fileCount / 50 * 3;

// Of fifty names, three are among the wanted, one by each of its three marks. The rest look much like them.
std::vector<std::string> const& Names()
{
    static std::vector<std::string> const names = [] {
        std::vector<std::string> made;
        for (std::size_t i = 0; i < fileCount; ++i)
        {
            char text[40];
            char const* const format = i % 50 == 0    ? "Case_%05zu.DAT"
                                       : i % 50 == 17 ? "Case_%05zu.X%04zu"
                                       : i % 50 == 49 ? "Summary.%05zu"
                                       : i % 2 == 0   ? "Case_%05zu.GRID"
                                                      : "Summary_%05zu.Y%04zu";
            std::snprintf(text, sizeof text, format, i, i % 10000);
            made.emplace_back(text);
        }
        return made;
    }();
    return names;
}

// A directory of empty files with those names, and a few directories.
class Folder
{
public:
    Folder() : path_(fs::temp_directory_path() / fs::unique_path("orv-%%%%-%%%%-%%%%"))
    {
        for (char const* name : {"a", "b", "c"})
            fs::create_directories(path_ / name);
        for (std::string const& name : Names())
            std::ofstream((path_ / name).string());
    }
    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;
    ~Folder()
    {
        boost::system::error_code ignored;
        fs::remove_all(path_, ignored);
    }

    std::string Path() const { return path_.string(); }

private:
    fs::path path_;
};

// `scan` gives the count of files in a directory.
template<class Scan>
void MeasureScan(benchmark::State& state, Scan scan)
{
    static Folder const folder;
    std::string const path = folder.Path();
    if (!Holds(state, scan(path) == fileCount))
        return;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(scan(path));
    state.SetItemsProcessed(state.iterations() * std::ssize(Names()));
}

void ScanOurs(benchmark::State& state)
{
    MeasureScan(state, [](std::string const& path) { return FileCatalog(path).GetEntries().size(); });
}
BENCHMARK(ScanOurs)->Name("catalog.scan/ours/100000");

void ScanBoost(benchmark::State& state)
{
    MeasureScan(state, [](std::string const& path) {
        std::vector<std::string> names;
        for (fs::directory_entry const& entry : fs::directory_iterator(path))
            if (entry.status().type() != fs::directory_file)
                names.push_back(entry.path().filename().string());
        return names.size();
    });
}
BENCHMARK(ScanBoost)->Name("catalog.scan/boost/100000");

// The floor: nothing is kept.
void ScanReaddir(benchmark::State& state)
{
    MeasureScan(state, [](std::string const& path) {
        std::size_t count = 0;
        DIR* const directory = opendir(path.c_str());
        while (dirent const* const entry = readdir(directory))
            count += entry->d_type != DT_DIR;
        closedir(directory);
        return count;
    });
}
BENCHMARK(ScanReaddir)->Name("catalog.scan/readdir/100000");

class NamesCatalog : public IFileCatalog
{
public:
    NamesCatalog() : entries_(Names().begin(), Names().end()) {}

    std::string const GetRoot() const override { return "/data"; }
    std::vector<PathCacheEntry> const& GetEntries() const override { return entries_; }

private:
    std::vector<PathCacheEntry> entries_;
};

// `query` gives the wanted files, in the order of their marks.
template<class Query>
void MeasureQuery(benchmark::State& state, Query query)
{
    if (!Holds(state, query().size() == wantedCount && query().back() == "/data/Summary.99999"))
        return;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(query());
    state.SetItemsProcessed(state.iterations() * std::ssize(Names()));
}

void QueryOurs(benchmark::State& state)
{
    FilteredFileFinder const finder("results", NamesCatalog());
    std::vector<std::shared_ptr<PathFilter const>> const filters{
        ExtensionFilter::Create(".dat"), NumberedExtensionFilter::Create('x', 4),
        FilenameExactNoCaseFilter::Create("summary")};
    MeasureQuery(state, [&] { return finder.GetAllSingleFilesInFilterPriority(filters); });
}
BENCHMARK(QueryOurs)->Name("finder.query/ours/100000");

// The same with another way to match: `matches(name, pattern)` for each of three.
template<class Patterns, class Matches>
void MeasurePatterns(benchmark::State& state, Patterns const& patterns, Matches matches)
{
    MeasureQuery(state, [&] {
        std::vector<std::string> files;
        for (auto const& pattern : patterns)
            for (std::string const& name : Names())
                if (matches(name, pattern))
                    files.push_back("/data/" + name);
        return files;
    });
}

void QueryFnmatch(benchmark::State& state)
{
    char const* const patterns[] = {"*.dat", "*.x[0-9][0-9][0-9][0-9]", "summary.*"};
    MeasurePatterns(state, patterns, [](std::string const& name, char const* pattern) {
        return fnmatch(pattern, name.c_str(), FNM_CASEFOLD) == 0;
    });
}
BENCHMARK(QueryFnmatch)->Name("finder.query/fnmatch/100000");

void QueryRegex(benchmark::State& state)
{
    auto const flags = std::regex::ECMAScript | std::regex::icase | std::regex::optimize;
    std::regex const patterns[] = {std::regex("\\.dat$", flags), std::regex("\\.x[0-9]{4}$", flags),
                                   std::regex("^summary\\.", flags)};
    MeasurePatterns(state, patterns, [](std::string const& name, std::regex const& pattern) {
        return std::regex_search(name, pattern);
    });
}
BENCHMARK(QueryRegex)->Name("finder.query/regex/100000");

} // namespace
