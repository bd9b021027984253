#include "orv/time/internal/Calendar.h"

#include <boost/date_time/gregorian/greg_day.hpp>
#include <boost/date_time/gregorian/greg_month.hpp>
#include <boost/date_time/gregorian/greg_year.hpp>

namespace Zan::Orv::Core::Service::Internal {

namespace {

// Releases of the calendar library end at different years and say so in their text. Ours ends where it always
// did.
class BadYear : public boost::gregorian::bad_year
{
public:
    char const* what() const noexcept override { return "Year is out of valid range: 1400..10000"; }
};

} // namespace

void ThrowBadYear()
{
    throw BadYear();
}

Date CheckedDate(int year, int month, int day)
{
    Date const date{static_cast<std::uint16_t>(year), static_cast<std::uint16_t>(month),
                    static_cast<std::uint16_t>(day)};
    if (date.day < 1 || date.day > 31)
        throw boost::gregorian::bad_day_of_month();
    if (date.month < 1 || date.month > 12)
        throw boost::gregorian::bad_month();
    if (date.year < firstYear || date.year > lastYear)
        ThrowBadYear();
    if (date.day > LastDayOfMonth(date.year, date.month))
        throw boost::gregorian::bad_day_of_month("Day of month is not valid for year");
    return date;
}

} // namespace Zan::Orv::Core::Service::Internal
