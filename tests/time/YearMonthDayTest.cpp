#include "orv/time/YearMonthDay.h"
#include "orv/foundation/Exception.h"
#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

TEST(YearMonthDay, HoldsMonthAndDayToTheirRangesAndNothingElse)
{
    YearMonthDay const any(-2147483647, 2, 31);
    EXPECT_EQ(std::tuple(any.Year(), any.Month(), any.Day()), std::tuple(-2147483647, 2, 31));
    using Short = unsigned short;
    for (auto const& [month, day, name] :
         {std::tuple(Short{0}, Short{1}, "month"), {13, 32, "month"}, {1, 0, "day"}, {12, 32, "day"}})
        EXPECT_TRUE(Throws<ServiceException>([m = month, d = day] { YearMonthDay(2000, m, d); },
                                             std::string("YearMonthDay: invalid ") + name + " value"));
}

TEST(YearMonthDay, OrdersByYearThenMonthThenDay)
{
    std::vector<YearMonthDay> const ascending = {{-1, 12, 31}, {}, {0, 1, 2}, {0, 2, 1}, {2000, 1, 31}};
    for (std::size_t a = 0; a < ascending.size(); ++a)
        for (std::size_t b = 0; b < ascending.size(); ++b)
        {
            EXPECT_EQ(ascending[a] < ascending[b], a < b) << a << " and " << b;
            EXPECT_EQ(ascending[a] == ascending[b], a == b) << a << " and " << b;
            EXPECT_EQ(ascending[a] != ascending[b], a != b) << a << " and " << b;
        }
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
