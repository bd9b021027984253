#include "orv/time/TimeFrequency.h"

#include "orv/foundation/Exception.h"
#include "orv/foundation/internal/Hash.h"
#include "orv/serialization/EnumWrapper.h"
#include "orv/serialization/Serializer.h"
#include "orv/time/TimeOffset.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <istream>
#include <ostream>

namespace Zan::Orv::Core::Service {

namespace {

using UnitConverter = DefaultEnumConverter<TimeFrequency::FrequencyUnit::EnumMap>;

// One number for each unit, from years to milliseconds.
using Fields = std::array<int, 7>;

Fields FieldsOf(TimeFrequency const& frequency)
{
    Fields fields{};
    auto const unit = static_cast<std::size_t>(frequency.GetFrequencyUnit());
    if (unit >= fields.size())
        throw TimeException("Internal error: Frequency Unit conversion failed");
    fields[unit] = frequency.GetValue();
    return fields;
}

} // namespace

void TimeFrequency::FrequencyUnit::EnumMap::Fill(std::map<Enum, std::string>& names)
{
    names = {{Years, "Years"},
             {Months, "Months"},
             {Days, "Days"},
             {Hours, "Hours"},
             {Minutes, "Minutes"},
             {Seconds, "Seconds"},
             {Milliseconds, "Milliseconds"}};
}

TimeFrequency::TimeFrequency(int value, FrequencyUnit::Enum unit) : value_(value), unit_(unit)
{}

std::string TimeFrequency::GetFrequencyUnitAsString() const
{
    return UnitConverter::ToString(unit_);
}

std::string TimeFrequency::GetAsString() const
{
    std::string text = std::to_string(value_) + ' ' + GetFrequencyUnitAsString();
    if (value_ == 1)
        text.pop_back();
    return text;
}

TimeOffset TimeFrequency::GetTimeOffset() const
{
    auto const [years, months, days, hours, minutes, seconds, milliseconds] = FieldsOf(*this);
    return TimeOffset(years, months, days, hours, minutes, seconds, milliseconds);
}

bool TimeFrequency::operator==(TimeFrequency const& other) const
{
    return value_ == other.value_ && unit_ == other.unit_;
}

bool TimeFrequency::operator!=(TimeFrequency const& other) const
{
    return !(*this == other);
}

void TimeFrequency::Serialize(Serializer& serializer)
{
    serializer.Serialize(value_, "value");
    // The unit that was read is not taken back: documents have always been read so.
    EnumWrapper<UnitConverter> unit(unit_);
    serializer.Serialize(unit, "frequency_unit");
}

std::ostream& operator<<(std::ostream& stream, TimeFrequency const& frequency)
{
    static constexpr std::array<int, 7> widths = {0, 2, 0, 2, 2, 2, 3};
    static constexpr char separators[] = "   ::.";

    Fields const fields = FieldsOf(frequency);
    stream << std::setfill('0') << std::noshowpos;
    for (std::size_t i = 0; i < fields.size(); ++i)
    {
        stream << std::setw(widths[i]) << fields[i];
        if (i + 1 < fields.size())
            stream << separators[i];
    }
    return stream;
}

std::istream& operator>>(std::istream& stream, TimeFrequency& frequency)
{
    Fields fields{};
    char separator = 0;
    for (std::size_t i = 0; i < fields.size(); ++i)
    {
        if (i > 3) // blanks separate the numbers up to the hours, any characters those of the time
            stream >> separator;
        stream >> fields[i];
    }

    auto const isSet = [](int field) { return field != 0; };
    if (std::count_if(fields.begin(), fields.end(), isSet) != 1)
        throw TimeException("String does not represent a time frequency.");
    auto const found = std::find_if(fields.begin(), fields.end(), isSet);
    frequency.SetValue(*found);
    frequency.SetFrequencyUnit(static_cast<TimeFrequency::FrequencyUnit::Enum>(found - fields.begin()));
    return stream;
}

} // namespace Zan::Orv::Core::Service

std::size_t std::hash<Zan::Orv::Core::Service::TimeFrequency>::operator()(
    Zan::Orv::Core::Service::TimeFrequency const& frequency) const noexcept
{
    return Zan::Orv::Core::Service::Internal::HashOf(frequency.GetValue(), frequency.GetFrequencyUnit());
}
