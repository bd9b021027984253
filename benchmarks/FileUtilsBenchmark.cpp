#include "Batch.h"

#include "orv/files/FileSystemUtil.h"
#include "orv/files/FileUtils.h"

#include <boost/filesystem.hpp>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

// Results held against expected ones, and trees of small files copied. The peers that are programs pay for
// their start.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

// A folder for one measurement.
class Workplace
{
public:
    Workplace()
        : path_(std::filesystem::temp_directory_path() /
                boost::filesystem::unique_path("orv-bench-%%%%-%%%%").string())
    {
        std::filesystem::create_directories(path_);
    }
    Workplace(Workplace const&) = delete;
    Workplace& operator=(Workplace const&) = delete;
    ~Workplace() { std::filesystem::remove_all(path_); }

    std::string operator/(std::string const& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

// What other programs and the disk do is no time of this process, so its processor time tells nothing.
template<class Action>
void RunByTheClock(benchmark::State& state, Action action)
{
    auto const start = std::chrono::steady_clock::now();
    for ([[maybe_unused]] auto _ : state)
        action();
    std::chrono::duration<double> const seconds = std::chrono::steady_clock::now() - start;
    state.counters["items_per_second"] = static_cast<double>(state.iterations()) / seconds.count();
}

void WriteFile(std::string const& name, std::string const& content)
{
    std::ofstream(name, std::ios::binary) << content;
}

int Run(std::string const& program, Workplace const& place)
{
    return std::system((program + " " + place / "a" + " " + place / "b" + " >/dev/null").c_str());
}

// 100,000 lines of five numbers; with `changed`, each number differs in its last digits.
std::string Table(bool changed)
{
    Random random(1);
    std::string text;
    for (int line = 0; line < 100'000; ++line)
        for (int column = 0; column < 5; ++column)
        {
            char word[40];
            double const value = random.Between(1.0, 1000.0);
            std::snprintf(word, sizeof word, "%.15e", changed ? value * (1 + 3e-14) : value);
            text += word;
            text += column < 4 ? ' ' : '\n';
        }
    return text;
}

template<class Compare>
void MeasureCompare(benchmark::State& state, std::string const& a, std::string const& b, Compare compare)
{
    Workplace const place;
    WriteFile(place / "a", a);
    WriteFile(place / "b", b);
    if (!Holds(state, compare(place)))
        return;
    RunByTheClock(state, [&] { benchmark::DoNotOptimize(compare(place)); });
}

auto const ours = [](bool textMode) {
    return [textMode](Workplace const& place) {
        return FileUtils::CompareFiles(FileName(place / "a"), FileName(place / "b"), textMode, true);
    };
};
auto const program = [](std::string const& call) {
    return [call](Workplace const& place) { return Run(call, place) == 0; };
};

// Without lines, by tokens of a stream.
bool CompareTokens(Workplace const& place)
{
    std::ifstream first(place / "a");
    std::ifstream second(place / "b");
    std::string x;
    std::string y;
    while (first >> x)
    {
        if (!(second >> y))
            return false;
        if (x == y)
            continue;
        double const p = std::strtod(x.c_str(), nullptr);
        double const q = std::strtod(y.c_str(), nullptr);
        if (std::abs(p - q) > std::abs(p / 1e12))
            return false;
    }
    return !(second >> y);
}

template<class Compare>
void MeasureBytes(benchmark::State& state, Compare compare)
{
    std::string bytes(256 << 20, '\0');
    Random random(2);
    for (std::size_t i = 0; i < bytes.size(); i += 64)
        bytes[i] = static_cast<char>(random.Engine()());
    MeasureCompare(state, bytes, bytes, compare);
}

void BytesOurs(benchmark::State& state)
{
    MeasureBytes(state, ours(false));
}
BENCHMARK(BytesOurs)->Name("files.compare.bytes/ours");

void BytesCmp(benchmark::State& state)
{
    MeasureBytes(state, program("cmp"));
}
BENCHMARK(BytesCmp)->Name("files.compare.bytes/cmp");

void NumbersOurs(benchmark::State& state)
{
    MeasureCompare(state, Table(false), Table(true), ours(true));
}
BENCHMARK(NumbersOurs)->Name("files.compare.numbers/ours");

void NumbersStream(benchmark::State& state)
{
    MeasureCompare(state, Table(false), Table(true), CompareTokens);
}
BENCHMARK(NumbersStream)->Name("files.compare.numbers/strtod");

void NumbersNumdiff(benchmark::State& state)
{
    MeasureCompare(state, Table(false), Table(true), program("numdiff -q -r 1e-12"));
}
BENCHMARK(NumbersNumdiff)->Name("files.compare.numbers/numdiff");

void SameOurs(benchmark::State& state)
{
    MeasureCompare(state, Table(false), Table(false), ours(true));
}
BENCHMARK(SameOurs)->Name("files.compare.same/ours");

void SameCmp(benchmark::State& state)
{
    MeasureCompare(state, Table(false), Table(false), program("cmp"));
}
BENCHMARK(SameCmp)->Name("files.compare.same/cmp");

// 100 folders of 100 files each, copied over the copy of the round before.
template<class Copy>
void MeasureTree(benchmark::State& state, Copy copy)
{
    Workplace const place;
    for (int folder = 0; folder < 100; ++folder)
    {
        std::string const name = "/" + std::to_string(folder);
        std::filesystem::create_directories(place / "from" + name);
        std::filesystem::create_directories(place / "to" + name);
        for (int file = 0; file < 100; ++file)
            WriteFile(place / "from" + name + "/" + std::to_string(file), "content of " + name);
    }
    copy(place / "from", place / "to");
    if (!Holds(state, std::filesystem::file_size(place / "to/99/99") == 14))
        return;
    RunByTheClock(state, [&] { copy(place / "from", place / "to"); });
}

void TreeOurs(benchmark::State& state)
{
    MeasureTree(state, [](std::string const& from, std::string const& to) {
        FileSystemUtil::copyDirectory(from, to, false);
    });
}
BENCHMARK(TreeOurs)->Name("files.copy_tree/ours");

void TreeStd(benchmark::State& state)
{
    using std::filesystem::copy_options;
    MeasureTree(state, [](std::string const& from, std::string const& to) {
        std::filesystem::copy(from, to, copy_options::recursive | copy_options::overwrite_existing);
    });
}
BENCHMARK(TreeStd)->Name("files.copy_tree/std");

} // namespace
