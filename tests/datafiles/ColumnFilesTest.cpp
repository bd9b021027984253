#include "orv/datafiles/ASCIIFileFormat.h"
#include "orv/datafiles/ASCIIFileInterpreter.h"
#include "orv/datafiles/ColumnInterpreter.h"
#include "orv/datafiles/ImportException.h"

#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using Quantity = ASCIIFileFormat::ColumnQuantity;
using Format = ASCIIFileFormat::ColumnFormat;

std::string Shown(ASCIIFileFormat const& format)
{
    std::string text;
    for (auto column = format.DataColumnsBegin(); column != format.DataColumnsEnd(); ++column)
        text += std::to_string(format.GetDataColumn(column).columnNumber) + column->unit + ' ';
    return text;
}

TEST(ASCIIFileFormat, KeepsColumnsInOrderOfTheirNumbers)
{
    ASCIIFileFormat format;
    format.AddDataColumn(5, Quantity::Pressure, "bar", Format::Number);
    format.AddDataColumn(2, Quantity::Pressure, "psi", Format::Number);
    format.AddDataColumn(-1, Quantity::Date, "", Format::DayMonthYear);
    format.AddDataColumn(2, Quantity::Pressure, "kPa", Format::Integer);
    EXPECT_EQ(Shown(format), "-1 2psi 2kPa 5bar ");
    EXPECT_EQ(format.GetColumnNumber(Quantity::Pressure), (std::vector<int>{2, 2, 5}));
    EXPECT_TRUE(format.GetColumnNumber(Quantity::Depth).empty());

    // Numbers that a caller changes are sought from the front, and sorted with the next column.
    ASCIIFileFormat const before = format;
    format.DataColumnsBegin()->columnNumber = 7;
    EXPECT_EQ(format.GetColumnUnit(2), "psi");
    EXPECT_EQ(format.GetColumnQuantity(7), Quantity::Date);
    format.AddDataColumn(7, Quantity::Depth, "m", Format::Number);
    EXPECT_EQ(Shown(format), "2psi 2kPa 5bar 7 7m ");
    EXPECT_EQ(Shown(before), "-1 2psi 2kPa 5bar ");
}

TEST(ASCIIFileFormat, AnswersByTheFirstColumnOfANumber)
{
    ASCIIFileFormat format;
    format.AddDataColumn(2, Quantity::OilRate, "m3/d", Format::Number);
    format.AddDataColumn(2, Quantity::Date, "", Format::Text);
    EXPECT_EQ(format.GetColumnUnit(2), "m3/d");
    EXPECT_EQ(format.GetColumnFormat(2), Format::Number);
    EXPECT_EQ(format.GetColumnQuantity(2), Quantity::OilRate);
    EXPECT_TRUE(format.IsColumnNumberAppropriated(2) && !format.IsColumnNumberAppropriated(3));
    EXPECT_EQ(format.GetColumnUnit(3), "");
    EXPECT_EQ(static_cast<int>(format.GetColumnFormat(3)), 0);
    EXPECT_EQ(static_cast<int>(format.GetColumnQuantity(3)), 0);
}

// Notes when it goes.
struct Mortal : ColumnInterpreter
{
    explicit Mortal(int& deaths) : ColumnInterpreter(MeasurementsAt::Downhole), deaths_(deaths) {}
    ~Mortal() override { ++deaths_; }
    int& deaths_;
};

TEST(ASCIIFileInterpreter, OwnsTheInterpreters)
{
    int deaths = 0;
    {
        ASCIIFileInterpreter interpreters;
        auto* const second = new Mortal(deaths);
        interpreters.AddColumnInterpreter(1, new Mortal(deaths));
        interpreters.AddColumnInterpreter(1, second);
        EXPECT_EQ(deaths, 1);
        interpreters.AddColumnInterpreter(1, second);
        EXPECT_EQ(deaths, 1);
        EXPECT_EQ(interpreters.GetInterpreter(1), second);
        EXPECT_EQ(interpreters.GetInterpreter(2), nullptr);

        interpreters.AddColumnInterpreter(3, nullptr);
        interpreters.AddColumnInterpreter(3, new Mortal(deaths));
        interpreters.AddColumnInterpreter(1, nullptr);
        EXPECT_EQ(deaths, 2);
        EXPECT_EQ(interpreters.GetInterpreter(1), nullptr);
    }
    EXPECT_EQ(deaths, 3);
}

TEST(ASCIIFileInterpreter, CopiesPointersAndNotWhatTheyPointTo)
{
    int deaths = 0;
    {
        ASCIIFileInterpreter source;
        auto* const shared = new Mortal(deaths);
        source.AddColumnInterpreter(1, shared);
        ASCIIFileInterpreter copy(source);
        source = ASCIIFileInterpreter(); // drops what it had without deleting it
        EXPECT_EQ(source.GetInterpreter(1), nullptr);
        EXPECT_EQ(copy.GetInterpreter(1), shared);
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 1);
}

TEST(SurfaceMeasurement, IsAtTheSurface)
{
    SurfaceMeasurement measurement("Station 7");
    EXPECT_EQ(static_cast<int>(measurement.GetMeasurementsAt()), 1);
    EXPECT_EQ(SurfaceMeasurement(std::move(measurement)).GetText(), "Station 7");
}

TEST(ImportException, NamesTheLine)
{
    EXPECT_TRUE(Throws<Exception>([] { throw ImportException(-7, "No number"); }, "No number at line -7"));
    ImportException exception(7, "text");
    EXPECT_EQ(ImportException(std::move(exception)).GetLineNo(), 7);
    EXPECT_STREQ(exception.what(), "text at line 7"); // moving copies
    static_assert(std::is_nothrow_copy_constructible_v<ImportException>);
    static_assert(std::is_nothrow_copy_assignable_v<ImportException>);
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
