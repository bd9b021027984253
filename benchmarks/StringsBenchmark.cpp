#include "Batch.h"

#include "orv/foundation/Strings.h"

#include <boost/algorithm/string.hpp>

#include <string>
#include <strings.h>
#include <vector>

// File names compared without regard to case, lines split into columns, and text replaced in them.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

char AnyOf(Random& random, std::string const& bytes)
{
    return bytes[static_cast<std::size_t>(random.Between(0, static_cast<std::int64_t>(bytes.size()) - 1))];
}

std::string Name(Random& random)
{
    std::string name = "/data/Models/";
    for (auto length = random.Between(std::int64_t(4), 40); length > 0; --length)
        name += AnyOf(random, "abcdefghijklmnopqrstuvwxyzABCDEF0123456789_-");
    return name + ".dat";
}

struct Pair
{
    std::string a, b;
    bool equal;
};

// Of three pairs, one is the same, one is in upper case, one differs in a byte of the leaf.
std::vector<Pair> const& Pairs()
{
    static std::vector<Pair> const pairs = [] {
        Random random(1);
        std::vector<Pair> made;
        for (std::size_t i = 0; i < BatchSize; ++i)
        {
            std::string const name = Name(random);
            std::string other = name;
            auto const at = static_cast<std::size_t>(random.Between(13, std::ssize(name) - 1));
            if (i % 3 == 1)
                boost::to_upper(other);
            else if (i % 3 == 2)
                other[at] = '#';
            made.push_back({name, other, i % 3 != 2});
        }
        return made;
    }();
    return pairs;
}

template<class Equal>
void MeasureEqual(benchmark::State& state, Equal equal)
{
    auto const& pairs = Pairs();
    for (Pair const& pair : pairs)
        if (!Holds(state, equal(pair.a, pair.b) == pair.equal))
            return;
    RunBatch(state, [&](std::size_t i) { benchmark::DoNotOptimize(equal(pairs[i].a, pairs[i].b)); });
}

void EqualOurs(benchmark::State& state)
{
    MeasureEqual(state, NoCaseStringEqual);
}
BENCHMARK(EqualOurs)->Name("strings.equal/ours");

void EqualBoost(benchmark::State& state)
{
    MeasureEqual(state, [](std::string const& a, std::string const& b) { return boost::iequals(a, b); });
}
BENCHMARK(EqualBoost)->Name("strings.equal/boost");

void EqualHost(benchmark::State& state)
{
    MeasureEqual(state, [](std::string const& a, std::string const& b) {
        return a.size() == b.size() && strcasecmp(a.c_str(), b.c_str()) == 0;
    });
}
BENCHMARK(EqualHost)->Name("strings.equal/strcasecmp");

template<class Less>
void MeasureLess(benchmark::State& state, Less less)
{
    auto const& pairs = Pairs();
    for (Pair const& pair : pairs)
        if (!Holds(state, pair.equal ? !less(pair.a, pair.b) : less(pair.a, pair.b) != less(pair.b, pair.a)))
            return;
    RunBatch(state, [&](std::size_t i) { benchmark::DoNotOptimize(less(pairs[i].a, pairs[i].b)); });
}

void LessOurs(benchmark::State& state)
{
    MeasureLess(state, NoCaseStringLess);
}
BENCHMARK(LessOurs)->Name("strings.less/ours");

void LessBoost(benchmark::State& state)
{
    MeasureLess(state, [](std::string const& a, std::string const& b) {
        return boost::ilexicographical_compare(a, b);
    });
}
BENCHMARK(LessBoost)->Name("strings.less/boost");

void LessHost(benchmark::State& state)
{
    MeasureLess(state, [](std::string const& a, std::string const& b) {
        return strcasecmp(a.c_str(), b.c_str()) < 0;
    });
}
BENCHMARK(LessHost)->Name("strings.less/strcasecmp");

// Lines of ten columns, as in a file of measurements.
std::vector<std::string> const& Lines()
{
    static std::vector<std::string> const lines = [] {
        Random random(2);
        std::vector<std::string> made;
        for (std::size_t i = 0; i < BatchSize; ++i)
        {
            std::string line;
            for (int column = 0; column < 10; ++column)
            {
                auto const width = random.Between(std::int64_t(1), 9);
                for (std::int64_t digit = 0; digit < width; ++digit)
                    line += AnyOf(random, "0123456789.-");
                line += AnyOf(random, ",;\t");
            }
            made.push_back(line);
        }
        return made;
    }();
    return lines;
}

template<class Split>
void MeasureSplit(benchmark::State& state, Split split)
{
    auto const& lines = Lines();
    std::vector<std::string> tokens;
    split(lines[0], tokens);
    if (!Holds(state, tokens.size() == 11 && tokens[10].empty() && lines[0].rfind(tokens[0], 0) == 0))
        return;
    RunBatch(state, [&](std::size_t i) {
        tokens.clear();
        split(lines[i], tokens);
        benchmark::DoNotOptimize(tokens.data());
    });
}

void SplitOurs(benchmark::State& state)
{
    std::string const separators = ",;\t";
    MeasureSplit(state, [&](std::string const& line, std::vector<std::string>& tokens) {
        StringSplit(line, tokens, separators, false);
    });
}
BENCHMARK(SplitOurs)->Name("strings.split/ours");

void SplitBoost(benchmark::State& state)
{
    MeasureSplit(state, [](std::string const& line, std::vector<std::string>& tokens) {
        boost::split(tokens, line, boost::is_any_of(",;\t"));
    });
}
BENCHMARK(SplitBoost)->Name("strings.split/boost");

template<class Replace>
void MeasureReplace(benchmark::State& state, Replace replace)
{
    auto const& lines = Lines();
    std::string text = "a, b,, c";
    replace(text, ",", " | ");
    if (!Holds(state, text == "a |  b |  |  c"))
        return;
    std::string const from = ",";
    std::string const to = " | ";
    RunBatch(state, [&](std::size_t i) {
        text = lines[i];
        replace(text, from, to);
        benchmark::DoNotOptimize(text.data());
    });
}

void ReplaceOurs(benchmark::State& state)
{
    MeasureReplace(state, StringReplace);
}
BENCHMARK(ReplaceOurs)->Name("strings.replace/ours");

void ReplaceBoost(benchmark::State& state)
{
    MeasureReplace(state, [](std::string& text, std::string const& from, std::string const& to) {
        boost::replace_all(text, from, to);
    });
}
BENCHMARK(ReplaceBoost)->Name("strings.replace/boost");

} // namespace
