#pragma once

/// The proleptic Gregorian calendar by Julian day numbers: days counted from -4713-11-24 as day 0.

namespace Zan::Orv::Core::Service::Internal
{

struct Date {
    int year;
    int month; ///< from 1
    int day;   ///< from 1
};

/// The years that dates may have while they are calculated with.
inline constexpr int firstYear = 1400;
inline constexpr int lastYear = 10000;

int LastDayOfMonth(int year, int month);

/// The day number of a date within the years of the calendar.
long long DayNumber(Date const& date);

/// The date of a day number. \throws boost::gregorian::bad_year outside the years of the calendar.
Date DateOfDay(long long dayNumber);

/// Checks that the date exists. Each number counts as a 16-bit unsigned one, and so comes back.
/// \throws boost::gregorian::bad_day_of_month, bad_month, bad_year
Date CheckedDate(long long year, long long month, long long day);

/// 0 for Sunday up to 6 for Saturday.
int DayOfWeek(long long dayNumber);

} // namespace Zan::Orv::Core::Service::Internal
