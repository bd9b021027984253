#include "Batch.h"

#include "orv/files/Directory.h"
#include "orv/files/FileName.h"

#include <filesystem>
#include <string>
#include <vector>

// Names as a data set gives them: a few directories deep, mostly normal, of ordinary length.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

std::vector<std::string> const& Names()
{
    static std::vector<std::string> const names = [] {
        Random random(1);
        auto const word = [&random] {
            std::string made;
            for (auto length = random.Between(std::int64_t(3), 12); length > 0; --length)
                made += static_cast<char>(random.Between(std::int64_t('a'), 'z'));
            return made;
        };
        std::vector<std::string> made;
        for (std::size_t i = 0; i < BatchSize; ++i)
        {
            std::string name = "/data";
            for (auto depth = random.Between(std::int64_t(1), 5); depth > 0; --depth)
                name += '/' + word();
            if (i % 8 == 0)
                name += "/../" + word();
            made.push_back(name + '/' + word() + ".dat");
        }
        return made;
    }();
    return names;
}

template<class Split>
void MeasureSplit(benchmark::State& state, Split split)
{
    auto const& names = Names();
    if (!Holds(state, split("/data/cases/../north.in.csv") == "/data/north.in.csv"))
        return;
    RunBatch(state, [&](std::size_t i) { benchmark::DoNotOptimize(split(names[i])); });
}

void SplitOurs(benchmark::State& state)
{
    FileName file;
    MeasureSplit(state, [&file](std::string const& name) {
        file.Set(name, true);
        return file.GetFullName();
    });
}
BENCHMARK(SplitOurs)->Name("filename.split/ours");

void SplitStandard(benchmark::State& state)
{
    MeasureSplit(state, [](std::string const& name) {
        std::filesystem::path const path(name);
        std::filesystem::path const directory = path.parent_path().lexically_normal();
        std::string const root = path.stem().string();
        std::string const extension = path.extension().string();
        return (directory / (root + extension)).string();
    });
}
BENCHMARK(SplitStandard)->Name("filename.split/filesystem");

template<class Normal>
void MeasureNormal(benchmark::State& state, Normal normal)
{
    auto const& names = Names();
    if (!Holds(state, normal("/data/cases/.././north/in") == "/data/north/in"))
        return;
    RunBatch(state, [&](std::size_t i) { benchmark::DoNotOptimize(normal(names[i])); });
}

void NormalOurs(benchmark::State& state)
{
    Directory directory;
    MeasureNormal(state, [&directory](std::string const& name) {
        directory.Set(name, true);
        return directory.Name();
    });
}
BENCHMARK(NormalOurs)->Name("directory.set/ours");

void NormalStandard(benchmark::State& state)
{
    MeasureNormal(state, [](std::string const& name) {
        return std::filesystem::path(name).lexically_normal().string();
    });
}
BENCHMARK(NormalStandard)->Name("directory.set/filesystem");

} // namespace
