#include "orv/time/Chrono.h"

#include "orv/foundation/Exception.h"

#include <limits>

namespace Zan::Orv::Core::Service {

namespace {

// Of the system clock in UTC.
Time Epoch()
{
    return Time(1970, 1, 1, 0, 0, 0, 0);
}

} // namespace

Time TimeFromSystemTime(SystemMilliseconds const& moment)
{
    Time time = Epoch();
    time +=
        moment.time_since_epoch().count(); // which stops far outside the calendar, before it could overflow
    static_cast<void>(Time(time.GetYear(), 1, 1, 0, 0, 0, 0)); // refuses years that are not in the range
    return time;
}

SystemMilliseconds SystemTimeFromTime(Time const& time)
{
    return SystemMilliseconds(std::chrono::milliseconds(time - Epoch()));
}

TimeOffset OffsetFromDuration(std::chrono::milliseconds const& duration)
{
    // Days are rounded down, since the hours of an offset are never negative.
    long long const milliseconds = duration.count();
    long long const days = milliseconds / DAY - (milliseconds % DAY < 0 ? 1 : 0);
    if (days < std::numeric_limits<int>::min() || days > std::numeric_limits<int>::max())
        throw TimeException("Duration is too long for a TimeOffset");
    return TimeOffset(milliseconds);
}

std::chrono::milliseconds DurationFromOffset(TimeOffset const& offset)
{
    return std::chrono::milliseconds(offset.GetTimeDuration());
}

} // namespace Zan::Orv::Core::Service
