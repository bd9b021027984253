#include "orv/time/TimeOffset.h"

#include "orv/foundation/Exception.h"
#include "orv/foundation/internal/Hash.h"
#include "orv/serialization/Serializer.h"
#include "orv/time/Time.h"
#include "orv/time/internal/Calendar.h"

#include <iomanip>
#include <istream>
#include <ostream>

namespace Zan::Orv::Core::Service {

namespace {

// Moves whole units of `low` into `high`, keeping the sign of what remains.
void Carry(long long& low, long long& high, int unit)
{
    high += low / unit;
    low %= unit;
}

void Borrow(long long& low, long long& high, int unit)
{
    if (low < 0)
    {
        --high;
        low += unit;
    }
}

int Wrapped(long long value)
{
    return static_cast<int>(value);
}

// The seven numbers of the text form: fractions of the time are padded, the sign is shown where one can be.
void WriteField(std::ostream& stream, int value, int width, char const* separator)
{
    stream << std::setw(width) << std::noshowpos << value << separator;
}

} // namespace

TimeOffset::TimeOffset(int years, int months, int days, int hours, int minutes, int seconds, int milliseconds)
    : years_(years), months_(months), days_(days), hours_(hours), minutes_(minutes), seconds_(seconds),
      milliseconds_(milliseconds)
{
    Normalize();
}

TimeOffset::TimeOffset(long long const& duration)
    // Whole days at once, as the hours of a long duration would not fit; the rest is at most a day of either
    // sign.
    : days_(Wrapped(duration / DAY)), hours_(Wrapped(duration % DAY / HOUR)),
      minutes_(Wrapped(duration % HOUR / MINUTE)), seconds_(Wrapped(duration % MINUTE / SECOND)),
      milliseconds_(Wrapped(duration % SECOND))
{
    Normalize();
}

TimeOffset::TimeOffset(Time const& to, Time const& from)
    : years_(to.GetYear() - from.GetYear()), months_(to.GetMonth() - from.GetMonth()),
      days_(to.GetDay() - from.GetDay()), hours_(to.GetHour() - from.GetHour()),
      minutes_(to.GetMinute() - from.GetMinute()), seconds_(to.GetSecond() - from.GetSecond()),
      milliseconds_(to.GetMillisecond() - from.GetMillisecond())
{
    if (months_ >= 1 && days_ < 0 && to > from)
    {
        days_ += Internal::LastDayOfMonth(from.GetYear(), from.GetMonth());
        --months_;
    }
    Normalize();
}

void TimeOffset::Normalize()
{
    auto const isWithin = [](int value, unsigned limit) { return static_cast<unsigned>(value) < limit; };
    if (isWithin(milliseconds_, 1000) && isWithin(seconds_, 60) && isWithin(minutes_, 60) &&
        isWithin(hours_, 24) && isWithin(months_, 12))
        return;

    long long years = years_;
    long long months = months_;
    long long days = days_;
    long long hours = hours_;
    long long minutes = minutes_;
    long long seconds = seconds_;
    long long milliseconds = milliseconds_;

    Carry(milliseconds, seconds, 1000);
    Carry(seconds, minutes, 60);
    Carry(minutes, hours, 60);
    Carry(hours, days, 24);
    Carry(months, years, 12);

    // Two chains: the one ends in days and the other in years. A month has no number of days to lend.
    Borrow(milliseconds, seconds, 1000);
    Borrow(seconds, minutes, 60);
    Borrow(minutes, hours, 60);
    Borrow(hours, days, 24);
    Borrow(months, years, 12);

    years_ = Wrapped(years);
    months_ = Wrapped(months);
    days_ = Wrapped(days);
    hours_ = Wrapped(hours);
    minutes_ = Wrapped(minutes);
    seconds_ = Wrapped(seconds);
    milliseconds_ = Wrapped(milliseconds);
}

void TimeOffset::SetYears(int years)
{
    years_ = years;
    Normalize();
}

void TimeOffset::SetMonths(int months)
{
    months_ = months;
    Normalize();
}

void TimeOffset::SetDays(int days)
{
    days_ = days;
    Normalize();
}

void TimeOffset::SetHours(int hours)
{
    hours_ = hours;
    Normalize();
}

void TimeOffset::SetMinutes(int minutes)
{
    minutes_ = minutes;
    Normalize();
}

void TimeOffset::SetSeconds(int seconds)
{
    seconds_ = seconds;
    Normalize();
}

void TimeOffset::SetMilliseconds(int milliseconds)
{
    milliseconds_ = milliseconds;
    Normalize();
}

bool TimeOffset::operator==(TimeOffset const& other) const
{
    return years_ == other.years_ && months_ == other.months_ && days_ == other.days_ &&
           hours_ == other.hours_ && minutes_ == other.minutes_ && seconds_ == other.seconds_ &&
           milliseconds_ == other.milliseconds_;
}

bool TimeOffset::operator!=(TimeOffset const& other) const
{
    return !(*this == other);
}

TimeOffset& TimeOffset::operator+=(TimeOffset const& other)
{
    auto const sum = [](int a, int b) { return Wrapped(static_cast<long long>(a) + b); };
    return *this = TimeOffset(sum(years_, other.years_), sum(months_, other.months_), sum(days_, other.days_),
                              sum(hours_, other.hours_), sum(minutes_, other.minutes_),
                              sum(seconds_, other.seconds_), sum(milliseconds_, other.milliseconds_));
}

TimeOffset& TimeOffset::operator-=(TimeOffset const& other)
{
    auto const difference = [](int a, int b) { return Wrapped(static_cast<long long>(a) - b); };
    return *this = TimeOffset(difference(years_, other.years_), difference(months_, other.months_),
                              difference(days_, other.days_), difference(hours_, other.hours_),
                              difference(minutes_, other.minutes_), difference(seconds_, other.seconds_),
                              difference(milliseconds_, other.milliseconds_));
}

long long TimeOffset::GetTimeDuration() const
{
    if (years_ != 0 || months_ != 0)
        throw TimeException("Illegal conversion of TimeOffset to TimeDuration");
    return milliseconds_ * MILLISECOND + seconds_ * SECOND + minutes_ * MINUTE + hours_ * HOUR + days_ * DAY;
}

void TimeOffset::Serialize(Serializer& serializer)
{
    serializer.Serialize(years_, "years");
    serializer.Serialize(months_, "months");
    serializer.Serialize(days_, "days");
    serializer.Serialize(hours_, "hours");
    serializer.Serialize(minutes_, "minutes");
    serializer.Serialize(seconds_, "seconds");
    serializer.Serialize(milliseconds_, "milliseconds");
}

std::ostream& operator<<(std::ostream& stream, TimeOffset const& offset)
{
    stream << std::setfill('0') << std::setw(0) << std::showpos << offset.GetYears() << ' ';
    WriteField(stream, offset.GetMonths(), 2, " ");
    stream << std::showpos << offset.GetDays() << ' ';
    WriteField(stream, offset.GetHours(), 2, ":");
    WriteField(stream, offset.GetMinutes(), 2, ":");
    WriteField(stream, offset.GetSeconds(), 2, ".");
    WriteField(stream, offset.GetMilliseconds(), 3, "");
    return stream;
}

std::istream& operator>>(std::istream& stream, TimeOffset& offset)
{
    int years = 0;
    int months = 0;
    int days = 0;
    int hours = 0;
    int minutes = 0;
    int seconds = 0;
    int milliseconds = 0;
    char separator = 0;
    stream >> years >> months >> days >> hours >> separator >> minutes >> separator >> seconds >> separator >>
        milliseconds;
    offset.SetYears(years);
    offset.SetMonths(months);
    offset.SetDays(days);
    offset.SetHours(hours);
    offset.SetMinutes(minutes);
    offset.SetSeconds(seconds);
    offset.SetMilliseconds(milliseconds);
    return stream;
}

} // namespace Zan::Orv::Core::Service

std::size_t std::hash<Zan::Orv::Core::Service::TimeOffset>::operator()(
    Zan::Orv::Core::Service::TimeOffset const& offset) const noexcept
{
    return Zan::Orv::Core::Service::Internal::HashOf(offset.GetYears(), offset.GetMonths(), offset.GetDays(),
                                                     offset.GetHours(), offset.GetMinutes(),
                                                     offset.GetSeconds(), offset.GetMilliseconds());
}
