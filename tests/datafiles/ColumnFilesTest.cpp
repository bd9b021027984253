#include "orv/datafiles/ASCIIFileFormat.h"
#include "orv/datafiles/ASCIIFileInterpreter.h"
#include "orv/datafiles/ColumnInterpreter.h"
#include "orv/datafiles/ImportException.h"

#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <string>
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
    // Numbers that a caller changes are sought from the front, and sorted with the next column.
    format.DataColumnsBegin()->columnNumber = 7;
    EXPECT_EQ(format.GetColumnUnit(2), "psi");
    EXPECT_EQ(format.GetColumnQuantity(7), Quantity::Date);
    format.AddDataColumn(2, Quantity::Pressure, "kPa", Format::Integer);
    ASCIIFileFormat copy;
    copy = ASCIIFileFormat(format);
    EXPECT_EQ(Shown(copy), "2psi 2kPa 5bar 7 ");

    EXPECT_EQ(format.GetColumnNumber(Quantity::Pressure), (std::vector<int>{2, 2, 5}));
    EXPECT_TRUE(format.GetColumnNumber(Quantity::Power).empty());
    // The first column of a number answers for it, and nobody for 3.
    EXPECT_EQ(format.GetColumnUnit(2) + format.GetColumnUnit(3), "psi");
    EXPECT_EQ(format.GetColumnFormat(2), Format::Number);
    EXPECT_TRUE(format.IsColumnNumberAppropriated(2) && !format.IsColumnNumberAppropriated(3));
}

// Notes when it goes.
struct Mortal : SurfaceMeasurement
{
    explicit Mortal(int& deaths) : SurfaceMeasurement("Station 7"), deaths_(deaths) {}
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
        interpreters.AddColumnInterpreter(1, second);
        EXPECT_EQ(deaths, 1);
        interpreters.AddColumnInterpreter(3, new Mortal(deaths));
        interpreters.AddColumnInterpreter(3, nullptr);
        EXPECT_EQ(deaths, 2);
        EXPECT_EQ(interpreters.GetInterpreter(3), nullptr);
        EXPECT_EQ(static_cast<int>(interpreters.GetInterpreter(1)->GetMeasurementsAt()), 1);
        EXPECT_EQ(second->GetText(), "Station 7");

        // A copy has the same pointers, and an assignment drops what there was without deleting it.
        ASCIIFileInterpreter const copy(interpreters);
        interpreters = ASCIIFileInterpreter();
        EXPECT_EQ(interpreters.GetInterpreter(1), nullptr);
        EXPECT_EQ(copy.GetInterpreter(1), second);
        EXPECT_EQ(deaths, 2);
    }
    EXPECT_EQ(deaths, 3);
}

TEST(ImportException, NamesTheLine)
{
    EXPECT_TRUE(Throws<Exception>([] { throw ImportException(-7, "No number"); }, "No number at line -7"));
    EXPECT_EQ(ImportException(7, "text").GetLineNo(), 7);
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
