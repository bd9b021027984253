#include "orv/time/internal/Calendar.h"

#include <boost/date_time/gregorian/greg_day.hpp>
#include <boost/date_time/gregorian/greg_month.hpp>
#include <boost/date_time/gregorian/greg_year.hpp>
#include <cstdint>

namespace Zan::Orv::Core::Service::Internal
{

namespace
{

// Releases of the calendar library end at different years and say so in their text. Ours ends where it always
// did.
class BadYear : public boost::gregorian::bad_year
{
public:
    char const* what() const noexcept override { return "Year is out of valid range: 1400..10000"; }
};

// The algorithms count from 0000-03-01, so that the day of a leap year is the last one of a year.
constexpr long long marchEpoch = 1721120;
constexpr long long firstDay = 2232400; // 1400-01-01
constexpr long long lastDay = 5373850;  // 10000-12-31

} // namespace

int LastDayOfMonth(int year, int month)
{
    if (month == 2) {
        bool const leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        return leap ? 29 : 28;
    }
    return 30 | ((month ^ (month >> 3)) & 1); // long months alternate, and begin anew in August
}

// Both directions are the Euclidean affine functions of C. Neri and L. Schneider, "Euclidean affine functions
// and their application to calendar algorithms", Software: Practice and Experience 53 (2023). Years are below
// 10001, so that no intermediate result comes near 2^32.
long long DayNumber(Date const& date)
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

Date DateOfDay(long long dayNumber)
{
    if (dayNumber < firstDay || dayNumber > lastDay)
        throw BadYear();

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

Date CheckedDate(long long year, long long month, long long day)
{
    Date const date{static_cast<std::uint16_t>(year), static_cast<std::uint16_t>(month),
                    static_cast<std::uint16_t>(day)};
    if (date.day < 1 || date.day > 31)
        throw boost::gregorian::bad_day_of_month();
    if (date.month < 1 || date.month > 12)
        throw boost::gregorian::bad_month();
    if (date.year < firstYear || date.year > lastYear)
        throw BadYear();
    if (date.day > LastDayOfMonth(date.year, date.month))
        throw boost::gregorian::bad_day_of_month("Day of month is not valid for year");
    return date;
}

int DayOfWeek(long long dayNumber)
{
    return static_cast<int>((dayNumber + 1) % 7); // day 0 was a Monday
}

} // namespace Zan::Orv::Core::Service::Internal
