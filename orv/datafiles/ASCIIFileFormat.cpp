#include "orv/datafiles/ASCIIFileFormat.h"

#include <algorithm>

namespace Zan::Orv::Core::Service {

ASCIIFileFormat::ASCIIFileFormat() = default;
ASCIIFileFormat::ASCIIFileFormat(ASCIIFileFormat const&) = default;
ASCIIFileFormat& ASCIIFileFormat::operator=(ASCIIFileFormat const&) = default;
ASCIIFileFormat::~ASCIIFileFormat() = default;

void ASCIIFileFormat::AddDataColumn(int columnNumber, ColumnQuantity quantity, std::string const& unit,
                                    ColumnFormat format)
{
    columns_.push_back({columnNumber, quantity, unit, format});
    // All of them: numbers may have been changed through an iterator.
    std::stable_sort(columns_.begin(), columns_.end(), [](DataColumn const& a, DataColumn const& b) {
        return a.columnNumber < b.columnNumber;
    });
}

std::vector<int> ASCIIFileFormat::GetColumnNumber(ColumnQuantity quantity) const
{
    std::vector<int> numbers;
    for (DataColumn const& column : columns_)
        if (column.quantity == quantity)
            numbers.push_back(column.columnNumber);
    return numbers;
}

std::string ASCIIFileFormat::GetColumnUnit(int columnNumber) const
{
    DataColumn const* const column = Find(columnNumber);
    return column != nullptr ? column->unit : std::string();
}

ASCIIFileFormat::ColumnFormat ASCIIFileFormat::GetColumnFormat(int columnNumber) const
{
    DataColumn const* const column = Find(columnNumber);
    return column != nullptr ? column->format : ColumnFormat::Unknown;
}

ASCIIFileFormat::ColumnQuantity ASCIIFileFormat::GetColumnQuantity(int columnNumber) const
{
    DataColumn const* const column = Find(columnNumber);
    return column != nullptr ? column->quantity : ColumnQuantity::Unknown;
}

bool ASCIIFileFormat::IsColumnNumberAppropriated(int columnNumber) const
{
    return Find(columnNumber) != nullptr;
}

// From the front, for the same reason as above.
ASCIIFileFormat::DataColumn const* ASCIIFileFormat::Find(int columnNumber) const
{
    for (DataColumn const& column : columns_)
        if (column.columnNumber == columnNumber)
            return &column;
    return nullptr;
}

} // namespace Zan::Orv::Core::Service
