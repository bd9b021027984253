/// Averages thirty years of hourly rates by month, on as many processes as there are: the first one hands out the plan,
/// each averages its share of the months, and the first one puts the results together. It then does everything alone as
/// well, compares, and returns 1 where one bit differs.
///
///     mpirun -n 4 mpi_reduce
///
/// What travels is documents of the binary form, which are the same on every host. MPI sees bytes, and the library knows
/// nothing of MPI.

#include "orv/foundation/Numerics.h"
#include "orv/serialization/BinaryInputSerializer.h"
#include "orv/serialization/BinaryOutputSerializer.h"
#include "orv/serialization/Serializer.h"
#include "orv/time/ParseTime.h"
#include "orv/time/TimeAverager.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimePeriod.h"
#include "orv/time/TimeSymbolTable.h"

#include <mpi.h>

#include <algorithm>
#include <exception>
#include <iomanip>
#include <iostream>
#include <numeric>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using namespace Zan::Orv::Core::Service;

namespace {

// What is to be done, in the words of the one who asked for it.
struct Plan : public ISerializable
{
    TimeSymbolTable symbols;
    std::vector<std::string>
        phases; // names of symbols; each phase ends where the next one begins, the last at "END"
    TimeOffset step;

    void Serialize(Serializer& serializer) override
    {
        serializer.Serialize(symbols, "symbols");
        serializer.Serialize(phases, "phases");
        serializer.Serialize(step, "step");
    }

    Time When(std::string const& name) const { return ParseTime(TimeString(name), &symbols, true); }

    std::vector<TimePeriod> Periods() const
    {
        Time const end = When("END");
        std::vector<TimePeriod> periods;
        for (Time begin = When(phases.front()); begin < end; begin = periods.back().End())
            periods.emplace_back(begin, step);
        return periods;
    }
};

Plan MadePlan()
{
    Plan plan;
    plan.symbols["BUILD_UP"] = TimeString("1 JAN 1990");
    plan.symbols["PLATEAU"] = TimeString("BUILD_UP + 8 years + 6 months");
    plan.symbols["DECLINE"] = TimeString("PLATEAU + 11 years");
    plan.symbols["END"] = TimeString("BUILD_UP + 30 years");
    plan.phases = {"BUILD_UP", "PLATEAU", "DECLINE"};
    plan.step = ParseTimeOffset("+1 month");
    return plan;
}

// Stands for a long record that each process can open at any place: the rate in an hour, and now and then a day without.
double Rate(long long hour)
{
    if (hour % 1500 < 24)
        return NullValue;
    long long const year = 8766;
    long long const trend = std::min({hour / 3, 3 * year, 7 * year - hour / 5});
    return static_cast<double>(1200 + trend + 7 * (hour * hour % 101) - 50 * (hour % 24)) / 10.0;
}

using Means = std::vector<std::pair<TimePeriod, double>>;

// The means of the periods from `first` up to before `last`. Each depends on the samples inside of it and on the last one
// before it, and on where the first one behind it stands. With these the sums are made of the same numbers in the same
// order on any process. To cut a period in two, and to add the sums, would round in another way.
Means Average(std::vector<TimePeriod> const& periods, std::size_t first, std::size_t last)
{
    Means means;
    if (first == last)
        return means;
    Time const origin = periods.front().Begin();
    auto const hourOf = [&origin](Time const& time) { return (time - origin) / HOUR; };

    TimeAverager rates;
    long long const from = std::max(0LL, hourOf(periods[first].Begin()) - 1);
    long long const to = hourOf(periods[last - 1].End());
    for (long long hour = from; hour <= to; ++hour)
    {
        Time read = origin;
        read += hour * HOUR + 25 * MINUTE;
        rates.addSamplePoint(read, Rate(hour));
    }
    for (std::size_t i = first; i < last; ++i)
        means.emplace_back(periods[i], rates.getAverageValue(periods[i].Begin(), periods[i].End(),
                                                             TimeAverager::TimeAverageStyle::Forward));
    return means;
}

template<class T>
std::string Written(T& value)
{
    std::ostringstream stream;
    BinaryOutputSerializer binary(stream);
    Serializer(binary).Serialize(value, "document");
    return stream.str();
}

template<class T>
T Read(std::string const& document)
{
    T value;
    std::istringstream stream(document);
    BinaryInputSerializer binary(stream);
    Serializer(binary).Serialize(value, "document");
    if (!stream)
        throw std::runtime_error("A document has lost its end.");
    return value;
}

// Gives all processes the text that the first one has. MPI's own failures end the job.
std::string Broadcast(std::string text)
{
    int size = static_cast<int>(text.size());
    MPI_Bcast(&size, 1, MPI_INT, 0, MPI_COMM_WORLD);
    text.resize(static_cast<std::size_t>(size));
    MPI_Bcast(text.data(), size, MPI_BYTE, 0, MPI_COMM_WORLD);
    return text;
}

// The texts of all processes in their order, on the first one; elsewhere nothing.
std::vector<std::string> Gather(std::string const& text, int rank, int processes)
{
    int const size = static_cast<int>(text.size());
    std::vector<int> sizes(rank == 0 ? static_cast<std::size_t>(processes) : 0);
    MPI_Gather(&size, 1, MPI_INT, sizes.data(), 1, MPI_INT, 0, MPI_COMM_WORLD);

    std::vector<int> starts(sizes.size());
    std::exclusive_scan(sizes.begin(), sizes.end(), starts.begin(), 0);
    std::string all(std::accumulate(sizes.begin(), sizes.end(), std::size_t{0}), '\0');
    MPI_Gatherv(text.data(), size, MPI_BYTE, all.data(), sizes.data(), starts.data(), MPI_BYTE, 0,
                MPI_COMM_WORLD);

    std::vector<std::string> texts;
    for (std::size_t i = 0; i < sizes.size(); ++i)
        texts.push_back(all.substr(static_cast<std::size_t>(starts[i]), static_cast<std::size_t>(sizes[i])));
    return texts;
}

void Print(Plan const& plan, Means const& means)
{
    std::cout << "phase     begins      months   lowest  highest\n" << std::fixed << std::setprecision(1);
    for (std::size_t i = 0; i < plan.phases.size(); ++i)
    {
        TimePeriod const phase(plan.When(plan.phases[i]),
                               plan.When(i + 1 < plan.phases.size() ? plan.phases[i + 1] : "END"));
        std::vector<double> values;
        for (auto const& [period, mean] : means)
            if (phase.Contains(period))
                values.push_back(mean);
        auto const [lowest, highest] = std::minmax_element(values.begin(), values.end());
        std::ostringstream begin;
        begin << phase.Begin();
        std::cout << std::left << std::setw(10) << plan.phases[i] << begin.str().substr(0, 10) << std::right
                  << std::setw(8) << values.size() << std::setw(9) << *lowest << std::setw(9) << *highest
                  << '\n';
    }
}

int Run(int rank, int processes)
{
    Plan made = rank == 0 ? MadePlan() : Plan();
    Plan const plan = Read<Plan>(Broadcast(Written(made)));
    std::vector<TimePeriod> const periods = plan.Periods();

    auto const shareOf = [&](int process) {
        return periods.size() * static_cast<std::size_t>(process) / static_cast<std::size_t>(processes);
    };
    Means own = Average(periods, shareOf(rank), shareOf(rank + 1));

    Means merged;
    for (std::string const& document : Gather(Written(own), rank, processes))
    {
        Means const part = Read<Means>(document);
        merged.insert(merged.end(), part.begin(), part.end());
    }
    if (rank != 0)
        return 0;

    Print(plan, merged);
    Means alone = Average(periods, 0, periods.size());
    bool const same = Written(merged) == Written(alone); // a document holds each bit of a number
    std::cout << periods.size() << " months on " << processes
              << " processes: " << (same ? "the same as on one.\n" : "NOT the same as on one.\n");
    return same ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    MPI_Init(&argc, &argv);
    int rank = 0;
    int processes = 1;
    MPI_Comm_rank(MPI_COMM_WORLD, &rank);
    MPI_Comm_size(MPI_COMM_WORLD, &processes);
    int result = 1;
    try
    {
        result = Run(rank, processes);
    }
    catch (std::exception const& e)
    {
        std::cerr << "Process " << rank << ": " << e.what() << '\n';
        MPI_Abort(MPI_COMM_WORLD, 1); // the others would wait for this one for ever
    }
    MPI_Finalize();
    return result;
}
