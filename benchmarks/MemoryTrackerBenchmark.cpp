#include "orv/instrumentation/MemoryTracker.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string_view>
#include <vector>

// What tracking costs a program of small allocations. A program of its own: an allocation profiler runs it
// whole, and tracking off is compared with tracking that was never on.
//
//   orv_memory_benchmark never|after|tracked|line
//
// Prints the processor time in nanoseconds of one allocation with its release, or of one logged line.

using namespace Zan::Orv::Core::Service;

namespace {

constexpr std::size_t live = 4096; // blocks at a time

// Replaces blocks in an irregular order, of 16 to 512 bytes.
void Work(std::size_t count)
{
    static std::vector<void*> blocks(live);
    std::size_t state = 12345;
    for (std::size_t i = 0; i < count; ++i)
    {
        state = state * 6364136223846793005u + 1442695040888963407u;
        void*& block = blocks[(state >> 40) % live];
        std::free(block);
        block = std::malloc(16 + (state >> 52) % 497);
        if (block == nullptr)
            std::abort();
        std::memset(block, 1, 16);
    }
}

// Works from as deep in calls as programs allocate: a profiler walks the stack.
void WorkDeeply(std::size_t count, int depth);
void (*volatile const deeper)(std::size_t, int) = WorkDeeply; // a call that is not inlined

void WorkDeeply(std::size_t count, int depth)
{
    if (depth == 0)
        Work(count);
    else
        deeper(count, depth - 1);
    [[maybe_unused]] static int volatile depthLeft = 0; // nor a jump: something is left to do behind it
    depthLeft = depth;
}

// The best of several runs: the machine may be shared.
template<class Call>
double Measure(std::size_t count, Call call)
{
    call();
    double best = 1e9;
    for (int run = 0; run < 7; ++run)
    {
        std::clock_t const begin = std::clock();
        call();
        double const seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
        best = std::min(best, seconds * 1e9 / static_cast<double>(count));
    }
    return best;
}

double MeasureWork()
{
    constexpr std::size_t pairs = 1000000;
    return Measure(pairs, [] { WorkDeeply(pairs, 12); });
}

double MeasureLines()
{
    constexpr int lines = 5000;
    return Measure(lines, [] {
        for (int i = 0; i < lines; ++i)
            MemoryTracker::instance().log("line %d\n", i);
    });
}

} // namespace

int main(int argumentCount, char** arguments)
{
    std::string_view const mode = argumentCount > 1 ? arguments[1] : "never";
    double time = 0;
    {
        MemoryTrackerGuard const on(mode != "never");
        time = mode == "line" ? MeasureLines() : mode == "tracked" ? MeasureWork() : 0;
    }
    if (mode == "never" || mode == "after")
        time = MeasureWork();
    if (mode == "tracked" && MemoryTracker::instance().total() == 0)
        return 1; // the live blocks were not counted
    std::printf("%.2f\n", time);
    return 0;
}
