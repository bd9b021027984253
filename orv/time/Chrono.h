#pragma once

#include "orv/Export.h"
#include "orv/time/Time.h"
#include "orv/time/TimeOffset.h"

#include <chrono>

/// \file
/// Our times beside those of the standard library.
///
///     Time const start = TimeFromDate(std::chrono::year(2000) / 2 / 29);
///     auto const moment = SystemTimeFromTime(start) + std::chrono::hours(36);
///     Time const end = TimeFromSystemTime(moment); // 2000-03-01 12:00:00.000
///
/// `Time` has no time zone and `std::chrono::system_clock` counts in UTC, so a `Time` is read as UTC here: its calendar
/// fields are those of the moment in UTC. One that holds local time, as `Time::Now()` does, has to be moved by the
/// caller, who knows which zone it is of.
///
/// Both sides count whole milliseconds, so what fits comes back the same. A moment or a duration in finer units does not
/// convert by itself: round it as it is meant, by `std::chrono::floor<std::chrono::milliseconds>` or one of its kin.
/// Functions of values, safe on any thread.

/// Defined where the standard library has the calendar. libstdc++ has had it long before it had all that the feature's
/// number promises.
#if defined(__cpp_lib_chrono) && __cpp_lib_chrono >= 201907L
#define ORV_HAS_CHRONO_CALENDAR 1
#elif __cplusplus >= 202002L && defined(_GLIBCXX_RELEASE) && _GLIBCXX_RELEASE >= 11
#define ORV_HAS_CHRONO_CALENDAR 1
#elif __cplusplus >= 202002L && defined(_LIBCPP_VERSION) && _LIBCPP_VERSION >= 8000
#define ORV_HAS_CHRONO_CALENDAR 1
#endif

namespace Zan::Orv::Core::Service {

/// In C++20 this is `std::chrono::sys_time<std::chrono::milliseconds>`.
using SystemMilliseconds = std::chrono::time_point<std::chrono::system_clock, std::chrono::milliseconds>;

/// \throws std::out_of_range, ServiceException what the constructor of `Time` throws for that year: the range is that of
///     the constructor, from `Time::MinTime()` to `Time::MaxTime()`.
ORV_API Time TimeFromSystemTime(SystemMilliseconds const& moment);

/// For any value: `Time::MinTime()`, which is also what is not set, becomes the moment at which the year 1400 begins, and
/// a time beyond the range, as arithmetic makes them, the moment that it stands for.
ORV_API SystemMilliseconds SystemTimeFromTime(Time const& time);

/// \throws TimeException for more days than an `int` holds, about six million years.
ORV_API TimeOffset OffsetFromDuration(std::chrono::milliseconds const& duration);

/// \throws TimeException as `TimeOffset::GetTimeDuration()`, for an offset with years or months.
ORV_API std::chrono::milliseconds DurationFromOffset(TimeOffset const& offset);

#if defined(ORV_HAS_CHRONO_CALENDAR)

/// Midnight.
/// \throws std::out_of_range, ServiceException as the constructor of `Time`, for a date that does not exist, as
///     `date.ok()` tells, or lies outside the range.
inline Time TimeFromDate(std::chrono::year_month_day const& date)
{
    return Time(static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
                static_cast<int>(static_cast<unsigned>(date.day())), 0, 0, 0, 0);
}

/// The date alone: the time of day is left out.
/// \throws std::out_of_range `bad_year` for a time outside the calendar.
inline std::chrono::year_month_day DateFromTime(Time const& time)
{
    return {std::chrono::year(time.GetYear()), std::chrono::month(static_cast<unsigned>(time.GetMonth())),
            std::chrono::day(static_cast<unsigned>(time.GetDay()))};
}

#endif

} // namespace Zan::Orv::Core::Service
