#include "Batch.h"

#include "orv/instrumentation/PerformanceTestTimer.h"
#include "orv/instrumentation/SimplePerformanceTestRecorder.h"
#include "orv/instrumentation/internal/WallClock.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

// A timed section, one of eight below the same parent; a marked place; and a timer without a recorder. The peers are
// what a programmer would write by hand: two readings of the same clock and a slot, and an object that tests a pointer.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

constexpr std::size_t Sections = 8;

// Whether the report has a line that ends so.
bool Reports(SimplePerformanceTestRecorder& recorder, std::string const& lineEnd)
{
    auto const path = std::filesystem::temp_directory_path() / std::to_string(std::random_device()());
    recorder.writeResultsToFile(path.string());
    std::ifstream report(path);
    bool found = false;
    for (std::string line; std::getline(report, line);)
        found = found || line.ends_with(lineEnd);
    report.close();
    std::filesystem::remove(path);
    return found;
}

// Measures `time` inside of a test, after two rounds through the sections that must show in the report.
template<class Time>
void MeasureTimed(benchmark::State& state, SimplePerformanceTestRecorder& recorder, std::size_t sections,
                  Time time)
{
    PerformanceTestControl const test("benchmark");
    for (std::size_t i = 0; i < 2 * sections; ++i)
        time(i);
    if (Holds(state, Reports(recorder, ", hits 2")))
        RunBatch(state, time);
}

void TimedOurs(benchmark::State& state)
{
    SimplePerformanceTestRecorder recorder;
    PerformanceTestControl::setRecorder(&recorder);
    std::array<void const*, Sections> ids = {};
    for (std::size_t i = 0; i < Sections; ++i)
        ids[i] = PerformanceTestControl::getSectionID(std::to_string(i), __FILE__, __LINE__);
    MeasureTimed(state, recorder, Sections,
                 [&ids](std::size_t i) { PerformanceTestTimer const timer(ids[i % Sections]); });
    PerformanceTestControl::setRecorder(nullptr);
}
BENCHMARK(TimedOurs)->Name("section.timed/ours");

void MarkedOurs(benchmark::State& state)
{
    SimplePerformanceTestRecorder recorder;
    PerformanceTestControl::setRecorder(&recorder);
    MeasureTimed(state, recorder, 1, [](std::size_t) { ORV_TIME_SECTION("marked"); });
    PerformanceTestControl::setRecorder(nullptr);
}
BENCHMARK(MarkedOurs)->Name("section.marked/ours");

void TimedSlot(benchmark::State& state)
{
    struct Slot
    {
        long long time = 0;
        long long hits = 0;
    };
    std::array<Slot, Sections> slots;
    RunBatch(state, [&slots](std::size_t i) {
        Slot& slot = slots[i % Sections];
        long long const start = Internal::wallTimeMillis();
        ++slot.hits;
        benchmark::ClobberMemory();
        slot.time += Internal::wallTimeMillis() - start;
    });
    benchmark::DoNotOptimize(slots);
}
BENCHMARK(TimedSlot)->Name("section.timed/slot");
BENCHMARK(TimedSlot)->Name("section.marked/slot");

void OffOurs(benchmark::State& state)
{
    void const* const id = PerformanceTestControl::getSectionID("off", __FILE__, __LINE__);
    if (!Holds(state, id == nullptr))
        return;
    RunBatch(state, [id](std::size_t) {
        benchmark::ClobberMemory();
        PerformanceTestTimer const timer(id);
        benchmark::ClobberMemory();
    });
}
BENCHMARK(OffOurs)->Name("section.off/ours");

} // namespace

// Not in the unnamed namespace, where the compiler would see that there is none.
class Listener
{
public:
    virtual ~Listener() = default;
    virtual void Begin() = 0;
    virtual void End() = 0;
};

Listener* listener = nullptr;

namespace {

class Scope
{
public:
    Scope()
    {
        if (listener != nullptr)
            listener->Begin();
    }
    Scope(Scope const&) = delete;
    Scope& operator=(Scope const&) = delete;
    ~Scope()
    {
        if (listener != nullptr)
            listener->End();
    }
};

void OffPointer(benchmark::State& state)
{
    RunBatch(state, [](std::size_t) {
        benchmark::ClobberMemory();
        Scope const scope;
        benchmark::ClobberMemory();
    });
}
BENCHMARK(OffPointer)->Name("section.off/pointer");

} // namespace
