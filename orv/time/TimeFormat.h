#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializable.h"

#include <iosfwd>
#include <string>

namespace Zan::Orv::Core::Service {

class Time;

/// The text form of a `Time`, by a format in the manner of strftime.
///
///     TimeFormat const format("%d %b %Y, %H:%M");
///     std::cout << format(time);
///     std::cin >> format(time);
///
/// The codes are %% %A %B %E %H %I %L %M %S %U %W %X %Y %Z %a %b %c %d %j %m %p %w %x %y. %L is the
/// millisecond and %E the month as JAN FEB MAR APR MAY JUN JLY AUG SEP OCT NOV DEC; on reading, JUL is July
/// as well. The others are those of `std::time_put`. Names follow the global locale at the moment of use.
///
/// Reading. White space in the format skips any white space, every other character must stand in the text.
/// Numbers have up to the digits of their code (%Y 4, %j and %L 3, %w 1, the others 2), unsigned, and no
/// digit at all reads as 0. %L counts milliseconds: "5" is 5 ms and no fraction. %y below 69 is of this
/// century. %I needs its %p behind it. Week numbers, days of the week and of the year are checked and
/// dropped. What the format does not name is taken from 1400-01-01 00:00:00.000. What follows in the stream
/// is left there.
///
/// A format is not tested until it is used. It may be shared between threads while nobody changes it.
class ORV_API TimeFormat : public ISerializable
{
public:
    /// A format with its `Time`, for one stream expression: both must outlive it.
    struct BoundTimeFormat
    {
        TimeFormat const* format; ///< borrowed
        Time* time;               ///< borrowed
    };

    /// The text is kept as it is, and not tested.
    TimeFormat(std::string const& format);
    TimeFormat(TimeFormat const&) = default;
    TimeFormat(TimeFormat&&) = default;
    TimeFormat& operator=(TimeFormat const&) = default;
    TimeFormat& operator=(TimeFormat&&) = default;
    ~TimeFormat() override = default;

    /// The text of the format.
    std::string GetFormat() const { return format_; }
    /// Replaces the text, which is not tested.
    void SetFormat(std::string const& format) { format_ = format; }

    /// Binds for reading or writing.
    BoundTimeFormat operator()(Time& time) const;
    /// Binds for writing.
    BoundTimeFormat operator()(Time const& time) const;

    /// The format as the string "timeFormat".
    void Serialize(Serializer& serializer) override;

private:
    friend class TimeFormatCreator;
    friend ORV_API std::ostream& operator<<(std::ostream& stream, BoundTimeFormat const& bound);
    friend ORV_API std::istream& operator>>(std::istream& stream, BoundTimeFormat const& bound);

    TimeFormat() = default; // for the factory alone

    std::string format_;
};

/// Writes the time. Leaves the stream with the fill character '0' behind a %L.
/// \throws TimeException for a code that does not exist or ends too early. What stands before it is written.
/// \throws std::out_of_range `bad_year` for a time outside the calendar.
ORV_API std::ostream& operator<<(std::ostream& stream, TimeFormat::BoundTimeFormat const& bound);

/// Reads the time, which changes only on success.
/// \throws TimeException for a text that does not fit the format, a bad code, or a number out of range.
/// \throws std::out_of_range of the constructor of `Time`, for a date that does not exist.
ORV_API std::istream& operator>>(std::istream& stream, TimeFormat::BoundTimeFormat const& bound);

} // namespace Zan::Orv::Core::Service
