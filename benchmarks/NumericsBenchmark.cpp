#include "Batch.h"

#include "orv/foundation/Numerics.h"

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

// A double as text with 20 digits behind the point, and back.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

std::vector<double> const& Numbers()
{
    static std::vector<double> const numbers = [] {
        Random random(1);
        std::vector<double> made;
        for (std::size_t i = 0; i < BatchSize; ++i)
            made.push_back(random.Between(-1.0, 1.0) * std::pow(10.0, random.Between(-6.0, 6.0)));
        return made;
    }();
    return numbers;
}

std::string PrintedByHost(double number)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.20e", number);
    return text;
}

std::vector<std::string> const& Texts()
{
    static std::vector<std::string> const texts = [] {
        std::vector<std::string> made;
        for (double const number : Numbers())
            made.push_back(PrintedByHost(number));
        return made;
    }();
    return texts;
}

void OutOurs(benchmark::State& state)
{
    for (std::size_t i = 0; i < BatchSize; ++i)
        if (!Holds(state, IEEEToString(Numbers()[i]) == Texts()[i]))
            return;
    auto const& numbers = Numbers();
    RunBatch(state, [&](std::size_t i) {
        std::string text = IEEEToString(numbers[i]);
        benchmark::DoNotOptimize(text.data());
    });
}
BENCHMARK(OutOurs)->Name("number.out/ours");

void OutPrintf(benchmark::State& state)
{
    auto const& numbers = Numbers();
    char text[64];
    RunBatch(state, [&](std::size_t i) {
        std::snprintf(text, sizeof text, "%.20e", numbers[i]);
        benchmark::DoNotOptimize(&text[0]);
        benchmark::ClobberMemory();
    });
}
BENCHMARK(OutPrintf)->Name("number.out/snprintf");

void InOurs(benchmark::State& state)
{
    for (std::size_t i = 0; i < BatchSize; ++i)
        if (!Holds(state, IEEEFromString(Texts()[i]) == Numbers()[i]))
            return;
    auto const& texts = Texts();
    RunBatch(state, [&](std::size_t i) {
        double number = IEEEFromString(texts[i]);
        benchmark::DoNotOptimize(number);
    });
}
BENCHMARK(InOurs)->Name("number.in/ours");

void InScanf(benchmark::State& state)
{
    auto const& texts = Texts();
    double number = 0.0;
    if (!Holds(state, std::sscanf(texts[0].c_str(), "%le", &number) == 1 && number == Numbers()[0]))
        return;
    RunBatch(state, [&](std::size_t i) {
        int found = std::sscanf(texts[i].c_str(), "%le", &number);
        benchmark::DoNotOptimize(found);
        benchmark::DoNotOptimize(number);
    });
}
BENCHMARK(InScanf)->Name("number.in/sscanf");

} // namespace
