/// Imports a text file of measurements in columns, and prints the mean of each. Names the line that can not
/// be read.
///
///     import_columns <table.txt>
///
/// Such a file begins with a line for the place and one for the columns, "name[unit]" each; the date has its
/// notation there. What stands behind a # is for people.

#include "orv/datafiles/ASCIIFileFormat.h"
#include "orv/datafiles/ASCIIFileInterpreter.h"
#include "orv/datafiles/ColumnInterpreter.h"
#include "orv/datafiles/ImportException.h"
#include "orv/foundation/Numerics.h"
#include "orv/foundation/Strings.h"
#include "orv/time/TimeAverager.h"
#include "orv/time/TimeFormat.h"

#include <charconv>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

using namespace Zan::Orv::Core::Service;
using Quantity = ASCIIFileFormat::ColumnQuantity;
using Format = ASCIIFileFormat::ColumnFormat;
using Average = TimeAverager::TimeAverageStyle;

namespace {

std::map<std::string, Quantity> const quantities = {{"date", Quantity::Date},
                                                    {"co2", Quantity::Concentration}};
std::map<std::string, Format> const notations = {{"dd/mm/yyyy", Format::DayMonthYear},
                                                 {"yyyy-mm-dd", Format::YearMonthDay}};
std::map<Format, TimeFormat> const timeFormats = {{Format::DayMonthYear, TimeFormat("%d/%m/%Y")},
                                                  {Format::YearMonthDay, TimeFormat("%Y-%m-%d")}};

struct Table
{
    ASCIIFileFormat format;
    ASCIIFileInterpreter interpreters;
    std::map<int, TimeAverager> series; // by column number, from 1
};

// Goes to the next line that says something, and splits it. Empty at the end of the file.
std::vector<std::string> NextLine(std::istream& file, int& lineNo, std::string const& separators = " \t\r")
{
    std::vector<std::string> words;
    for (std::string line; words.empty() && std::getline(file, line); ++lineNo)
        StringSplit(line.substr(0, line.find('#')), words, separators, true);
    return words;
}

template<class T>
T Known(std::map<std::string, T> const& meanings, std::string const& word, int lineNo)
{
    if (meanings.count(word) == 0)
        throw ImportException(lineNo, "Unknown word '" + word + "'");
    return meanings.at(word);
}

void ReadHeading(std::istream& file, Table& table, int& lineNo)
{
    std::vector<std::string> const place = NextLine(file, lineNo, "\r");
    int number = 0;
    for (std::string const& word : NextLine(file, lineNo))
    {
        std::vector<std::string> parts;
        StringSplit(word, parts, "[]", true);
        if (parts.size() != 2)
            throw ImportException(lineNo, "Expected 'name[unit]' and not '" + word + "'");
        Quantity const quantity = Known(quantities, parts[0], lineNo);
        bool const isDate = quantity == Quantity::Date;
        Format const format = isDate ? Known(notations, parts[1], lineNo) : Format::Number;
        table.format.AddDataColumn(++number, quantity, parts[1], format);
        if (!isDate)
            table.interpreters.AddColumnInterpreter(number, new SurfaceMeasurement(place[0]));
    }
    if (table.format.GetColumnNumber(Quantity::Date).size() != 1)
        throw ImportException(lineNo, "Expected one column of dates");
}

double ReadNumber(std::string const& word)
{
    if (word == "-") // where there is no value
        return NullValue;
    double value = 0.0;
    char const* const end = word.data() + word.size();
    auto const [stop, error] = std::from_chars(word.data(), end, value);
    if (stop != end || error != std::errc())
        throw ServiceException("'" + word + "' is no number");
    return value;
}

// Whatever is wrong with a line is told with its number.
void ImportLine(std::vector<std::string> const& words, Table& table, int lineNo)
{
    auto const& columns = table.format.GetDataColumns();
    if (words.size() != columns.size())
        throw ImportException(lineNo, "Expected " + std::to_string(columns.size()) + " columns");
    try
    {
        int const date = table.format.GetColumnNumber(Quantity::Date).front();
        auto const wordOf = [&](int number) { return words[static_cast<std::size_t>(number) - 1]; };
        Time time;
        std::istringstream text(wordOf(date));
        text >> timeFormats.at(table.format.GetColumnFormat(date))(time);
        if (text.peek() != std::istringstream::traits_type::eof())
            throw ServiceException("'" + wordOf(date) + "' is no date");
        for (auto const& [number, quantity, unit, format] : columns)
            if (number != date)
                table.series[number].addSamplePoint(time, ReadNumber(wordOf(number)));
    }
    catch (std::exception const& e)
    {
        throw ImportException(lineNo, e.what());
    }
}

void Print(Table const& table)
{
    for (auto const& [number, series] : table.series)
    {
        auto const& at = dynamic_cast<SurfaceMeasurement&>(*table.interpreters.GetInterpreter(number));
        double const mean = series.getAverageValue(Time::MinTime(), Time::MaxTime(), Average::Point);
        std::cout << at.GetText() << ": mean " << mean << ' ' << table.format.GetColumnUnit(number) << '\n';
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::cerr << "Usage: import_columns <table.txt>\n";
        return 2;
    }
    try
    {
        std::ifstream file(argv[1]);
        if (!file)
            throw ServiceException("Cannot read '" + std::string(argv[1]) + "'");
        Table table;
        int lineNo = 0;
        ReadHeading(file, table, lineNo);
        for (auto words = NextLine(file, lineNo); !words.empty(); words = NextLine(file, lineNo))
            ImportLine(words, table, lineNo);
        Print(table);
        return 0;
    }
    catch (std::exception const& e)
    {
        std::cerr << e.what() << '\n';
        return 1;
    }
}
