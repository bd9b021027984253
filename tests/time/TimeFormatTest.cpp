#include "orv/time/TimeFormat.h"
#include "tests/time/Times.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <iomanip>
#include <locale>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using testing::PrintToString;

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
    std::vector<std::pair<std::string, std::string>> table = {{"abc%", "Ill-formed time format code"}};
    for (int code = 0; code < 256; ++code)
        if (std::string("%ABEHILMSUWXYZabcdjmpwxy").find(static_cast<char>(code)) == std::string::npos)
            table.emplace_back(std::string("abc%") + static_cast<char>(code) + 'Y',
                               "Invalid time format code");
    for (auto const& [format, words] : table)
    {
        SCOPED_TRACE(PrintToString(format));
        std::ostringstream out;
        EXPECT_EQ(Outcome([&, f = TimeFormat(format)] { return (out << f(sample)).good(); }), words);
        EXPECT_EQ(out.str(), "abc");
        std::istringstream in("abc2000");
        Time time = sample;
        EXPECT_EQ(Outcome([&, f = TimeFormat(format)] { return (in >> f(time)).good(); }), words);
        EXPECT_EQ(time, sample);
        EXPECT_EQ(Rest(in), "2000");
    }
}

// The milliseconds are an integer of the stream, with its flags; nothing else looks at them.
TEST(TimeFormat, LeavesTheStreamAsDocumented)
{
    std::pair<std::ios::fmtflags, std::string> const table[] = {
        {std::ios::dec, "017"}, {std::ios::dec | std::ios::showpos, "+17"}, {std::ios::left, "170"}};
    for (auto const& [flags, milliseconds] : table)
    {
        std::ostringstream stream;
        stream.flags(flags);
        stream << std::setfill('*') << TimeFormat("%Y-%m|%E")(sample);
        EXPECT_EQ(stream.fill(), '*');
        stream.str("");
        stream << std::setw(30) << TimeFormat("%m.%L|%E")(Time(2001, 2, 3, 4, 5, 6, 17));
        EXPECT_EQ(stream.str(), "02." + milliseconds + "|FEB");
        EXPECT_EQ(stream.fill(), '0');
        EXPECT_EQ(stream.width(), 0);
        EXPECT_EQ(stream.flags(), flags);
    }
}

TEST(TimeFormat, Reads)
{
    // What it reads goes on as in 1400-01-01 00:00:00.000.
    // clang-format off
    std::array<std::string, 4> const table[] = {
        {"", "x", "1400-01-01", "x"},                         {" %Y \n%m", "2001 3", "2001-03", ""},
        {standard, "2001-02-03 04:05:06.0078", "2001-02-03 04:05:06.007", "8"},
        {standard, "2001-2-3 \n\t 4:5:6.7", "2001-02-03 04:05:06.007", ""},
        {"%Y", "99999", "9999-", "9"},
        {"%y", "68", "2068-", ""},                             {"%y%%%m", "69%3", "1969-03", ""},
        {"%d %E %Y", "05 JlY 2001", "2001-07-05", ""},        {"%L", "5", "1400-01-01 00:00:00.005", ""},
        {"%E", "FEBRUARY", "1400-02", "RUARY"},               {"%B %b", "January September", "1400-09", ""},
        {"%A, %a %d", "Monday, Tue 9", "1400-01-09", ""},     {"%H", "25", "1400-01-02 01", ""},
        {"%H %p", "1 PM", "1400-01-01 01", ""},
        {"%I %p", "12 AM", "1400-01-01 00", ""},              {"%I%p", "12PM", "1400-01-01 12", ""},
        {"%I:%M %p", "1:30 PM!", "1400-01-01 13:30", "!"},    {"%I %H %p", "12 12 AM", "1400-01-01 12", ""},
        {"%p %I", "PM 03", "1400-01-01 03", ""},              {"%j %U %w", "365 53 6", "1400-01-01", ""},
        {"%U %W %w%w", "54 10 76", "1400-01-01", ""},         {"%Z|", "GMT|x", "1400-01-01", "x"},
        {"%Z|", Write("%Z", sample) + "|x", "1400-01-01", "x"},
        {"%x %X.%L", "02/03/69 04:05:06.7", "1969-02-03 04:05:06.007", ""},
        {"%c", "02/03/01 \n 04:05:06", "2001-02-03 04:05:06", ""}};
    // clang-format on
    for (auto const& [format, text, expected, rest] : table)
    {
        std::istringstream stream(text);
        Time time(2222, 2, 2, 2, 2, 2, 2);
        stream >> TimeFormat(format)(time);
        EXPECT_FALSE(stream.fail()) << format << " on " << text;
        EXPECT_EQ(PrintToString(time), Whole(expected)) << format << " on " << text;
        EXPECT_EQ(Rest(stream), rest) << format << " on " << text;
    }
}

TEST(TimeFormat, RefusesTextsAndLeavesTheTargetAlone)
{
    // clang-format off
    std::array<std::string, 3> const table[] = {
        {"%Yx", "2001", mismatch},                   {"%Y%m", "200", mismatch},
        {"%%", "x", mismatch},                       {"%b %Y", "Foo 2001", mismatch},
        {"%a %Y", "Foo 2001", mismatch},             {"%X %Y", "x 2001", mismatch},
        {"%c %Y", "x 2001", mismatch},               {"%Y", "1399", "Invalid year"},
        {"%I", "13", "Invalid 12-hour clock hour"},  {"%I", "", "Invalid 12-hour clock hour"},
        {"%p", "XM", "Invalid AM/PM designator"},    {"%p", "A", "Invalid AM/PM designator"},
        {"%Z", "GMX", "Invalid time zone"},          {"%j %w %U", "366 7 54", "Invalid week number"},
        {"%j %w %U", "366 7 53", "Invalid day of week"}, {"%j %x", "366 02/03/01", "Invalid day of year"},
        {"%E", "JA", "Invalid Orvane month name"},   {"%E", "\nJAN", "Invalid Orvane month name"},
        {"%E", "qqqy", "Invalid Orvane month name: 'QQQ'"}, {"%E", "ja\nn", "Invalid Orvane month name: 'JA'"},
        {"%m", "13", "! Month number is out of range 1..12"},
        {"%d", "-5", "! Day of month value is out of range 1..31"},
        {"%m %d", "2 30", "! Day of month is not valid for year"}};
    // clang-format on
    for (auto const& [format, text, words] : table)
    {
        std::istringstream stream(text);
        Time time = sample;
        auto const read = [&, bound = TimeFormat(format)]() -> std::istream& {
            return stream >> bound(time);
        };
        EXPECT_EQ(Outcome(read), words) << format << " on " << text;
        EXPECT_EQ(time, sample) << format << " on " << text;
    }

    // A name that the facet does not know shows at the next item of the format, and at the end only in the
    // stream.
    std::istringstream last("2001 Foo");
    Time time;
    last >> TimeFormat("%Y %b")(time);
    EXPECT_TRUE(last.fail());
    EXPECT_EQ(time, Date(2001, 1, 1));
}

TEST(TimeFormat, ReadsNoFurtherThanItMust)
{
    Time time;
    std::istringstream full("2001-02-03 04:05:06.007");
    full >> time;
    EXPECT_TRUE(full.good()); // the last digit is the third one: nobody looked behind it
    for (auto const state : {std::ios::eofbit, std::ios::failbit, std::ios::badbit})
    {
        full.seekg(0);
        full.clear(state);
        EXPECT_EQ(Outcome([&] { return (full >> time).good(); }), mismatch) << state;
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

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
