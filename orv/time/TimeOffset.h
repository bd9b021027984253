#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializable.h"

#include <cstddef>
#include <iosfwd>
#include <string>

namespace Zan::Orv::Core::Service {

class Time;

/// A calendar distance: seven counts, from years to milliseconds. Years and months have no fixed length until
/// they are added to a `Time`.
///
/// The counts are kept normalised: months in 0..11, hours in 0..23, minutes and seconds in 0..59,
/// milliseconds in 0..999, while years and days carry the sign. Minus one hour is held as days -1, hours 23.
/// Days are never carried into months. Numbers beyond the range of `int` wrap.
///
/// A plain value, which can be a key of unordered containers.
class ORV_API TimeOffset : public ISerializable
{
public:
    /// From seven counts of any sign, which are normalised.
    TimeOffset(int years, int months, int days, int hours, int minutes, int seconds, int milliseconds);

    /// From a count of milliseconds.
    TimeOffset(long long const& duration = 0);

    /// The calendar distance: the differences of the fields, with days borrowed from a positive difference of
    /// months by the length of `from`'s month. Where no end of a month lies between, `from` plus it gives `to`.
    /// \throws std::out_of_range `bad_year` for a time outside the calendar.
    TimeOffset(Time const& to, Time const& from);

    TimeOffset(TimeOffset const&) = default;
    TimeOffset& operator=(TimeOffset const&) = default;
    ~TimeOffset() override = default;

    /// \{
    /// The normalised counts.
    int GetYears() const { return years_; }
    int GetMonths() const { return months_; }
    int GetDays() const { return days_; }
    int GetHours() const { return hours_; }
    int GetMinutes() const { return minutes_; }
    int GetSeconds() const { return seconds_; }
    int GetMilliseconds() const { return milliseconds_; }
    /// \}

    /// \{
    /// Each stores its field and normalises: 13 months become 1 year more and 1 month.
    void SetYears(int years);
    void SetMonths(int months);
    void SetDays(int days);
    void SetHours(int hours);
    void SetMinutes(int minutes);
    void SetSeconds(int seconds);
    void SetMilliseconds(int milliseconds);
    /// \}

    /// By the normalised counts: 24 hours equal 1 day and 12 months 1 year, but 30 days are not 1 month.
    bool operator==(TimeOffset const& other) const;
    bool operator!=(TimeOffset const& other) const;

    /// \{
    /// Field by field, and normalised.
    TimeOffset& operator+=(TimeOffset const& other);
    TimeOffset& operator-=(TimeOffset const& other);
    /// \}

    /// In milliseconds.
    /// \throws TimeException for an offset with years or months, which have no length of their own.
    long long GetTimeDuration() const;

    /// Seven integers named "years" to "milliseconds". What is read is not normalised.
    void Serialize(Serializer& serializer) override;

private:
    void Normalize();

    int years_ = 0;
    int months_ = 0;
    int days_ = 0;
    int hours_ = 0;
    int minutes_ = 0;
    int seconds_ = 0;
    int milliseconds_ = 0;
};

/// "+1 02 +3 04:05:06.007": years, months, days and the time. Leaves the stream with the fill character '0'
/// and without `showpos`.
ORV_API std::ostream& operator<<(std::ostream& stream, TimeOffset const& offset);

/// Reads the seven numbers; what separates them is not looked at. A failure shows in the stream's state.
ORV_API std::istream& operator>>(std::istream& stream, TimeOffset& offset);

/// Reads terms such as "+ 2 months - 3 days+4h": a sign, a number, a unit, with white space between them. The
/// units are
///
///     years year yrs yr y, months month, weeks week wks wk w, days day d,
///     hours hour hrs hr h, minutes minute mins min, seconds second secs sec s, milliseconds millisecond ms
///
/// in any case. Reading ends without an error where no term stands: a text without a leading sign is the zero
/// offset. A line break behind a term's unit ends the reading before that term. Linear in the text.
/// \throws TimeException "Invalid time offset unit: '...'".
ORV_API TimeOffset ParseTimeOffset(std::string const& text);

} // namespace Zan::Orv::Core::Service

/// For unordered containers. By the seven counts.
template<>
struct ORV_API std::hash<Zan::Orv::Core::Service::TimeOffset>
{
    std::size_t operator()(Zan::Orv::Core::Service::TimeOffset const& offset) const noexcept;
};
