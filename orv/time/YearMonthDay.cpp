#include "orv/time/YearMonthDay.h"

#include "orv/foundation/Exception.h"
#include "orv/foundation/internal/Hash.h"

#include <tuple>

namespace Zan::Orv::Core::Service {

YearMonthDay::YearMonthDay(long int year, unsigned short month, unsigned short day)
{
    Set(year, month, day);
}

void YearMonthDay::Set(long int year, unsigned short month, unsigned short day)
{
    if (month < 1 || month > 12)
        throw ServiceException("YearMonthDay: invalid month value");
    if (day < 1 || day > 31)
        throw ServiceException("YearMonthDay: invalid day value");
    year_ = year;
    month_ = month;
    day_ = day;
}

bool YearMonthDay::operator==(YearMonthDay const& other) const
{
    return year_ == other.year_ && month_ == other.month_ && day_ == other.day_;
}

bool YearMonthDay::operator!=(YearMonthDay const& other) const
{
    return !(*this == other);
}

bool YearMonthDay::operator<(YearMonthDay const& other) const
{
    return std::tie(year_, month_, day_) < std::tie(other.year_, other.month_, other.day_);
}

} // namespace Zan::Orv::Core::Service

std::size_t std::hash<Zan::Orv::Core::Service::YearMonthDay>::operator()(
    Zan::Orv::Core::Service::YearMonthDay const& date) const noexcept
{
    return Zan::Orv::Core::Service::Internal::HashOf(date.Year(), date.Month(), date.Day());
}
