#pragma once

#include "orv/Export.h"

#include <cstddef>
#include <typeindex> // the lightest one that declares std::hash

namespace Zan::Orv::Core::Service {

/// A date as three numbers. Month and day are held to 1..12 and 1..31 and to no more: February 31st and every
/// year are let pass. A plain value, not connected to `Time`, and not serializable; it can
/// be a key of unordered containers.
class ORV_API YearMonthDay
{
public:
    /// Year 0, January 1st.
    YearMonthDay() = default;

    /// \throws ServiceException for a month or a day outside its range. The month is looked at first.
    YearMonthDay(long int year, unsigned short month, unsigned short day);

    /// \{
    /// The year as it was given, the month from 1, the day from 1.
    long int Year() const { return year_; }
    unsigned short Month() const { return month_; }
    unsigned short Day() const { return day_; }
    /// \}

    bool operator==(YearMonthDay const& other) const;
    bool operator!=(YearMonthDay const& other) const;
    bool operator<(YearMonthDay const& other) const;

private:
    void Set(long int year, unsigned short month, unsigned short day);

    long int year_ = 0;
    unsigned short month_ = 1;
    unsigned short day_ = 1;
};

} // namespace Zan::Orv::Core::Service

/// For unordered containers. By the three numbers.
template<>
struct ORV_API std::hash<Zan::Orv::Core::Service::YearMonthDay>
{
    std::size_t operator()(Zan::Orv::Core::Service::YearMonthDay const& date) const noexcept;
};
