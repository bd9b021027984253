#include "orv/time/Time.h"

#include "orv/foundation/Exception.h"
#include "orv/foundation/internal/Hash.h"
#include "orv/platform/LocalTime.h"
#include "orv/serialization/Serializer.h"
#include "orv/time/TimeFormat.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/internal/Calendar.h"

#include <algorithm>
#include <ctime>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace Zan::Orv::Core::Service {

namespace {

char const standardFormat[] = "%Y-%m-%d %H:%M:%S.%L";

// One negative field makes the whole sum negative; the millisecond keeps its own sign. Far below the range of
// the result: 2^31 hours are 7.7e15 milliseconds.
long long TimeOfDay(long long hour, long long minute, long long second, long long millisecond)
{
    if ((hour | minute | second) >= 0)
        return hour * HOUR + minute * MINUTE + second * SECOND + millisecond;
    auto const magnitude = [](long long value) { return value < 0 ? -value : value; };
    return millisecond - (magnitude(hour) * HOUR + magnitude(minute) * MINUTE + magnitude(second) * SECOND);
}

std::tm LocalNow()
{
    std::tm now{};
    if (!Platform::LocalTime(now))
        throw std::runtime_error("could not convert calendar time to local time");
    return now;
}

} // namespace

Time::Time(int year, int month, int day, int hour, int minute, int second, int millisecond)
{
    Internal::Date date{year, month, day};
    if (!Internal::IsPlainDate(date))
        date = Internal::CheckedDate(year, month, day);
    count_ = Internal::DayNumber(date) * ticksPerDay;
    *this += TimeOfDay(hour, minute, second, millisecond);
    if (year > 9999)
        throw ServiceException("Year is out of valid range: 1400..9999");
}

Time Time::MinTime()
{
    return Time();
}

Time Time::MaxTime()
{
    Time time;
    time.count_ = maxCount;
    return time;
}

Time Time::Now()
{
    std::tm const now = LocalNow();
    return Time(now.tm_year + 1900, now.tm_mon + 1, now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec, 0);
}

Time Time::Today()
{
    std::tm const now = LocalNow();
    return Time(now.tm_year + 1900, now.tm_mon + 1, now.tm_mday, 0, 0, 0, 0);
}

long long Time::WholeDays() const
{
    // Rounded down, also for the days before the day 0 that no calendar field is read of.
    return (count_ >= 0 ? count_ : count_ - (ticksPerDay - 1)) / ticksPerDay;
}

long long Time::MillisecondOfDay() const
{
    return (count_ - WholeDays() * ticksPerDay) / ticksPerMillisecond;
}

int Time::GetYear() const
{
    return Internal::DateOfDay(WholeDays()).year;
}

int Time::GetMonth() const
{
    return Internal::DateOfDay(WholeDays()).month;
}

int Time::GetDay() const
{
    return Internal::DateOfDay(WholeDays()).day;
}

int Time::GetDayOfWeek() const
{
    long long const day = WholeDays();
    Internal::DateOfDay(day); // no day of the week without a date
    int const dayOfWeek = Internal::DayOfWeek(day);
    if (dayOfWeek < 0 || dayOfWeek > 6)
        throw TimeException("Unknown day");
    return dayOfWeek;
}

int Time::GetDayOfYear() const
{
    long long const day = WholeDays();
    return Internal::DayOfYear(day, Internal::DateOfDay(day).year);
}

int Time::GetHour() const
{
    return static_cast<int>(MillisecondOfDay() / HOUR);
}

int Time::GetMinute() const
{
    return static_cast<int>(MillisecondOfDay() / MINUTE % 60);
}

int Time::GetSecond() const
{
    return static_cast<int>(MillisecondOfDay() / SECOND % 60);
}

int Time::GetMillisecond() const
{
    return static_cast<int>(MillisecondOfDay() % SECOND);
}

void Time::FixDate(int& year, int& month, int& day)
{
    if (month < 1 || month > 12)
    {
        // Years wrap as the 32-bit numbers that they are; the calendar then looks at 16 bits of them.
        auto const moveYear = [&year](int years) {
            year = static_cast<int>(year + static_cast<long long>(years));
        };
        int const years = month / 12;
        moveYear(years);
        month -= 12 * years;
        if (month < 1)
        {
            moveYear(-1);
            month += 12;
        }
    }
    if (day > 28) // no month is shorter
        day = std::min(day, Internal::LastDayOfMonth(year, month));
}

Time& Time::operator+=(TimeOffset const& offset)
{
    long long const wholeDays = WholeDays();
    Internal::Date date = Internal::DateOfDay(wholeDays);
    if (offset.GetYears() != 0 || offset.GetMonths() != 0)
    {
        date.year = static_cast<int>(date.year + static_cast<long long>(offset.GetYears()));
        date.month = static_cast<int>(date.month + static_cast<long long>(offset.GetMonths()));
        FixDate(date.year, date.month, date.day);
        if (!Internal::IsPlainDate(date))
            date = Internal::CheckedDate(date.year, date.month, date.day);
        count_ += (Internal::DayNumber(date) - wholeDays) * ticksPerDay;
    }
    return *this += offset.GetDays() * DAY + TimeOfDay(offset.GetHours(), offset.GetMinutes(),
                                                       offset.GetSeconds(), offset.GetMilliseconds());
}

Time& Time::operator-=(TimeOffset const& offset)
{
    TimeOffset negated;
    negated -= offset;
    return *this += negated;
}

Time& Time::operator-=(long long const& milliseconds)
{
    constexpr long long lowest = std::numeric_limits<long long>::min();
    return *this += milliseconds == lowest ? std::numeric_limits<long long>::max() : -milliseconds;
}

void Time::AddFar(long long milliseconds)
{
    // In milliseconds there is room for the sum of any two counts that are kept.
    constexpr long long outer = outerCount / ticksPerMillisecond;
    long long const step = std::clamp(milliseconds, -2 * outer, 2 * outer);
    count_ = std::clamp(count_ / ticksPerMillisecond + step, -outer, outer) * ticksPerMillisecond;
}

std::string Time::GetAsString()
{
    if (*this == MinTime())
        return "Min date";
    if (*this == MaxTime())
        return "Max date";
    std::ostringstream stream;
    stream << *this;
    return stream.str();
}

void Time::Serialize(Serializer& serializer)
{
    if (serializer.IsReading())
    {
        std::string text;
        serializer.Serialize(text, "time");
        std::istringstream stream(text);
        stream >> *this;
    }
    else
    {
        std::ostringstream stream;
        stream << *this;
        std::string text = stream.str();
        serializer.Serialize(text, "time");
    }
}

std::ostream& operator<<(std::ostream& stream, Time const& time)
{
    static TimeFormat const format(standardFormat);
    return stream << format(time);
}

std::istream& operator>>(std::istream& stream, Time& time)
{
    static TimeFormat const format(standardFormat);
    return stream >> format(time);
}

} // namespace Zan::Orv::Core::Service

std::size_t
std::hash<Zan::Orv::Core::Service::Time>::operator()(Zan::Orv::Core::Service::Time const& time) const noexcept
{
    return Zan::Orv::Core::Service::Internal::HashOf(time - Zan::Orv::Core::Service::Time::MinTime());
}
