/// Forty-four years of carbon dioxide: reads a measured record, averages it by year, stores everything as XML
/// and as text, reads both back and finds them equal, and draws a picture.
///
///     co2 <record.csv> <folder for the results>

#include "Study.h"

#include "orv/events/CErrLogService.h"
#include "orv/events/Log.h"
#include "orv/serialization/StreamInputSerializer.h"
#include "orv/serialization/StreamOutputSerializer.h"
#include "orv/serialization/XMLInputSerializer.h"
#include "orv/serialization/XMLOutputSerializer.h"
#include "orv/time/TimeAverager.h"
#include "orv/time/TimeFormat.h"
#include "orv/time/TimeOffset.h"

#include <cmath>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>

using namespace Zan::Orv::Core::Service;
using Sample = TimeAverager::TimeSampleStyle;
using Average = TimeAverager::TimeAverageStyle;

namespace {

// One line is a day as yyyymmdd, a comma, and a number or nothing.
Week ReadWeek(std::string const& line)
{
    static TimeFormat const format("%Y%m%d,");
    Week week;
    std::istringstream text(line);
    text >> format(week.end);
    std::string value;
    if (std::getline(text, value) && !value.empty())
        week.value = IEEEFromString(value);
    return week;
}

// A line that can not be read costs its week and no more; the log tells.
std::vector<Week> ReadRecord(std::string const& path)
{
    std::ifstream file(path);
    std::string line;
    if (!std::getline(file, line))
        throw std::runtime_error("Cannot read '" + path + "'.");

    std::vector<Week> weeks;
    for (int number = 2; std::getline(file, line); ++number)
    {
        try
        {
            weeks.push_back(ReadWeek(line));
            if (IsNullValue(weeks.back().value))
                Log::LogWF("line %d: no value for the week of %s", number, line.substr(0, 8).c_str());
        }
        catch (std::exception const& e)
        {
            Log::LogEF("line %d left out: '%s': %s", number, line.c_str(), e.what());
        }
    }
    return weeks;
}

// Time in a gap counts as time without a value, and draws a weighted mean towards zero. The same mean of a
// series that is 1 where there is a value tells how much of the time that is: divided by it, the mean is that
// of the rest.
double MeanOfCovered(TimeAverager const& series, TimeAverager const& coverage, TimePeriod const& period,
                     Average style)
{
    return series.getAverageValue(period.Begin(), period.End(), style) /
           coverage.getAverageValue(period.Begin(), period.End(), style);
}

Study Evaluate(std::vector<Week> const& weeks)
{
    TimeAverager series;
    TimeAverager coverage;
    TimeAverager values; // without the gaps
    for (Week const& week : weeks)
    {
        series.addSamplePoint(week.end, week.value);
        coverage.addSamplePoint(week.end, IsNullValue(week.value) ? NullValue : 1.0);
        if (!IsNullValue(week.value))
            values.addSamplePoint(week.end, week.value);
    }

    Study study;
    study.weeks = weeks;
    // As the increase of a total. A gap would break it.
    study.rise = values.getAverageValue(weeks.front().end, weeks.back().end, Average::Cumulative);

    TimeOffset const oneYear(1, 0, 0, 0, 0, 0, 0);
    TimePeriod period(Time(1959, 1, 1, 0, 0, 0, 0), oneYear); // the first whole year
    for (; period.Begin() < weeks.back().end; period = period.Shift(oneYear))
    {
        Time middle = period.Begin();
        middle += TimeOffset(0, 6, 0, 0, 0, 0, 0);

        Year year;
        year.period = period;
        year.coverage = coverage.getAverageValue(period.Begin(), period.End(), Average::Forward);
        year.forward = MeanOfCovered(series, coverage, period, Average::Forward);
        year.backward = MeanOfCovered(series, coverage, period, Average::Backward);
        year.midYear = series.getPointValue(middle, Sample::Linear);
        year.point = series.getAverageValue(period.Begin(), period.End(), Average::Point);
        study.years.push_back(year);
    }
    return study;
}

std::string Shown(double value)
{
    if (IsNullValue(value))
        return "-";
    std::ostringstream text;
    text << std::fixed << std::setprecision(2) << value;
    return text.str();
}

void PrintTable(Study const& study)
{
    std::cout << "year  covered  forward  backward  mid-year   point\n";
    for (Year const& year : study.years)
        std::cout << year.period.Begin().GetYear() << std::setw(8) << std::lround(100 * year.coverage) << '%'
                  << std::setw(9) << Shown(year.forward) << std::setw(10) << Shown(year.backward)
                  << std::setw(10) << Shown(year.midYear) << std::setw(8) << Shown(year.point) << '\n';
    TimePeriod const record(study.weeks.front().end, study.weeks.back().end);
    std::cout << "Rise over " << record << ": " << Shown(study.rise) << " ppm\n";
}

// Annual means of the station as the Scripps Institution and NOAA publish them. Laboratories calibrate
// differently, and half a part per million holds all of that.
bool AgreesWithPublished(Study const& study)
{
    struct
    {
        int year;
        double mean;
    } const published[] = {{1960, 316.91}, {1970, 325.68}, {1980, 338.76}, {1990, 354.45}, {2000, 369.71}};

    bool agrees = true;
    for (auto const& [year, mean] : published)
    {
        double const ours = study.years.at(static_cast<std::size_t>(year - 1959)).point;
        std::cout << year << ": published " << Shown(mean) << ", found " << Shown(ours) << '\n';
        agrees = agrees && std::abs(ours - mean) < 0.5;
    }
    return agrees;
}

// Stores and reads back in one form, and compares by the exact text of everything.
template<class Output, class Input, class... Root>
bool ComesBackEqual(Study& study, std::string const& path, Root const&... root)
{
    {
        std::ofstream file(path, std::ios::binary);
        Output form(file, root...);
        Serializer(form).Serialize(study, "study");
    }
    Study copy;
    {
        std::ifstream file(path, std::ios::binary);
        Input form(file, root...);
        Serializer(form).Serialize(copy, "study");
    }
    auto const textOf = [](Study& any) {
        std::ostringstream text;
        StreamOutputSerializer form(text);
        Serializer(form).Serialize(any, "study");
        return text.str();
    };
    bool const equal = textOf(copy) == textOf(study);
    std::cout << path << ": " << copy.weeks.size() << " weeks read back, " << (equal ? "equal" : "NOT EQUAL")
              << '\n';
    return equal;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
    {
        std::cerr << "Usage: co2 <record.csv> <folder for the results>\n";
        return 2;
    }
    CErrLogService::Start();
    try
    {
        std::string const folder = std::string(argv[2]) + '/';
        Study study = Evaluate(ReadRecord(argv[1]));
        PrintTable(study);
        bool good = AgreesWithPublished(study);
        good =
            ComesBackEqual<XMLOutputSerializer, XMLInputSerializer>(study, folder + "co2.xml", "co2") && good;
        good =
            ComesBackEqual<StreamOutputSerializer, StreamInputSerializer>(study, folder + "co2.txt") && good;

        std::ofstream picture(folder + "co2.svg", std::ios::binary);
        DrawChart(picture, study);
        std::cout << "Picture: " << folder << "co2.svg\n";
        return good ? 0 : 1;
    }
    catch (std::exception const& e)
    {
        Log::LogE(e.what());
        return 1;
    }
}
