#include "orv/files/Directory.h"
#include "orv/instrumentation/MemoryTracker.h"

#include <fstream>
#include <iostream>
#include <string>
#include <vector>

using namespace Zan::Orv::Core::Service;

int main()
{
    Directory const here(".");
    here.DeleteContent("^memory_tracker_", false); // of earlier runs

    MemoryTracker& tracker = MemoryTracker::instance();
    tracker.reset_threshold(1024 * 1024); // only blocks above 1 MiB are worth a line
    {
        MemoryTrackerGuard const tracking(true);
        unsigned long const before = tracker.total();
        std::vector<double> field(1000000);
        std::cout << "8 MB at least: " << std::boolalpha << (tracker.total() - before >= 8000000) << '\n';
        tracker.log("the field stands at %p\n", static_cast<void*>(field.data()));
        field = std::vector<double>();
        std::cout << "and given back: " << (tracker.total() - before < 1000000) << '\n';
    }

    // The file tells which large blocks came and went.
    for (std::string const& name : here.Find("^memory_tracker_.*csv$", false, true, false, true, false))
    {
        std::ifstream file(name);
        for (std::string line; std::getline(file, line);)
            for (char const* word : {"ON", "allocate", "the field stands", "free", "OFF"})
                if (line.find(word) != std::string::npos)
                    std::cout << "- " << word << '\n';
    }
}
