#include "Batch.h"

#include "orv/time/Time.h"
#include "orv/time/TimeOffset.h"

#include <absl/time/time.h>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <date/date.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <locale>
#include <sstream>
#include <string>
#include <vector>

// The moment as a value, the month added to it, and its standard text in both directions.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

namespace posix_time = boost::posix_time;
namespace gregorian = boost::gregorian;

using Milliseconds = std::chrono::sys_time<std::chrono::milliseconds>;

struct Moment
{
    int year, month, day, hour, minute, second, millisecond;
};

Moment MomentOf(Milliseconds time)
{
    auto const day = std::chrono::floor<std::chrono::days>(time);
    std::chrono::year_month_day const date(day);
    std::chrono::hh_mm_ss const clock(time - day);
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(clock.hours().count()),
            static_cast<int>(clock.minutes().count()),
            static_cast<int>(clock.seconds().count()),
            static_cast<int>(clock.subseconds().count())};
}

Time MakeOurs(Moment const& moment)
{
    return Time(moment.year, moment.month, moment.day, moment.hour, moment.minute, moment.second,
                moment.millisecond);
}

posix_time::ptime MakeBoost(Moment const& moment)
{
    using Number = unsigned short;
    return posix_time::ptime(
        gregorian::date(static_cast<Number>(moment.year), static_cast<Number>(moment.month),
                        static_cast<Number>(moment.day)),
        posix_time::time_duration(moment.hour, moment.minute, moment.second, moment.millisecond * 1000LL));
}

// The same moments, from 1950 to 2050, in the types of all peers. Their order is that of chance.
struct MomentTable
{
    MomentTable()
    {
        Random random(2);
        for (std::size_t i = 0; i < BatchSize; ++i)
        {
            Milliseconds const time(
                std::chrono::milliseconds(random.Between(-631'152'000'000, 2'524'607'999'999)));
            Moment const moment = MomentOf(time);
            moments.push_back(moment);
            sys.push_back(time);
            ours.push_back(MakeOurs(moment));
            boost.push_back(MakeBoost(moment));
            absl.push_back(absl::FromUnixMillis(time.time_since_epoch().count()));

            std::array<char, 128> text;
            std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d.%03d", moment.year,
                          moment.month, moment.day, moment.hour, moment.minute, moment.second,
                          moment.millisecond);
            texts.emplace_back(text.data());
            allTexts += texts.back() + '\n';
        }
    }

    std::vector<Moment> moments;
    std::vector<Milliseconds> sys;
    std::vector<Time> ours;
    std::vector<posix_time::ptime> boost;
    std::vector<absl::Time> absl;
    std::vector<std::string> texts;
    std::string allTexts;
};

MomentTable const& Table()
{
    static MomentTable const table;
    return table;
}

// ---- The value.

template<class T, class Make>
void MeasureConstruct(benchmark::State& state, std::vector<T> const& expected, Make make)
{
    auto const& moments = Table().moments;
    std::vector<T> made(BatchSize);
    RunBatch(state, [&](std::size_t i) {
        made[i] = make(moments[i]);
        benchmark::DoNotOptimize(made[i]);
    });
    Holds(state, made == expected);
}

void ConstructOurs(benchmark::State& state)
{
    MeasureConstruct(state, Table().ours, MakeOurs);
}
BENCHMARK(ConstructOurs)->Name("time.construct/ours");

void ConstructBoost(benchmark::State& state)
{
    MeasureConstruct(state, Table().boost, MakeBoost);
}
BENCHMARK(ConstructBoost)->Name("time.construct/boost");

template<class T>
void MeasureCompare(benchmark::State& state, std::vector<T> const& times)
{
    RunBatch(state, [&](std::size_t i) {
        bool less = times[i] < times[BatchSize - 1 - i];
        benchmark::DoNotOptimize(less);
    });
}

void CompareOurs(benchmark::State& state)
{
    MeasureCompare(state, Table().ours);
}
BENCHMARK(CompareOurs)->Name("time.compare/ours");

void CompareBoost(benchmark::State& state)
{
    MeasureCompare(state, Table().boost);
}
BENCHMARK(CompareBoost)->Name("time.compare/boost");

// There and back again: the values are the old ones after each second batch.
template<class T, class Add>
void MeasureAdd(benchmark::State& state, std::vector<T> times, Add add)
{
    std::vector<long long> distances;
    Random random(3);
    for (std::size_t i = 0; i < BatchSize; ++i)
        distances.push_back(random.Between(std::int64_t(-10'000'000), 10'000'000));
    RunBatch(state, [&](std::size_t i) {
        add(times[i], distances[i]);
        distances[i] = -distances[i];
        benchmark::DoNotOptimize(times[i]);
    });
}

void AddOurs(benchmark::State& state)
{
    MeasureAdd(state, Table().ours, [](Time& time, long long distance) { time += distance; });
}
BENCHMARK(AddOurs)->Name("time.add_ms/ours");

void AddBoost(benchmark::State& state)
{
    MeasureAdd(state, Table().boost, [](posix_time::ptime& time, long long distance) {
        time += posix_time::milliseconds(distance);
    });
}
BENCHMARK(AddBoost)->Name("time.add_ms/boost");

template<class T>
void MeasureSort(benchmark::State& state, std::vector<T> const& times)
{
    std::vector<T> sorted(times);
    long long const before = AllocationCount();
    for ([[maybe_unused]] auto _ : state)
    {
        std::copy(times.begin(), times.end(), sorted.begin());
        std::sort(sorted.begin(), sorted.end());
        benchmark::DoNotOptimize(sorted.data());
        benchmark::ClobberMemory();
    }
    state.counters["allocs"] = static_cast<double>(AllocationCount() - before);
    Holds(state, std::is_sorted(sorted.begin(), sorted.end()));
}

void SortOurs(benchmark::State& state)
{
    MeasureSort(state, Table().ours);
}
BENCHMARK(SortOurs)->Name("time.sort1024/ours");

void SortBoost(benchmark::State& state)
{
    MeasureSort(state, Table().boost);
}
BENCHMARK(SortBoost)->Name("time.sort1024/boost");

// ---- A month later, at the same time of day.

template<class T, class Add>
std::vector<T> MeasureAddMonth(benchmark::State& state, std::vector<T> const& times, Add add)
{
    std::vector<T> later(times);
    RunBatch(state, [&](std::size_t i) {
        later[i] = add(times[i]);
        benchmark::DoNotOptimize(later[i]);
    });
    return later;
}

Milliseconds ChronoMonthLater(Milliseconds time)
{
    namespace chrono = std::chrono;
    auto const day = chrono::floor<chrono::days>(time);
    chrono::year_month_day date(day);
    date += chrono::months(1);
    if (!date.ok())
        date = date.year() / date.month() / chrono::last;
    return chrono::sys_days(date) + (time - day);
}

Milliseconds DateMonthLater(Milliseconds time)
{
    auto const day = date::floor<date::days>(time);
    date::year_month_day date(day);
    date += date::months(1);
    if (!date.ok())
        date = date.year() / date.month() / date::last;
    return date::sys_days(date) + (time - day);
}

void AddMonthOurs(benchmark::State& state)
{
    TimeOffset const month(0, 1, 0, 0, 0, 0, 0);
    auto const later = MeasureAddMonth(state, Table().ours, [&](Time time) {
        time += month;
        return time;
    });
    for (std::size_t i = 0; i < BatchSize; ++i)
        if (!Holds(state, later[i] == MakeOurs(MomentOf(ChronoMonthLater(Table().sys[i])))))
            return;
}
BENCHMARK(AddMonthOurs)->Name("time.add_month/ours");

void AddMonthChrono(benchmark::State& state)
{
    MeasureAddMonth(state, Table().sys, ChronoMonthLater);
}
BENCHMARK(AddMonthChrono)->Name("time.add_month/chrono");

void AddMonthDate(benchmark::State& state)
{
    MeasureAddMonth(state, Table().sys, DateMonthLater);
}
BENCHMARK(AddMonthDate)->Name("time.add_month/date");

void AddMonthBoost(benchmark::State& state)
{
    gregorian::months const month(1);
    MeasureAddMonth(state, Table().boost, [&](posix_time::ptime const& time) { return time + month; });
}
BENCHMARK(AddMonthBoost)->Name("time.add_month/boost");

// ---- Text out. Whoever writes to a stream writes to one that is kept and set back.

template<class T>
void MeasureStreamOut(benchmark::State& state, std::ostringstream& stream, std::vector<T> const& times)
{
    stream << times[0];
    if (!Holds(state, stream.str().compare(0, Table().texts[0].size(), Table().texts[0]) == 0))
        return;
    RunBatch(state, [&](std::size_t i) {
        stream.seekp(0);
        stream << times[i];
    });
    Holds(state, stream.good());
}

template<class T, class Format>
void MeasureTextOut(benchmark::State& state, std::vector<T> const& times, Format format)
{
    for (std::size_t i = 0; i < BatchSize; ++i)
        if (!Holds(state, format(times[i]) == Table().texts[i]))
            return;
    RunBatch(state, [&](std::size_t i) {
        auto const& text = format(times[i]);
        benchmark::DoNotOptimize(text.data());
        benchmark::ClobberMemory();
    });
}

void OutOurs(benchmark::State& state)
{
    std::ostringstream stream;
    MeasureStreamOut(state, stream, Table().ours);
}
BENCHMARK(OutOurs)->Name("time.out/ours");

void OutStrftime(benchmark::State& state)
{
    std::array<char, 32> text;
    MeasureTextOut(state, Table().sys, [&](Milliseconds time) {
        auto const second = std::chrono::floor<std::chrono::seconds>(time);
        std::time_t const count = second.time_since_epoch().count();
        std::tm fields;
        gmtime_r(&count, &fields);
        std::size_t const length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &fields);
        int const rest = std::snprintf(text.data() + length, text.size() - length, ".%03d",
                                       static_cast<int>((time - second).count()));
        return std::string_view(text.data(), length + static_cast<std::size_t>(rest));
    });
}
BENCHMARK(OutStrftime)->Name("time.out/strftime");

void OutAbsl(benchmark::State& state)
{
    absl::TimeZone const zone = absl::UTCTimeZone();
    MeasureTextOut(state, Table().absl,
                   [&](absl::Time time) { return absl::FormatTime("%Y-%m-%d %H:%M:%E3S", time, zone); });
}
BENCHMARK(OutAbsl)->Name("time.out/absl");

void OutDate(benchmark::State& state)
{
    MeasureTextOut(state, Table().sys, [](Milliseconds time) { return date::format("%F %T", time); });
}
BENCHMARK(OutDate)->Name("time.out/date");

void OutBoost(benchmark::State& state)
{
    std::ostringstream stream;
    stream.imbue(std::locale(std::locale::classic(), new posix_time::time_facet("%Y-%m-%d %H:%M:%S.%f")));
    MeasureStreamOut(state, stream, Table().boost);
}
BENCHMARK(OutBoost)->Name("time.out/boost");

// ---- Text in. A stream holds all texts and is set back behind the last one.

template<class T, class Read>
void MeasureStreamIn(benchmark::State& state, std::vector<T> const& expected, Read read)
{
    std::istringstream stream(Table().allTexts);
    std::vector<T> times(BatchSize);
    RunBatch(state, [&](std::size_t i) {
        if (i == 0)
            stream.seekg(0);
        read(stream, times[i]);
        stream.get(); // the line feed
    });
    Holds(state, stream.good() && times == expected);
}

template<class T, class Parse>
void MeasureTextIn(benchmark::State& state, std::vector<T> const& expected, Parse parse)
{
    auto const& texts = Table().texts;
    std::vector<T> times(BatchSize);
    RunBatch(state, [&](std::size_t i) {
        times[i] = parse(texts[i]);
        benchmark::DoNotOptimize(times[i]);
    });
    Holds(state, times == expected);
}

void InOurs(benchmark::State& state)
{
    MeasureStreamIn(state, Table().ours, [](std::istream& stream, Time& time) { stream >> time; });
}
BENCHMARK(InOurs)->Name("time.in/ours");

void InStrptime(benchmark::State& state)
{
    MeasureTextIn(state, Table().sys, [](std::string const& text) {
        std::tm fields{};
        char const* const rest = strptime(text.c_str(), "%Y-%m-%d %H:%M:%S", &fields);
        if (rest == nullptr || *rest != '.')
            return Milliseconds();
        long const milliseconds = std::strtol(rest + 1, nullptr, 10);
        return Milliseconds(std::chrono::seconds(timegm(&fields)) + std::chrono::milliseconds(milliseconds));
    });
}
BENCHMARK(InStrptime)->Name("time.in/strptime");

void InAbsl(benchmark::State& state)
{
    absl::TimeZone const zone = absl::UTCTimeZone();
    std::string error;
    MeasureTextIn(state, Table().absl, [&](std::string const& text) {
        absl::Time time;
        absl::ParseTime("%Y-%m-%d %H:%M:%E3S", text, zone, &time, &error);
        return time;
    });
}
BENCHMARK(InAbsl)->Name("time.in/absl");

void InDate(benchmark::State& state)
{
    MeasureStreamIn(state, Table().sys, [](std::istream& stream, Milliseconds& time) {
        date::from_stream(stream, "%F %T", time);
    });
}
BENCHMARK(InDate)->Name("time.in/date");

} // namespace
