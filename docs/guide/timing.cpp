#include "orv/instrumentation/PerformanceTestTimer.h"
#include "orv/instrumentation/SimplePerformanceTestRecorder.h"

#include <cstddef>
#include <fstream>
#include <iostream>
#include <string>

using namespace Zan::Orv::Core::Service;

void Precondition()
{
    ORV_TIME_SECTION("precondition");
}

void Solve()
{
    ORV_TIME_SECTION("solve");
    for (int sweep = 0; sweep < 8; ++sweep)
        Precondition();
}

void Step()
{
    {
        ORV_TIME_SECTION("assemble");
    }
    Solve();
}

int main()
{
    Step(); // no recorder: nothing is recorded, and next to nothing is spent

    SimplePerformanceTestRecorder recorder;
    PerformanceTestControl::setRecorder(&recorder);
    {
        PerformanceTestControl const test("water flood");
        for (int step = 0; step < 365; ++step)
            Step();
    }
    PerformanceTestControl::setRecorder(nullptr);
    recorder.writeResultsToFile("guide-performance.txt");

    // Times differ from run to run, so that this shows the rest: sections and how often they ran.
    std::ifstream report("guide-performance.txt");
    for (std::string line; std::getline(report, line);)
    {
        std::size_t const time = line.find(", time");
        if (time != std::string::npos)
            line.erase(time, line.find(", hits") - time);
        std::cout << line << '\n';
    }
}
