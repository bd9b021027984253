// Where do time and memory go? A plate cools down, is stored and is read back; at the end the program tells which part
// took how long, and which large blocks of memory came and went in it, those of the XML parser included.
//
//   where_it_goes FOLDER      works in FOLDER, which is made if need be

#include "orv/files/Directory.h"
#include "orv/instrumentation/MemoryTracker.h"
#include "orv/instrumentation/PerformanceTestTimer.h"
#include "orv/instrumentation/SimplePerformanceTestRecorder.h"
#include "orv/serialization/Serializer.h"
#include "orv/serialization/XMLInputSerializer.h"
#include "orv/serialization/XMLOutputSerializer.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>

using namespace Zan::Orv::Core::Service;

namespace {

constexpr std::size_t width = 200;

// A square plate: hot in the middle, cold at its edges.
struct Plate : ISerializable
{
    std::vector<double> cells;

    void Serialize(Serializer& serializer) override { serializer.Serialize(cells, "cells"); }
};

Plate Heat()
{
    ORV_TIME_SECTION("heat");
    Plate plate;
    plate.cells.assign(width * width, 0.0);
    plate.cells[width * width / 2 + width / 2] = 1e6;
    return plate;
}

void Cool(Plate& plate, int steps)
{
    ORV_TIME_SECTION("cool");
    for (int step = 0; step < steps; ++step)
    {
        ORV_TIME_SECTION("step");
        std::vector<double> next = plate.cells; // a large block in each step: the file will tell
        for (std::size_t i = width + 1; i < width * (width - 1) - 1; ++i)
            next[i] += 0.2 * (plate.cells[i - 1] + plate.cells[i + 1] + plate.cells[i - width] +
                              plate.cells[i + width] - 4 * plate.cells[i]);
        plate.cells = std::move(next);
    }
}

void Store(Plate& plate, std::string const& file)
{
    ORV_TIME_SECTION("store");
    std::ofstream stream(file, std::ios::binary);
    XMLOutputSerializer xml(stream, "plate");
    Serializer(xml).Serialize(plate, "state");
}

Plate Restore(std::string const& file)
{
    ORV_TIME_SECTION("restore");
    Plate plate;
    std::ifstream stream(file, std::ios::binary);
    XMLInputSerializer xml(stream, "plate"); // another library parses
    Serializer(xml).Serialize(plate, "state");
    return plate;
}

// Runs a part of the program under its name, in the file of the memory tracker as well.
template<class Part>
auto InPart(char const* name, Part part)
{
    MemoryTracker::instance().log("part %s\n", name);
    return part();
}

bool Simulate()
{
    MemoryTrackerGuard const tracking(true);
    PerformanceTestControl const test("cooling plate");
    Plate plate = InPart("heat", Heat);
    InPart("cool", [&] { Cool(plate, 20); });
    InPart("store", [&] { Store(plate, "plate.xml"); });
    Plate const copy = InPart("restore", [] { return Restore("plate.xml"); });
    return copy.cells == plate.cells;
}

struct Block
{
    std::string part;
    unsigned long size;
    unsigned long totalAfter;
};

// Takes the allocations out of lines such as "2, 45112, allocate 20000 bytes at 0x55d0c8a2f2c0, was, ...".
std::vector<Block> ReadBlocks(std::string const& file)
{
    std::vector<Block> blocks;
    std::string part = "start";
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);)
    {
        std::istringstream words(line);
        std::string number, verb;
        unsigned long total = 0;
        char comma = 0;
        words >> number >> total >> comma >> verb;
        if (verb == "part")
            words >> part;
        else if (unsigned long size = 0; verb == "allocate" && words >> size)
            blocks.push_back({part, size, total});
    }
    return blocks;
}

void PrintBlocks(std::vector<Block> blocks)
{
    constexpr std::size_t most = 10;
    std::stable_sort(blocks.begin(), blocks.end(),
                     [](Block const& a, Block const& b) { return a.size > b.size; });
    std::cout << "LARGE BLOCKS " << blocks.size() << ", the largest first\n"
              << "    part         KiB   in use\n";
    for (std::size_t i = 0; i < std::min(blocks.size(), most); ++i)
        std::cout << "    " << std::left << std::setw(8) << blocks[i].part << std::right << std::setw(8)
                  << blocks[i].size / 1024 << std::setw(9) << blocks[i].totalAfter / 1024 << "  "
                  << std::string(blocks[i].size * 40 / blocks.front().size, '#') << '\n';
    auto const inParser = [](Block const& block) { return block.part == "restore"; };
    std::cout << "    " << std::count_if(blocks.begin(), blocks.end(), inParser)
              << " of them while XML was read\n";
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::cerr << "usage: where_it_goes FOLDER\n";
        return 2;
    }
    Directory const folder(argv[1]);
    folder.Create();
    folder.DeleteContent("^memory_tracker_", false); // those of earlier runs
    std::filesystem::current_path(argv[1]);

    SimplePerformanceTestRecorder recorder;
    PerformanceTestControl::setRecorder(&recorder);
    bool const isSame = Simulate();
    PerformanceTestControl::setRecorder(nullptr);

    recorder.writeResultsToFile("performance.txt");
    std::cout << std::ifstream("performance.txt").rdbuf();
    for (std::string const& file :
         Directory(".").Find("^memory_tracker_.*csv$", false, false, false, true, false))
        PrintBlocks(ReadBlocks(file));
    std::cout << (isSame ? "The plate that was read is the one that was stored.\n"
                         : "The plate has changed.\n");
    return isSame ? 0 : 1;
}
