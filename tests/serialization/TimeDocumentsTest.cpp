#include "orv/foundation/Exception.h"
#include "orv/serialization/Factory.h"
#include "orv/time/Time.h"
#include "orv/time/TimeFormat.h"
#include "orv/time/TimeFrequency.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimePeriod.h"
#include "tests/serialization/Documents.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <typeinfo>

namespace Zan::Orv::Core::Service::Tests {

namespace {

using Unit = TimeFrequency::FrequencyUnit;

Time const time(2000, 2, 29, 12, 34, 56, 789);
std::string const timeText = "2000-02-29 12:34:56.789";

// What is read from the text form into what the factory makes under the name of a class.
template<class T>
T ReadBack(std::string const& className, T object, std::string const& lines)
{
    std::string const name = "Zan::Orv::Core::Service::" + className;
    EXPECT_EQ(Factory::GetFactory().GetClassName(typeid(T)), name);
    std::unique_ptr<ISerializable> const made(Factory::GetFactory().Construct(name));
    T& read = dynamic_cast<T&>(*made);
    EXPECT_EQ(TextForm::Write(object), "# -1\n" + lines);
    TextForm::Read("# -1\n" + lines, read);
    return read;
}

TEST(TimeDocumentsTest, TheFiveClassesAreMadeByTheirNames)
{
    EXPECT_EQ(ReadBack("Time", time, timeText + "\n"), time);
    EXPECT_EQ(ReadBack("TimeFormat", TimeFormat("%Y <&\\n>"), "%Y <&\\\\n>\n").GetFormat(), "%Y <&\\n>");
    // The unit is in the document, and stays as it was in the object.
    EXPECT_EQ(ReadBack("TimeFrequency", TimeFrequency(-2, Unit::Days), "-2\n# -1\nDays\n"),
              TimeFrequency(-2, Unit::Years));
    TimeOffset const offset(-1, 2, -3, 4, 5, 6, 7);
    EXPECT_EQ(ReadBack("TimeOffset", offset, "-1\n2\n-3\n4\n5\n6\n7\n"), offset);
    TimePeriod const period(time, Time::MaxTime());
    EXPECT_EQ(ReadBack("TimePeriod", period, "# -1\n" + timeText + "\n# -1\n9999-12-31 23:59:59.999\n"),
              period);
}

TEST(TimeDocumentsTest, WhatIsReadIsTakenAsItStands)
{
    TimeOffset offset;
    XMLForm::Read(XML("<x ><months>13</months><hours>-25</hours></x>"), offset);
    EXPECT_EQ(offset.GetYears() * 10000 + offset.GetMonths() * 100 + offset.GetHours(), 1300 - 25);
    EXPECT_EQ(offset += TimeOffset(), TimeOffset(1, 1, -2, 23, 0, 0, 0));

    TimePeriod period;
    TextForm::Read("# -1\n# -1\n" + timeText + "\n# -1\n1999-01-01 00:00:00.000\n", period);
    EXPECT_EQ(period.Begin(), time);
    EXPECT_EQ(period.End(), Time(1999, 1, 1, 0, 0, 0, 0));

    TimeFrequency frequency;
    EXPECT_THROW(TextForm::Read("# -1\n5\n# -1\ndays\n", frequency), std::runtime_error);
    EXPECT_EQ(frequency, TimeFrequency(5, Unit::Years));

    Time read = time;
    EXPECT_THROW(TextForm::Read("# -1\nyesterday\n", read), TimeException);
    EXPECT_THROW(TextForm::Read("# -1\n2001-02-29 00:00:00.000\n", read), std::out_of_range);
    EXPECT_EQ(read, time);
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
