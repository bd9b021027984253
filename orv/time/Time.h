#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializable.h"
#include "orv/time/Duration.h"

#include <cstddef>
#include <iosfwd>
#include <string>

namespace Zan::Orv::Core::Service {

class TimeOffset;

/// A moment of the proleptic Gregorian calendar, without a time zone, in whole milliseconds from the year
/// 1400 to the year 9999.
///
///     Time t(2000, 2, 29, 12, 0, 0, 0);
///     t += TimeOffset(1, 0, 0, 0, 0, 0, 0);    // calendar arithmetic: 2001-02-28 12:00:00.000, clamped
///     t += 90 * MINUTE;                        // exact arithmetic:    2001-02-28 13:30:00.000
///
/// The two ends of the range have a meaning: `MinTime()`, which is also what `Time()` gives, stands for "not
/// set" or the beginning of all time, `MaxTime()` for its end. `IsDef()` is false for these two alone.
///
/// Arithmetic may leave the range. The value is then still ordered rightly, up to more than 100,000 years
/// away, where it stays; reading a calendar field of a date outside the years 1400 to 10000 throws
/// `boost::gregorian::bad_year`, a `std::out_of_range`.
///
/// A plain value: no allocation, safe to share while nobody changes it, and a key for unordered containers.
class ORV_API Time : public ISerializable
{
public:
    /// The value of `MinTime()`.
    Time() = default;

    /// The date must exist. The time of day need not lie within the day: hour 25 is one o'clock of the next
    /// day. When one of hour, minute and second is negative, the magnitudes of all three are taken off the
    /// date's midnight. `millisecond` is added with its own sign.
    ///
    /// \throws std::out_of_range one of Boost.Date_Time's `bad_day_of_month`, `bad_month`, `bad_year`, for a
    ///     date that does not exist. Year, month and day are seen as 16-bit unsigned numbers there.
    /// \throws ServiceException for a year above 9999 that the calendar let pass.
    Time(int year, int month, int day, int hour, int minute, int second, int millisecond);

    Time(Time const&) = default;
    Time& operator=(Time const&) = default;
    ~Time() override = default;

    /// 1400-01-01 00:00:00.000
    static Time MinTime();
    /// 9999-12-31 23:59:59.999
    static Time MaxTime();

    /// The local time of the host, in whole seconds.
    /// \throws std::runtime_error when the host can not tell it.
    static Time Now();
    /// The local date at midnight.
    /// \throws std::runtime_error when the host can not tell it.
    static Time Today();

    /// False for the two ends of the range.
    bool IsDef() const { return count_ != minCount && count_ != maxCount; }

    /// \{
    /// Calendar fields: the month from 1, the day from 1, the day of the week from 0 for Sunday, the day of
    /// the year from 1.
    /// \throws std::out_of_range for a date outside the years 1400 to 10000.
    int GetYear() const;
    int GetMonth() const;
    int GetDay() const;
    int GetDayOfWeek() const;
    int GetDayOfYear() const;
    /// \}

    /// \{
    /// The time of the day: hours 0 to 23, minutes and seconds 0 to 59, milliseconds 0 to 999. Never throws.
    int GetHour() const;
    int GetMinute() const;
    int GetSecond() const;
    int GetMillisecond() const;
    /// \}

    bool operator==(Time const& other) const { return count_ == other.count_; }
    bool operator!=(Time const& other) const { return count_ != other.count_; }
    bool operator<(Time const& other) const { return count_ < other.count_; }
    bool operator<=(Time const& other) const { return count_ <= other.count_; }
    bool operator>(Time const& other) const { return count_ > other.count_; }
    bool operator>=(Time const& other) const { return count_ >= other.count_; }

    /// The milliseconds from `other` to this.
    long long operator-(Time const& other) const { return (count_ - other.count_) / ticksPerMillisecond; }

    /// Calendar addition: years and months first, with the day clamped to the length of the month, then the
    /// days, then the time. January 31st and a month is the last of February. The value is unchanged on failure.
    /// \throws std::out_of_range as the constructor, where years and months lead outside 1400 to 10000. The year
    ///     is seen as a 16-bit unsigned number here, too.
    Time& operator+=(TimeOffset const& offset);
    /// Calendar subtraction, in the same order and with the same failures.
    Time& operator-=(TimeOffset const& offset);

    /// Exact addition of milliseconds.
    Time& operator+=(long long const& milliseconds)
    {
        // Within these bounds, which hold thousands of years, nothing can overflow. One comparison sees both
        // ends.
        constexpr unsigned long long bound = outerCount / (2 * ticksPerMillisecond);
        constexpr unsigned long long countBound = outerCount / 2;
        if (static_cast<unsigned long long>(milliseconds) + bound <= 2 * bound &&
            static_cast<unsigned long long>(count_) <= countBound)
            count_ += milliseconds * ticksPerMillisecond;
        else
            AddFar(milliseconds);
        return *this;
    }
    /// Exact subtraction of milliseconds.
    Time& operator-=(long long const& milliseconds);

    /// The standard text, or "Min date" or "Max date".
    std::string GetAsString();

    /// The standard text as the string "time".
    void Serialize(Serializer& serializer) override;

private:
    // Microseconds since the start of day 0 of the Julian day numbering.
    static constexpr long long ticksPerMillisecond = 1000;
    static constexpr long long ticksPerDay = DAY * ticksPerMillisecond;
    static constexpr long long minCount = 2232400 * ticksPerDay; // 1400-01-01
    static constexpr long long maxCount =
        5373485 * ticksPerDay - ticksPerMillisecond; // the end of 9999-12-31
    // Counts stay within this bound on both sides, so that their difference fits.
    static constexpr long long outerCount = 4'000'000'000'000'000'000;

    void AddFar(long long milliseconds);
    long long WholeDays() const;
    long long MillisecondOfDay() const;
    static void FixDate(int& year, int& month, int& day);

    long long count_ = minCount;
};

/// \{
/// Write and read the standard text, "%Y-%m-%d %H:%M:%S.%L" in terms of `TimeFormat`, whose rules and
/// failures apply. The ends of the range are written as the dates that they are.
ORV_API std::ostream& operator<<(std::ostream& stream, Time const& time);
ORV_API std::istream& operator>>(std::istream& stream, Time& time);
/// \}

} // namespace Zan::Orv::Core::Service

/// For unordered containers. By the moment.
template<>
struct ORV_API std::hash<Zan::Orv::Core::Service::Time>
{
    std::size_t operator()(Zan::Orv::Core::Service::Time const& time) const noexcept;
};
