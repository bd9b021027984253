#include "Batch.h"

#include "orv/time/ParseTime.h"
#include "orv/time/TimeFrequency.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimeSymbolTable.h"

#include <cstdlib>
#include <exception>
#include <regex>
#include <string>

// Texts about time as people write them, beside the same language in regular expressions that are built once; and texts
// that are made to be hard.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

std::regex const& DateExpression()
{
    static std::regex const expression(
        R"(\s*(\d+|[[:alpha:]]+)\s*(?:[-/.,]?)\s*?(\d+|[[:alpha:]]+)\s*(?:[-/.,]?)\s*?(\d+|[[:alpha:]]+)\s*)"
        R"((?:(\d+)[:.](\d+)(?:[:.](\d+)(?:(\.\d+))?)?\s*([[:alpha:]]+)?)?\s*)");
    return expression;
}

std::regex const& TermExpression()
{
    static std::regex const expression(R"(\s*([+-])\s*(\d+)\s*([A-Za-z]+)(.*))");
    return expression;
}

std::regex const& SymbolicExpression()
{
    static std::regex const expression(R"(\s*(.*?)\s*((?:[+-]\s*\d+\s*[A-Za-z]+\s*)*))");
    return expression;
}

constexpr char InWords[] = "5 JAN 2000 12:30:15.25 PM";
constexpr char InNumbers[] = "25/12/2000";
constexpr char Terms[] = "+ 2 months - 3 days +4h";

void ParseOurs(benchmark::State& state, char const* text, Time const& expected)
{
    std::string const date = text;
    if (!Holds(state, ParseTime(date, true) == expected))
        return;
    RunBatch(state, [&](std::size_t) { benchmark::DoNotOptimize(ParseTime(date, true)); });
}

void MatchRegex(benchmark::State& state, char const* text)
{
    std::string const date = text;
    std::smatch match;
    if (!Holds(state, std::regex_match(date, match, DateExpression())))
        return;
    RunBatch(state,
             [&](std::size_t) { benchmark::DoNotOptimize(std::regex_match(date, match, DateExpression())); });
}

BENCHMARK_CAPTURE(ParseOurs, words, InWords, Time(2000, 1, 5, 12, 30, 15, 250))->Name("date.words/ours");
BENCHMARK_CAPTURE(MatchRegex, words, InWords)->Name("date.words/regex");
BENCHMARK_CAPTURE(ParseOurs, numbers, InNumbers, Time(2000, 12, 25, 0, 0, 0, 0))->Name("date.numbers/ours");
BENCHMARK_CAPTURE(MatchRegex, numbers, InNumbers)->Name("date.numbers/regex");

// The terms of an offset as the expression finds them, with the numbers and the units left as text.
int CountTerms(std::string const& text)
{
    int count = 0;
    std::smatch match;
    for (std::string rest = text; std::regex_match(rest, match, TermExpression()); ++count)
        rest = std::string(match[4]);
    return count;
}

void OffsetOurs(benchmark::State& state)
{
    std::string const text = Terms;
    if (!Holds(state, ParseTimeOffset(text) == TimeOffset(0, 2, -3, 4, 0, 0, 0)))
        return;
    RunBatch(state, [&](std::size_t) { benchmark::DoNotOptimize(ParseTimeOffset(text)); });
}
BENCHMARK(OffsetOurs)->Name("offset.terms/ours");

void OffsetRegex(benchmark::State& state)
{
    std::string const text = Terms;
    if (!Holds(state, CountTerms(text) == 3))
        return;
    RunBatch(state, [&](std::size_t) { benchmark::DoNotOptimize(CountTerms(text)); });
}
BENCHMARK(OffsetRegex)->Name("offset.terms/regex");

TimeSymbolTable MakeTable()
{
    TimeSymbolTable table;
    table["REVIEW"] = TimeString("PHASE_2 + 6 months");
    table["PHASE_2"] = TimeString("START + 1 year - 2 days");
    table["START"] = TimeString("1 JAN 2000");
    return table;
}

void SymbolOurs(benchmark::State& state)
{
    TimeSymbolTable const table = MakeTable();
    TimeString const time("REVIEW - 1 week");
    if (!Holds(state, ParseTime(time, &table, true) == Time(2001, 6, 23, 0, 0, 0, 0)))
        return;
    RunBatch(state, [&](std::size_t) { benchmark::DoNotOptimize(ParseTime(time, &table, true)); });
}
BENCHMARK(SymbolOurs)->Name("symbol.chain/ours");

// The matching alone of the same evaluation.
int MatchChain(TimeSymbolTable const& table, std::string text)
{
    int terms = 0;
    std::smatch match;
    while (std::regex_match(text, match, SymbolicExpression()))
    {
        terms += CountTerms(match[2]);
        TimeString const definition = table.find(match[1]);
        if (!definition.IsDefined())
            return std::regex_match(std::string(match[1]), DateExpression()) ? terms : -1;
        text = definition.GetString();
    }
    return -1;
}

void SymbolRegex(benchmark::State& state)
{
    TimeSymbolTable const table = MakeTable();
    if (!Holds(state, MatchChain(table, "REVIEW - 1 week") == 4))
        return;
    RunBatch(state, [&](std::size_t) { benchmark::DoNotOptimize(MatchChain(table, "REVIEW - 1 week")); });
}
BENCHMARK(SymbolRegex)->Name("symbol.chain/regex");

// Texts that cost a backtracking matcher the square of their length, or its stack.
template<class Read>
void MeasureHostile(benchmark::State& state, std::string const& text, Read read)
{
    for (auto _ : state)
    {
        try
        {
            read(text);
        }
        catch (std::exception const&)
        {
            // what most of these texts deserve
        }
    }
}

std::size_t SizeOf(benchmark::State const& state)
{
    return static_cast<std::size_t>(state.range(0));
}

void HostileDate(benchmark::State& state)
{
    MeasureHostile(state, std::string(SizeOf(state), '5') + '!',
                   [](auto const& text) { ParseTime(text, true); });
}

void HostileOffset(benchmark::State& state)
{
    std::string text;
    while (text.size() < SizeOf(state))
        text += "+1d ";
    MeasureHostile(state, text, [](auto const& terms) { benchmark::DoNotOptimize(ParseTimeOffset(terms)); });
}

void HostileFrequency(benchmark::State& state)
{
    MeasureHostile(state, std::string(SizeOf(state), ' '),
                   [](auto const& text) { benchmark::DoNotOptimize(ParseTimeFrequency(text)); });
}

void HostileSymbol(benchmark::State& state)
{
    std::string text = "X";
    while (text.size() < SizeOf(state))
        text += " +1";
    MeasureHostile(state, text, [](auto const& time) { ParseTime(TimeString(time), nullptr, true); });
}

void Sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier(32)->Range(1 << 10, 1 << 20)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(HostileDate)->Name("date.hostile/ours")->Apply(Sizes);
BENCHMARK(HostileOffset)->Name("offset.hostile/ours")->Apply(Sizes);
BENCHMARK(HostileFrequency)->Name("frequency.hostile/ours")->Apply(Sizes);
BENCHMARK(HostileSymbol)->Name("symbol.hostile/ours")->Apply(Sizes);

} // namespace
