#pragma once

#include "orv/Export.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Zan::Orv::Core::Service {

/// What the columns of a text file hold: which quantity, in which unit, written in which way. It reads no
/// file and checks nothing; the program that reads the file asks it, and counts columns as it likes.
///
///     using Format = ASCIIFileFormat;
///     Format format;
///     format.AddDataColumn(1, Format::ColumnQuantity::Date, "", Format::ColumnFormat::YearMonthDay);
///     format.AddDataColumn(2, Format::ColumnQuantity::Pressure, "bar", Format::ColumnFormat::Number);
///
/// Columns stand in ascending order of their numbers, and those with the same number in the order in which
/// they were added; where one is asked for by number, the first counts. A plain value.
class ORV_API ASCIIFileFormat
{
public:
    /// What a column holds. In parentheses the usual units; the column names its own.
    enum class ColumnQuantity : std::int32_t
    {
        Unknown = 0,

        Name = 1,          ///< of a well, a station, a sample
        Date = 2,          ///< the day
        TimeOfDay = 3,     ///< beside a date
        DateAndTime = 4,   ///< both in one column
        ElapsedTime = 5,   ///< since a start that the program knows (h, d)
        ProducingTime = 6, ///< how long a well was open within the interval (h, d)

        Pressure = 10,    ///< (bar, kPa, psi)
        Temperature = 11, ///< (degC, degF, K)
        Depth = 12,       ///< below a datum (m, ft)
        Length = 13,      ///< (m, ft)
        Opening = 14,     ///< of a choke or valve (mm, 1/64 in, %)

        OilRate = 20,            ///< (m3/d, stb/d)
        WaterRate = 21,          ///< (m3/d, stb/d)
        GasRate = 22,            ///< at standard conditions (m3/d, Mscf/d)
        LiquidRate = 23,         ///< oil and water (m3/d, stb/d)
        WaterInjectionRate = 24, ///< (m3/d, stb/d)
        GasInjectionRate = 25,   ///< at standard conditions (m3/d, Mscf/d)
        MassRate = 26,           ///< (kg/s, t/h)

        OilVolume = 30,            ///< produced so far (m3, stb)
        WaterVolume = 31,          ///< produced so far (m3, stb)
        GasVolume = 32,            ///< produced so far, at standard conditions (m3, Mscf)
        WaterInjectionVolume = 33, ///< injected so far (m3, stb)
        GasInjectionVolume = 34,   ///< injected so far, at standard conditions (m3, Mscf)

        GasOilRatio = 40,   ///< (m3/m3, scf/stb)
        WaterCut = 41,      ///< water in the liquid (fraction, %)
        Concentration = 42, ///< (ppm, kg/m3)

        Density = 50,      ///< (kg/m3, lb/ft3)
        Viscosity = 51,    ///< (mPa.s, cP)
        Porosity = 52,     ///< (fraction, %)
        Permeability = 53, ///< (mD)
        Saturation = 54,   ///< (fraction, %)

        Power = 60 ///< (kW, hp)
    };

    /// How the values of a column are written.
    enum class ColumnFormat : std::int32_t
    {
        Unknown = 0,

        Text = 1,               ///< as it stands
        Integer = 2,            ///< 1250
        Number = 3,             ///< 12.5 or 1.25e1
        NumberDecimalComma = 4, ///< 12,5

        YearMonthDay = 10,        ///< 2000-12-31
        CompactYearMonthDay = 11, ///< 20001231
        DayMonthYear = 12,        ///< 31/12/2000
        MonthDayYear = 13,        ///< 12/31/2000
        DayNameOfMonthYear = 14,  ///< 31 DEC 2000
        FreeFormDate = 15,        ///< as a person writes it

        HourMinute = 20,      ///< 23:59
        HourMinuteSecond = 21 ///< 23:59:59
    };

    /// The description of one column.
    struct DataColumn
    {
        int columnNumber;        ///< as the program counts
        ColumnQuantity quantity; ///< what stands there
        std::string unit;        ///< in any spelling; the library does not read it
        ColumnFormat format;     ///< how it is written
    };

    /// All columns of a file.
    using DataColumns = std::vector<DataColumn>;

    ASCIIFileFormat();
    ASCIIFileFormat(ASCIIFileFormat const&);
    ASCIIFileFormat& operator=(ASCIIFileFormat const&);
    ~ASCIIFileFormat();

    /// Puts a column into its place. One with the same number stays beside it.
    void AddDataColumn(int columnNumber, ColumnQuantity quantity, std::string const& unit,
                       ColumnFormat format);

    /// The numbers of all columns with this quantity, ascending.
    std::vector<int> GetColumnNumber(ColumnQuantity quantity) const;

    /// \{
    /// Of a column that is not described: an empty text and `Unknown`.
    std::string GetColumnUnit(int columnNumber) const;
    ColumnFormat GetColumnFormat(int columnNumber) const;
    ColumnQuantity GetColumnQuantity(int columnNumber) const;
    /// \}

    /// True when the column is described.
    bool IsColumnNumberAppropriated(int columnNumber) const;

    /// All columns, in ascending order.
    DataColumns const& GetDataColumns() const { return columns_; }

    /// \{
    /// Who changes a number by these disturbs the order until the next `AddDataColumn`.
    DataColumns::iterator DataColumnsBegin() { return columns_.begin(); }
    DataColumns::iterator DataColumnsEnd() { return columns_.end(); }
    DataColumns::const_iterator DataColumnsBegin() const { return columns_.begin(); }
    DataColumns::const_iterator DataColumnsEnd() const { return columns_.end(); }
    /// \}

    /// A copy of the column that the iterator designates.
    DataColumn GetDataColumn(DataColumns::iterator column) const { return *column; }
    DataColumn GetDataColumn(DataColumns::const_iterator column) const { return *column; }

private:
    DataColumn const* Find(int columnNumber) const;

    DataColumns columns_;
};

} // namespace Zan::Orv::Core::Service
