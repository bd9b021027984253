#pragma once

#include <cstdint>

/// The proleptic Gregorian calendar by Julian day numbers: days counted from -4713-11-24 as day 0.
///
/// Both directions are the Euclidean affine functions of C. Neri and L. Schneider, "Euclidean affine
/// functions and their application to calendar algorithms", Software: Practice and Experience 53 (2023). They
/// count from 0000-03-01, so that the leap day is the last one of its year. All of it is inline: most of the
/// cost would be the calls.

namespace Zan::Orv::Core::Service::Internal {

struct Date
{
    int year;
    int month; ///< from 1
    int day;   ///< from 1
};

/// The years that dates may have while they are calculated with.
inline constexpr int firstYear = 1400;
inline constexpr int lastYear = 10000;

inline constexpr long long marchEpoch = 1721120;     // 0000-03-01
inline constexpr long long firstDayNumber = 2232400; // 1400-01-01
inline constexpr long long lastDayNumber = 5373850;  // 10000-12-31

/// \throws boost::gregorian::bad_year
[[noreturn]] void ThrowBadYear();

/// Checks that the date exists. Each number counts as a 16-bit unsigned one, and so comes back.
/// \throws boost::gregorian::bad_day_of_month, bad_month, bad_year
Date CheckedDate(int year, int month, int day);

/// True for most dates that exist, at a glance; the others are for `CheckedDate`.
inline bool IsPlainDate(Date const& date)
{
    return static_cast<unsigned>(date.year) - static_cast<unsigned>(firstYear) <=
               unsigned{lastYear - firstYear} &&
           static_cast<unsigned>(date.month) - 1 < 12 && static_cast<unsigned>(date.day) - 1 < 28;
}

inline int LastDayOfMonth(int year, int month)
{
    if (month == 2)
    {
        bool const leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        return leap ? 29 : 28;
    }
    return 30 | ((month ^ (month >> 3)) & 1); // long months alternate, and begin anew in August
}

/// The day number of a date within the years of the calendar. No intermediate result comes near 2^32.
inline long long DayNumber(Date const& date)
{
    bool const beforeMarch = date.month <= 2;
    auto const year = static_cast<std::uint32_t>(date.year - (beforeMarch ? 1 : 0));
    auto const month = static_cast<std::uint32_t>(date.month + (beforeMarch ? 12 : 0));
    auto const day = static_cast<std::uint32_t>(date.day - 1);
    std::uint32_t const century = year / 100;
    std::uint32_t const daysOfYears = 1461 * year / 4 - century + century / 4;
    std::uint32_t const daysOfMonths = (979 * month - 2919) / 32;
    return marchEpoch + daysOfYears + daysOfMonths + day;
}

/// The date of a day number.
/// \throws boost::gregorian::bad_year outside the years of the calendar.
inline Date DateOfDay(long long dayNumber)
{
    if (dayNumber < firstDayNumber || dayNumber > lastDayNumber)
        ThrowBadYear();

    std::uint32_t const quarters = 4 * static_cast<std::uint32_t>(dayNumber - marchEpoch) + 3; // < 2^24
    std::uint32_t const century = quarters / 146097;
    std::uint32_t const ofCentury = (quarters % 146097) | 3;
    std::uint64_t const product = std::uint64_t{2939745} * ofCentury;
    auto const yearOfCentury = static_cast<std::uint32_t>(product >> 32);
    std::uint32_t const dayOfYear = static_cast<std::uint32_t>(product) / 2939745 / 4;
    std::uint32_t const shifted = 2141 * dayOfYear + 197913;
    std::uint32_t const month = shifted >> 16;
    std::uint32_t const day = (shifted & 0xFFFF) / 2141;
    bool const nextYear = dayOfYear >= 306; // January and February
    return {static_cast<int>(100 * century + yearOfCentury + (nextYear ? 1 : 0)),
            static_cast<int>(nextYear ? month - 12 : month), static_cast<int>(day + 1)};
}

/// 0 for Sunday up to 6 for Saturday.
inline int DayOfWeek(long long dayNumber)
{
    return static_cast<int>((dayNumber + 1) % 7); // day 0 was a Monday
}

/// The day of the year, from 1.
inline int DayOfYear(long long dayNumber, int year)
{
    return static_cast<int>(dayNumber - DayNumber({year, 1, 1}) + 1);
}

} // namespace Zan::Orv::Core::Service::Internal
