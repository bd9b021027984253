#include "Batch.h"

#include "orv/time/Time.h"
#include "orv/time/TimeAverager.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

// Series of samples: filling one in order of time, and the means of consecutive windows.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

struct Sample
{
    std::int64_t count; // milliseconds from the first moment of the series
    double value;
};

constexpr std::size_t SampleCount = 1'000'000;
constexpr std::int64_t Step = 60'000; // a sample each minute, and up to half a minute late

std::vector<Sample> const& Samples()
{
    static std::vector<Sample> const samples = [] {
        Random random(4);
        std::vector<Sample> made;
        for (std::size_t i = 0; i < SampleCount; ++i)
            made.push_back({static_cast<std::int64_t>(i) * Step + random.Between(std::int64_t(0), Step / 2),
                            random.Between(0.0, 100.0)});
        return made;
    }();
    return samples;
}

Time TimeOf(std::int64_t count)
{
    Time time(2000, 1, 1, 0, 0, 0, 0);
    time += static_cast<long long>(count);
    return time;
}

std::vector<Time> const& Times()
{
    static std::vector<Time> const times = [] {
        std::vector<Time> made;
        for (Sample const& sample : Samples())
            made.push_back(TimeOf(sample.count));
        return made;
    }();
    return times;
}

template<class Series, class Add>
void MeasureAdd(benchmark::State& state, Add add)
{
    auto const size = static_cast<std::size_t>(state.range(0));
    for ([[maybe_unused]] auto _ : state)
    {
        auto series = std::make_unique<Series>();
        for (std::size_t i = 0; i < size; ++i)
            add(*series, i);
        benchmark::DoNotOptimize(series.get());
        benchmark::ClobberMemory();
        state.PauseTiming(); // what is measured is the filling
        series.reset();
        state.ResumeTiming();
    }
}

void AddOurs(benchmark::State& state)
{
    auto const& samples = Samples();
    auto const& times = Times();
    MeasureAdd<TimeAverager>(state, [&](TimeAverager& series, std::size_t i) {
        series.addSamplePoint(times[i], samples[i].value);
    });
}
BENCHMARK(AddOurs)
    ->Name("average.add/ours")
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->Unit(benchmark::kMillisecond);

void AddMap(benchmark::State& state)
{
    using Series = std::map<std::int64_t, double>;
    auto const& samples = Samples();
    MeasureAdd<Series>(state, [&](Series& series, std::size_t i) {
        series.emplace_hint(series.end(), samples[i].count, samples[i].value);
    });
}
BENCHMARK(AddMap)->Name("average.add/map")->Arg(1'000'000)->Unit(benchmark::kMillisecond);

// Windows begin and end between samples.
constexpr std::size_t WindowCount = 10'000;
constexpr std::int64_t WindowStep = 100 * Step;

std::int64_t WindowBegin(std::size_t window)
{
    return static_cast<std::int64_t>(window) * WindowStep + Step * 3 / 4;
}

// Each sample holds until the next one, and the last one not at all.
double MeanByHand(std::vector<Sample> const& samples, std::int64_t from, std::int64_t to)
{
    auto next =
        std::upper_bound(samples.begin(), samples.end(), from,
                         [](std::int64_t count, Sample const& sample) { return count < sample.count; });
    double sum = 0.0;
    std::int64_t current = from;
    for (; next != samples.end() && current < to; ++next)
    {
        std::int64_t const end = std::min(next->count, to);
        sum += static_cast<double>(end - current) * std::prev(next)->value;
        current = end;
    }
    return sum / static_cast<double>(to - from);
}

double MeanOurs(TimeAverager const& series, std::vector<Time> const& bounds, std::size_t window)
{
    return series.getAverageValue(bounds[window], bounds[window + 1],
                                  TimeAverager::TimeAverageStyle::Forward);
}

void WindowsOurs(benchmark::State& state)
{
    TimeAverager series;
    for (std::size_t i = 0; i < SampleCount; ++i)
        series.addSamplePoint(Times()[i], Samples()[i].value);
    std::vector<Time> bounds;
    for (std::size_t window = 0; window <= WindowCount; ++window)
        bounds.push_back(TimeOf(WindowBegin(window)));

    for (std::size_t window = 0; window < WindowCount; window += 99)
    {
        double const expected = MeanByHand(Samples(), WindowBegin(window), WindowBegin(window + 1));
        if (!Holds(state, std::abs(MeanOurs(series, bounds, window) - expected) < 1e-9))
            return;
    }
    for ([[maybe_unused]] auto _ : state)
    {
        for (std::size_t window = 0; window < WindowCount; ++window)
        {
            double mean = MeanOurs(series, bounds, window);
            benchmark::DoNotOptimize(mean);
        }
    }
}
BENCHMARK(WindowsOurs)->Name("average.windows/ours")->Arg(WindowCount)->Unit(benchmark::kMillisecond);

void WindowsVector(benchmark::State& state)
{
    auto const& samples = Samples();
    for ([[maybe_unused]] auto _ : state)
    {
        for (std::size_t window = 0; window < WindowCount; ++window)
        {
            double mean = MeanByHand(samples, WindowBegin(window), WindowBegin(window + 1));
            benchmark::DoNotOptimize(mean);
        }
    }
}
BENCHMARK(WindowsVector)->Name("average.windows/vector")->Arg(WindowCount)->Unit(benchmark::kMillisecond);

} // namespace
