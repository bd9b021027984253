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

std::string const valueHead = FromHex("00 00 00 00 FF FF FF FF");

// One object in every form, read into what the factory makes under the name of its class. The other forms have
// the values of the XML form, line by line and byte by byte.
template<class T, class Same>
void CheckDocuments(std::string const& className, T object, std::string const& body, std::string const& lines,
                    std::string const& bytes, Same same)
{
    SCOPED_TRACE(className);
    Factory& factory = Factory::GetFactory();
    std::string const name = "Zan::Orv::Core::Service::" + className;
    EXPECT_EQ(factory.GetClassName(typeid(T)), name);
    EXPECT_EQ(XMLForm::Write(object), XML("<x >" + body + "</x>"));
    EXPECT_EQ(TextForm::Write(object), "# -1\n" + lines);
    EXPECT_EQ(BinaryForm::Write(object), valueHead + bytes);
    auto const readsBack = [&](auto form, std::string const& document) {
        std::unique_ptr<ISerializable> const made(factory.Construct(name));
        T& read = dynamic_cast<T&>(*made);
        decltype(form)::Read(document, read);
        EXPECT_TRUE(same(read)) << document;
    };
    readsBack(XMLForm(), XML("<x >" + body + "</x>"));
    readsBack(TextForm(), "# -1\n" + lines);
    readsBack(BinaryForm(), valueHead + bytes);
}

TEST(TimeDocumentsTest, TheFiveClassesGoThroughEveryForm)
{
    CheckDocuments("Time", time, "<time>" + timeText + "</time>", timeText + "\n", Counted(timeText),
                   [](Time const& read) { return read == time; });
    CheckDocuments("TimeFormat", TimeFormat("%Y <&\\n>"), "<timeFormat>%Y &lt;&amp;\\n&gt;</timeFormat>",
                   "%Y <&\\\\n>\n", Counted("%Y <&\\n>"),
                   [](TimeFormat const& read) { return read.GetFormat() == "%Y <&\\n>"; });
    // The unit is in the document, and stays as it was in the object.
    CheckDocuments("TimeFrequency", TimeFrequency(-2, Unit::Days),
                   "<value>-2</value><frequency_unit ><value>Days</value></frequency_unit>",
                   "-2\n# -1\nDays\n", FromHex("FF FF FF FE") + valueHead + Counted("Days"),
                   [](TimeFrequency const& read) { return read == TimeFrequency(-2, Unit::Years); });
    TimeOffset const offset(-1, 2, -3, 4, 5, 6, 7);
    CheckDocuments(
        "TimeOffset", offset,
        "<years>-1</years><months>2</months><days>-3</days><hours>4</hours><minutes>5</minutes>"
        "<seconds>6</seconds><milliseconds>7</milliseconds>",
        "-1\n2\n-3\n4\n5\n6\n7\n",
        FromHex("FF FF FF FF 00 00 00 02 FF FF FF FD 00 00 00 04 00 00 00 05 00 00 00 06 00 00 00 07"),
        [&](TimeOffset const& read) { return read == offset; });
    TimePeriod const period(time, Time::MaxTime());
    CheckDocuments("TimePeriod", period,
                   "<begin ><time>" + timeText +
                       "</time></begin><end ><time>9999-12-31 23:59:59.999</time></end>",
                   "# -1\n" + timeText + "\n# -1\n9999-12-31 23:59:59.999\n",
                   valueHead + Counted(timeText) + valueHead + Counted("9999-12-31 23:59:59.999"),
                   [&](TimePeriod const& read) { return read == period; });
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
