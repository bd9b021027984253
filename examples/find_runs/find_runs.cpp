/// Picks the file from which each of some simulation runs goes on: its final state, or else its newest step,
/// or else its model. Says what it took and why.
///
///     find_runs <folder> <run>...

#include "orv/files/CombinedFilters.h"
#include "orv/files/Directory.h"
#include "orv/files/ExtensionFilters.h"
#include "orv/files/FileCatalog.h"
#include "orv/files/FilenameFilters.h"
#include "orv/files/FilteredFileFinder.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Zan::Orv::Core::Service;

namespace {

using Filters = std::vector<std::shared_ptr<PathFilter const>>;

// What a run leaves behind, the best to go on from first. All of it has the name of the run; case does not
// count.
struct Wish
{
    std::string what;
    std::shared_ptr<PathFilter const> filter;
};

std::vector<Wish> const& Wishes()
{
    static std::vector<Wish> const wishes{
        {"its final state", ExtensionFilter::Create(".final")},
        {"its newest step", NumberedExtensionFilter::Create('x', 4)}, // .x0001 to .x9999
        {"its model, from the start", ExtensionFilter::Create(".model")},
    };
    return wishes;
}

Filters FiltersOf(std::vector<Wish> const& wishes)
{
    Filters filters;
    for (Wish const& wish : wishes)
        filters.push_back(wish.filter);
    return filters;
}

// Files stand in the order of the disk, which says nothing about their numbers. The names of steps are
// equally long, so the letters at their ends compare as the numbers do.
std::string Newest(std::vector<std::string> const& files)
{
    auto const digits = [](std::string const& file) { return file.substr(file.size() - 4); };
    return *std::max_element(files.begin(), files.end(), [&](std::string const& a, std::string const& b) {
        return digits(a) < digits(b);
    });
}

bool PickFor(std::string const& run, FileCatalog const& folder)
{
    // A finder that sees nothing but this run.
    FilteredFileFinder const finder(run, folder, FilenameExactNoCaseFilter::Create(run));

    std::vector<std::string> const files = finder.GetFilesInFilterPriority(FiltersOf(Wishes()));
    if (files.empty())
    {
        std::cout << run << ": nothing to go on from\n";
        return false;
    }
    std::string const file = Newest(files);
    auto const granted = std::find_if(Wishes().begin(), Wishes().end(),
                                      [&](Wish const& wish) { return !finder.GetFile(wish.filter).empty(); });
    std::cout << run << ": " << file << ": " << granted->what;
    if (files.size() > 1)
        std::cout << " of " << files.size();
    std::cout << '\n';

    // What looks like a step and is none is worth a word: somebody may miss it.
    auto const known = OrFilter::Create(FiltersOf(Wishes()));
    auto const others =
        finder.GetFiles(NotFilter::Create(OrFilter::Create(known, ExtensionFilter::Create(".txt"))));
    for (std::string const& other : others)
        std::cout << "  left alone: " << other << '\n';
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
    {
        std::cerr << "Usage: find_runs <folder> <run>...\n";
        return 2;
    }
    try
    {
        if (!Directory(argv[1]).IsDirectory()) // which looks like an empty one to a catalog
            throw std::runtime_error(std::string("There is no folder '") + argv[1] + "'.");
        FileCatalog const folder(argv[1]); // the only look at the files
        bool good = true;
        for (int i = 2; i < argc; ++i)
            good = PickFor(argv[i], folder) && good;
        return good ? 0 : 1;
    }
    catch (std::exception const& e)
    {
        std::cerr << e.what() << '\n';
        return 1;
    }
}
