#pragma once

#include "Allocations.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <random>

namespace OrvBenchmark {

/// How many different inputs an operation cycles through: too many for the branch predictor to learn by
/// heart, few enough for the cache.
inline constexpr std::size_t BatchSize = 1024;

/// The same numbers in every run.
class Random
{
public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}

    std::int64_t Between(std::int64_t low, std::int64_t high)
    {
        return std::uniform_int_distribution<std::int64_t>(low, high)(engine_);
    }
    double Between(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }
    std::mt19937_64& Engine() { return engine_; }

private:
    std::mt19937_64 engine_;
};

/// Measures `operation(i)` for each i of a batch; the time that counts is that of one call. "allocs" tells
/// how many times one call asks for memory.
template<class Operation>
void RunBatch(benchmark::State& state, Operation operation)
{
    long long const before = AllocationCount();
    for ([[maybe_unused]] auto _ : state)
    {
        for (std::size_t i = 0; i < BatchSize; ++i)
            operation(i);
    }
    long long const allocations = AllocationCount() - before;

    auto const calls = static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(BatchSize);
    state.SetItemsProcessed(calls);
    state.counters["allocs"] = static_cast<double>(allocations) / static_cast<double>(calls);
}

/// What is fast and wrong is not measured. To be asked before the measured loop.
inline bool Holds(benchmark::State& state, bool condition)
{
    if (!condition)
        state.SkipWithError("wrong result");
    return condition;
}

} // namespace OrvBenchmark
