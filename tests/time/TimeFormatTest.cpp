#include "orv/time/TimeFormat.h"
#include "orv/foundation/Exception.h"
#include "orv/time/Time.h"
#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <iomanip>
#include <locale>
#include <random>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

Time const sample(2001, 2, 3, 4, 5, 6, 7); // a Saturday
std::string const standard = "%Y-%m-%d %H:%M:%S.%L";
std::string const mismatch = "Time does not match required format";

std::string Write(std::string const& format, Time const& time)
{
    std::ostringstream stream;
    stream << TimeFormat(format)(time);
    return stream.str();
}

std::string Rest(std::istream& stream)
{
    stream.clear();
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

TEST(TimeFormat, WritesEveryCode)
{
    EXPECT_EQ(Write("", sample), "");
    EXPECT_EQ(Write(" \t%%|%A|%B|%E|%H|%I|%L|%M|%S|%U|%W|%X|%Y|\n%a|%b|%d|%j|%m|%p|%w|%x|%y", sample),
              " \t%|Saturday|February|FEB|04|04|007|05|06|04|05|04:05:06|2001|\nSat|Feb|03|034|02|AM|6|02/03/"
              "01|01");
    EXPECT_EQ(Write("%I%p %L %j %y", Time(2000, 12, 31, 12, 0, 0, 999)), "12PM 999 366 00");
    EXPECT_EQ(Write("%I%p %Y %j %U %W", Time::MinTime()), "12AM 1400 001 00 00");
    std::string months;
    for (int month = 1; month <= 12; ++month)
        months += Write("%E ", Time(2001, month, 5, 0, 0, 0, 0));
    EXPECT_EQ(months, "JAN FEB MAR APR MAY JUN JLY AUG SEP OCT NOV DEC ");

    std::tm fields{};
    std::istringstream("2001-02-03 04:05:06") >> std::get_time(&fields, "%Y-%m-%d %H:%M:%S");
    fields.tm_wday = 6;
    std::ostringstream expected;
    expected << std::put_time(&fields, "%c|%Z");
    EXPECT_EQ(Write("%c|%Z", sample), expected.str());
}

TEST(TimeFormat, RefusesEveryOtherCode)
{
    for (int code = -1; code < 256; ++code)
    {
        std::string format = "abc%";
        if (code >= 0)
            format += {static_cast<char>(code), 'Y'};
        if (code >= 0 && std::string("%ABEHILMSUWXYZabcdjmpwxy").find(format[4]) != std::string::npos)
            continue;
        std::string const message = code < 0 ? "Ill-formed time format code" : "Invalid time format code";
        SCOPED_TRACE(testing::PrintToString(format));
        std::ostringstream out;
        EXPECT_TRUE(Throws<TimeException>([&] { out << TimeFormat(format)(sample); }, message));
        EXPECT_EQ(out.str(), "abc");
        std::istringstream in("abc2000");
        Time time = sample;
        EXPECT_TRUE(Throws<TimeException>([&] { in >> TimeFormat(format)(time); }, message));
        EXPECT_EQ(time, sample);
        EXPECT_EQ(Rest(in), "2000");
    }
}

// The milliseconds are an integer of the stream, with its flags; nothing else looks at them.
TEST(TimeFormat, LeavesTheStreamAsDocumented)
{
    std::pair<std::ios::fmtflags, std::string> const table[] = {
        {std::ios::hex, "011"}, {std::ios::dec | std::ios::showpos, "+17"}, {std::ios::left, "170"}};
    std::pair<std::string, std::string> const forms[] = {{"%L|%E", "|FEB"},
                                                         {"%Y-%m-%d %H:%M:%S.%L", "2001-02-03 04:05:06."}};
    for (auto const& [flags, milliseconds] : table)
        for (auto const& [format, others] : forms)
        {
            std::ostringstream stream;
            stream.flags(flags);
            stream << std::setfill('*') << std::setw(30) << TimeFormat(format)(Time(2001, 2, 3, 4, 5, 6, 17));
            EXPECT_EQ(stream.str(), others[0] == '|' ? milliseconds + others : others + milliseconds);
            EXPECT_EQ(stream.fill(), '0');
            EXPECT_EQ(stream.width(), 0);
            EXPECT_EQ(stream.flags(), flags);
        }
    std::ostringstream stream;
    stream << std::setfill('*') << TimeFormat("%Y-%m|%E")(sample);
    EXPECT_EQ(stream.fill(), '*');
}

TEST(TimeFormat, Reads)
{
    // clang-format off
    struct {
        std::string format;
        std::string text;
        std::string time; // the beginning of the standard text; it goes on as in 1400-01-01 00:00:00.000
        std::string rest;
    } const table[] = {
        {"", "x", "", "x"},                                   {"%Y%m%d", "20010203", "2001-02-03", ""},
        {"%Y-%m-%d %H:%M:%S.%L", "2001-02-03 04:05:06.0078", "2001-02-03 04:05:06.007", "8"},
        {"%Y-%m-%d %H:%M:%S.%L", "2001-2-3 \n\t 4:5:6.7", "2001-02-03 04:05:06.007", ""},
        {"%Y-%m-%d %H:%M:%S.%L", "2001-02-0304:05:06.", "2001-02-03 04:05:06.000", ""},
        {"%Y", "99999", "9999", "9"},                         {"%y", "68", "2068", ""},
        {"%y%%%m", "69%3", "1969-03", ""},                    {"%Y %y", "1500 0", "2000", ""},
        {"%d %E %Y", "05 jul 2001", "2001-07-05", ""},        {"%d %E %Y", "05 JlY 2001", "2001-07-05", ""},
        {"%E", "dec", "1400-12", ""},                         {"%E", "FEBRUARY", "1400-02", "RUARY"},
        {"%B %b", "January September", "1400-09", ""},        {"%d.%b,%Y", "3.Feb,2001", "2001-02-03", ""},
        {"%A, %a %d", "Monday, Tue 9", "1400-01-09", ""},     {"%H", "25", "1400-01-02 01", ""},
        {"%S", "99", "1400-01-01 00:01:39", ""},              {"%L", "5", "1400-01-01 00:00:00.005", ""},
        {"%L", "0500", "1400-01-01 00:00:00.050", "0"},       {"%H:%M", "12:", "1400-01-01 12:00", ""},
        {"%I %p", "12 AM", "1400-01-01 00", ""},              {"%I%p", "12PM", "1400-01-01 12", ""},
        {"%I:%M %p", "1:30 PM!", "1400-01-01 13:30", "!"},    {"%I %H %p", "12 12 AM", "1400-01-01 12", ""},
        {"%H %p", "1 PM", "1400-01-01 01", ""},               {"%p %I", "PM 03", "1400-01-01 03", ""},
        {"%j %U %w", "365 53 6", "", ""},                     {"%U %W %w%w", "54 10 76", "", ""},
        {"%Z|", "GMT|x", "", "x"},                            {"%Z|", Write("%Z", sample) + "|x", "", "x"},
        {"%X", "04:05:06", "1400-01-01 04:05:06", ""},        {"%x", "02/03/01", "2001-02-03", ""},
        {"%x %X.%L", "02/03/69 04:05:06.7", "1969-02-03 04:05:06.007", ""},
        {"%c", "02/03/01 \n 04:05:06", "2001-02-03 04:05:06", ""}, {" %Y \n%m", "2001 3", "2001-03", ""}};
    // clang-format on
    for (auto const& [format, text, expected, rest] : table)
    {
        SCOPED_TRACE(testing::PrintToString(format) + " on " + testing::PrintToString(text));
        std::istringstream stream(text);
        Time time(2222, 2, 2, 2, 2, 2, 2);
        ASSERT_NO_THROW(stream >> TimeFormat(format)(time));
        EXPECT_FALSE(stream.fail());
        EXPECT_EQ(Write(standard, time),
                  expected + std::string("1400-01-01 00:00:00.000").substr(expected.size()));
        EXPECT_EQ(Rest(stream), rest);
    }
}

TEST(TimeFormat, RefusesTextsAndLeavesTheTargetAlone)
{
    // clang-format off
    std::pair<std::string, std::vector<std::pair<std::string, std::string>>> const table[] = {
        {mismatch,
         {{"x", ""}, {"x", "y"}, {"%Yx", "2001"}, {"%Y%m", "200"}, {"%Y-%m", "2001 -3"}, {"%Y ", "200"},
          {"%%", "x"},
          {"%H:%M:", "12:"}, {"%b %Y", "Foo 2001"}, {"%a %Y", "Foo 2001"}, {"%X %Y", "x 2001"},
          {"%c %Y", "x 2001"}}},
        {"Invalid year", {{"%Y", "1399"}, {"%Y", "999"}, {"%Y", ""}, {"%Y", "+2001"}}},
        {"Invalid 12-hour clock hour", {{"%I", "13"}, {"%I", "0"}, {"%I", ""}}},
        {"Invalid AM/PM designator", {{"%p", "XM"}, {"%p", "A"}, {"%p", "pm"}, {"%p", ""}}},
        {"Invalid time zone", {{"%Z", "Nowhere"}, {"%Z", "GMX"}}},
        {"Invalid week number", {{"%W", "99"}, {"%j %w %U", "366 7 54"}}},
        {"Invalid day of week", {{"%j %w %U", "366 7 53"}}},
        {"Invalid day of year", {{"%j %w %U", "366 6 53"}, {"%j %x", "366 02/03/01"}}},
        {"Invalid Orvane month name", {{"%E", ""}, {"%E", "JA"}, {"%E", "\nJAN"}}},
        {"Invalid Orvane month name: 'QQQ'", {{"%E", "QQQ"}, {"%E", "qqqy"}}},
        {"Invalid Orvane month name: 'JA'", {{"%E", "ja\nn"}}},
        {"Month number is out of range 1..12", {{"%m", "13"}, {"%m", ""}}},
        {"Day of month value is out of range 1..31", {{"%d", "-5"}}},
        {"Day of month is not valid for year", {{"%m %d", "2 30"}}}};
    // clang-format on
    for (auto const& [message, cases] : table)
        for (auto const& [format, text] : cases)
        {
            std::istringstream stream(text);
            Time time = sample;
            auto const read = [&, bound = TimeFormat(format)] { stream >> bound(time); };
            bool const byCalendar = message[0] == 'D' || message[0] == 'M';
            EXPECT_TRUE(byCalendar ? Throws<std::out_of_range>(read, message)
                                   : Throws<TimeException>(read, message))
                << format << " on " << testing::PrintToString(text);
            EXPECT_EQ(time, sample) << format << " on " << testing::PrintToString(text);
        }

    // A name that the facet does not know shows at the next item of the format, and at the end only in the
    // stream.
    std::istringstream last("2001 Foo");
    Time time;
    last >> TimeFormat("%Y %b")(time);
    EXPECT_TRUE(last.fail());
    EXPECT_EQ(time, Time(2001, 1, 1, 0, 0, 0, 0));
}

TEST(TimeFormat, ReadsNoFurtherThanItMust)
{
    TimeFormat const format(standard);
    Time time;
    std::istringstream full("2001-02-03 04:05:06.007");
    full >> format(time);
    EXPECT_TRUE(full.good()); // the last digit is the third one: nobody looked behind it
    for (auto const state : {std::ios::eofbit, std::ios::failbit, std::ios::badbit})
    {
        full.seekg(0);
        full.clear(state);
        EXPECT_TRUE(Throws<TimeException>([&] { full >> format(time); }, mismatch)) << state;
    }
}

// A designator may be the beginning of the other one; what does not belong to it goes back.
TEST(TimeFormat, PutsBackWhatIsNotOfTheDesignator)
{
    class Designators : public std::time_put<char>
    {
        iter_type do_put(iter_type out, std::ios_base&, char, std::tm const* time, char, char) const override
        {
            std::string_view const name = time->tm_hour < 12 ? "no" : "nonet";
            return std::copy(name.begin(), name.end(), out);
        }
    };
    struct LocaleGuard
    {
        std::locale const old = std::locale::global(std::locale(std::locale(), new Designators));
        ~LocaleGuard() { std::locale::global(old); }
    } const guard;

    std::pair<std::string, std::string> const table[] = {
        {"01nonet|", "13|"}, {"01no|", "1|"}, {"12nonex|", "0nex|"}, {"12nonono", "0nono"}};
    for (auto const& [text, outcome] : table)
    {
        std::istringstream stream(text);
        Time time;
        stream >> TimeFormat("%I%p")(time);
        EXPECT_EQ(std::to_string(time.GetHour()) + Rest(stream), outcome) << text;
    }
}

// What a format makes of a text: the time, the words of failure, the state and the rest of the stream.
std::string Outcome(TimeFormat const& format, std::string const& text)
{
    std::istringstream stream(text);
    std::ostringstream outcome;
    Time time = sample;
    try
    {
        stream >> format(time);
    }
    catch (std::exception const& e)
    {
        outcome << e.what() << ", ";
    }
    outcome << (time - sample) << ", state " << stream.rdstate();
    return outcome.str() + ", rest " + Rest(stream);
}

// The standard form may be dealt with apart. It has to give what the codes give one by one.
TEST(TimeFormat, TheStandardFormIsNoSpecialCase)
{
    unsigned const seed = 36;
    std::mt19937_64 random(seed);
    std::string const characters = std::string("0123456789-: ./+\n\t\xE9") + '\0';
    for (int round = 0; round < 20000; ++round)
    {
        Time time;
        time += static_cast<long long>(random() >> 1) % (Time::MaxTime() - time + 1);
        std::string text = Write(standard, time);
        ASSERT_EQ(text, Write("%Y-%m-%d ", time) + Write("%H:%M:%S.%L", time)) << "seed " << seed;
        Time again;
        std::istringstream(text) >> TimeFormat(standard)(again);
        ASSERT_EQ(again, time) << "seed " << seed;

        for (auto edits = random() % 4; edits > 0; --edits)
        {
            std::size_t const place = random() % (text.size() + 1);
            // Mostly a character more, less or another; at times the text is cut.
            auto const kind = random() % 16;
            std::size_t const length = kind < 5 ? 0 : kind < 15 ? 1 : text.size();
            text.replace(place, length, kind < 10 ? 1 : 0, characters[random() % characters.size()]);
        }
        ASSERT_EQ(Outcome(TimeFormat(standard), text), Outcome(TimeFormat("%Y-%m-%d\t%H:%M:%S.%L"), text))
            << testing::PrintToString(text) << ", seed " << seed;
    }
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
