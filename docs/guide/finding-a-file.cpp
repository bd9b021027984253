#include "orv/files/Directory.h"
#include "orv/files/ExtensionFilters.h"
#include "orv/files/FileCatalog.h"
#include "orv/files/FilenameFilters.h"
#include "orv/files/FilteredFileFinder.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

using namespace Zan::Orv::Core::Service;

int main()
{
    Directory runs("guide-runs");
    runs.Delete(); // from an earlier time
    runs.Create();
    for (char const* name : {"Tank.model", "Tank.X0001", "tank.x0002", "Tank.log", "Valve.FINAL"})
        std::ofstream(runs.Name() + '/' + name) << name;

    FileCatalog const folder(runs.Name()); // the only look at the disk

    // The final state, or else the steps, or else the model.
    std::vector<std::shared_ptr<PathFilter const>> const wishes = {
        ExtensionFilter::Create(".final"),
        NumberedExtensionFilter::Create('x', 4),
        ExtensionFilter::Create(".model"),
    };
    for (char const* run : {"tank", "valve", "pump"})
    {
        FilteredFileFinder const finder(run, folder, FilenameExactNoCaseFilter::Create(run));
        std::vector<std::string> files = finder.GetFilesInFilterPriority(wishes);
        // They come in the order of the disk, in full, and in the case that they have there.
        std::sort(files.begin(), files.end());
        std::cout << run << ':';
        for (std::string const& file : files)
            std::cout << ' ' << PathCacheEntry(file).GetFullFilename();
        std::cout << (files.empty() ? " nothing\n" : "\n");
    }
    runs.Delete();
}
