#include "orv/foundation/Exception.h"
#include "orv/serialization/Factory.h"
#include "orv/time/Time.h"
#include "orv/time/TimeFormat.h"
#include "orv/time/TimeFrequency.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimePeriod.h"
#include "tests/serialization/Documents.h"

#include <gtest/gtest.h>

#include <typeinfo>

namespace Zan::Orv::Core::Service::Tests {

namespace {

Time const time(2000, 2, 29, 12, 34, 56, 789);
std::string const name = "Zan::Orv::Core::Service::";
std::string const timeText = "2000-02-29 12:34:56.789";

// One object as a value and by pointer, in both forms. The text form has the values of the XML form, line by
// line.
template<class T, class Same>
void CheckDocuments(std::string const& className, T const& object, T const& other, std::string const& body,
                    std::string const& lines, Same same)
{
    SCOPED_TRACE(className);
    EXPECT_EQ(Factory::GetFactory().GetClassName(typeid(T)), name + className);

    T value = object;
    std::string const xml = XMLForm::Write(value);
    std::string const text = TextForm::Write(value);
    EXPECT_EQ(xml, XML("<x >" + body + "</x>"));
    EXPECT_EQ(text, "# -1\n" + lines);
    T read = other;
    XMLForm::Read(xml, read);
    EXPECT_TRUE(same(read));
    read = other;
    TextForm::Read(text, read);
    EXPECT_TRUE(same(read));

    auto const written = std::make_shared<T>(object);
    std::pair<std::shared_ptr<T>, std::shared_ptr<ISerializable>> both(written, written);
    std::string const xmlBoth = XMLForm::Write(both);
    std::string const textBoth = TextForm::Write(both);
    EXPECT_EQ(xmlBoth, XML("<x><item class=\"" + name + className + "\" id=\"1\" >" + body +
                           "</item><item id=\"1\" ></item></x>"));
    EXPECT_EQ(textBoth, "2\n" + name + className + " 1\n" + lines + "# 1\n");
    for (bool const isXML : {true, false})
    {
        decltype(both) back;
        isXML ? XMLForm::Read(xmlBoth, back) : TextForm::Read(textBoth, back);
        ASSERT_NE(back.first, nullptr);
        EXPECT_EQ(back.first, back.second);
        EXPECT_TRUE(same(*back.first));
    }
}

TEST(TimeDocumentsTest, TheFiveClassesGoThroughBothForms)
{
    CheckDocuments<Time>("Time", time, Time(), "<time>" + timeText + "</time>", timeText + "\n",
                         [](Time const& read) { return read == time; });
    CheckDocuments<TimeFormat>("TimeFormat", TimeFormat("%Y <&\\n>"), TimeFormat(""),
                               "<timeFormat>%Y &lt;&amp;\\n&gt;</timeFormat>", "%Y <&\\\\n>\n",
                               [](TimeFormat const& read) { return read.GetFormat() == "%Y <&\\n>"; });
    // The unit is in the document, and stays as it was in the object.
    CheckDocuments<TimeFrequency>("TimeFrequency", TimeFrequency(-2, TimeFrequency::FrequencyUnit::Days),
                                  TimeFrequency(),
                                  "<value>-2</value><frequency_unit ><value>Days</value></frequency_unit>",
                                  "-2\n# -1\nDays\n", [](TimeFrequency const& read) {
                                      return read == TimeFrequency(-2, TimeFrequency::FrequencyUnit::Years);
                                  });
    TimeOffset const offset(-1, 2, -3, 4, 5, 6, 7);
    CheckDocuments<TimeOffset>(
        "TimeOffset", offset, TimeOffset(),
        "<years>-1</years><months>2</months><days>-3</days><hours>4</hours><minutes>5</minutes>"
        "<seconds>6</seconds><milliseconds>7</milliseconds>",
        "-1\n2\n-3\n4\n5\n6\n7\n", [&](TimeOffset const& read) { return read == offset; });
    TimePeriod const period(time, Time::MaxTime());
    CheckDocuments<TimePeriod>("TimePeriod", period, TimePeriod(),
                               "<begin ><time>" + timeText +
                                   "</time></begin><end ><time>9999-12-31 23:59:59.999</time></end>",
                               "# -1\n" + timeText + "\n# -1\n9999-12-31 23:59:59.999\n",
                               [&](TimePeriod const& read) { return read == period; });
}

TEST(TimeDocumentsTest, WhatIsReadIsTakenAsItStands)
{
    TimeOffset offset;
    XMLForm::Read(XML("<x ><months>13</months><hours>-25</hours></x>"), offset);
    EXPECT_EQ(offset.GetYears() * 10000 + offset.GetMonths() * 100 + offset.GetHours(), 1300 - 25);

    TimePeriod period;
    TextForm::Read("# -1\n# -1\n" + timeText + "\n# -1\n1999-01-01 00:00:00.000\n", period);
    EXPECT_EQ(period.Begin(), time);
    EXPECT_EQ(period.End(), Time(1999, 1, 1, 0, 0, 0, 0));

    Time read = time;
    EXPECT_THROW(TextForm::Read("# -1\nyesterday\n", read), TimeException);
    EXPECT_THROW(TextForm::Read("# -1\n2001-02-29 00:00:00.000\n", read), std::out_of_range);
    EXPECT_EQ(read, time);
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
