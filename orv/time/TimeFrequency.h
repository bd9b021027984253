#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializable.h"

#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>

namespace Zan::Orv::Core::Service {

class TimeOffset;

/// A repeat interval: one count of one unit. Any count is allowed. A week is seven days. A plain
/// value, which can be a key of unordered containers.
class ORV_API TimeFrequency : public ISerializable
{
public:
    /// The units, and their names.
    struct FrequencyUnit
    {
        /// The unit that is counted.
        enum Enum : int
        {
            Years = 0,
            Months = 1,
            Days = 2,
            Hours = 3,
            Minutes = 4,
            Seconds = 5,
            Milliseconds = 6
        };

        /// The names of the units, for `DefaultEnumConverter`.
        struct ORV_API EnumMap
        {
            /// The enumeration.
            using EnumType = Enum;
            /// Replaces `names` by the names of all units.
            static void Fill(std::map<Enum, std::string>& names);
        };
    };

    /// Every year.
    TimeFrequency() = default;
    /// Every `value` of `unit`.
    TimeFrequency(int value, FrequencyUnit::Enum unit);
    TimeFrequency(TimeFrequency const&) = default;
    TimeFrequency& operator=(TimeFrequency const&) = default;
    ~TimeFrequency() override = default;

    /// The count.
    int GetValue() const { return value_; }
    /// Any count is allowed, and no other field changes.
    void SetValue(int value) { value_ = value; }
    /// The unit.
    FrequencyUnit::Enum GetFrequencyUnit() const { return unit_; }
    /// The count stays.
    void SetFrequencyUnit(FrequencyUnit::Enum unit) { unit_ = unit; }

    /// "Years" to "Milliseconds".
    /// \throws std::runtime_error for a unit outside the enumeration.
    std::string GetFrequencyUnitAsString() const;
    /// "2 Days", "1 Day".
    /// \throws std::runtime_error for a unit outside the enumeration.
    std::string GetAsString() const;

    /// The interval as an offset.
    /// \throws TimeException for a unit outside the enumeration.
    TimeOffset GetTimeOffset() const;

    /// By both fields: one year and 12 months are different frequencies.
    bool operator==(TimeFrequency const& other) const;
    bool operator!=(TimeFrequency const& other) const;

    /// The integer "value" and the unit's name as "frequency_unit". Reading restores the value and leaves the
    /// unit as it was.
    void Serialize(Serializer& serializer) override;

private:
    int value_ = 1;
    FrequencyUnit::Enum unit_ = FrequencyUnit::Years;
};

/// "0 00 2 00:00:00.000" for two days: the layout of `TimeOffset`, not normalised and without plus signs. What is
/// written of -1 to -9 milliseconds, ".0-5", can not be read.
/// Leaves the stream with the fill character '0' and without `showpos`.
/// \throws TimeException for a unit outside the enumeration.
ORV_API std::ostream& operator<<(std::ostream& stream, TimeFrequency const& frequency);

/// Reads that layout.
/// \throws TimeException unless exactly one of the seven numbers is not zero.
ORV_API std::istream& operator>>(std::istream& stream, TimeFrequency& frequency);

/// Reads a number and a unit of `ParseTimeOffset` at the head of `text`, as in "2 weeks". What follows is
/// ignored.
/// \throws TimeException "Invalid time offset unit: '...'", with an empty unit for a text of another shape.
ORV_API TimeFrequency ParseTimeFrequency(std::string const& text);

} // namespace Zan::Orv::Core::Service

/// For unordered containers. By both fields, as equality is.
template<>
struct ORV_API std::hash<Zan::Orv::Core::Service::TimeFrequency>
{
    std::size_t operator()(Zan::Orv::Core::Service::TimeFrequency const& frequency) const noexcept;
};
