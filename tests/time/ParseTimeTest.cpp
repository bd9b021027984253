#include "orv/time/ParseTime.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/time/Times.h"

#include <array>
#include <utility>
#include <vector>

// The C library leaks the pieces of LOCPATH each time that a locale is looked for there, which only these tests do.
extern "C" char const* __lsan_default_suppressions();
extern "C" char const* __lsan_default_suppressions()
{
    return "leak:argz_add_sep\n";
}

namespace Zan::Orv::Core::Service::Tests {
namespace {

using testing::PrintToString;

#ifdef ORV_TEST_LOCALES
std::string const localePath = ORV_TEST_LOCALES;
#else
std::string const localePath;
#endif

// Names the user's locale in the environment, as long as it lives.
struct LocaleGuard
{
    explicit LocaleGuard(std::string const& all, std::string const& times = "", std::string const& rest = "")
        : variables{{"LC_ALL", all}, {"LC_TIME", times}, {"LANG", rest}, {"LOCPATH", localePath}}
    {}
    ScopedEnvironment variables[4];
};

std::string Parsed(std::string const& text, bool flag = true)
{
    return Outcome([&] { return ParseTime(text, flag); });
}

TEST(ParseTime, ReadsWhatIsPlainEverywhere)
{
    LocaleGuard const guard("C");
    // clang-format off
    std::pair<std::string, std::string> const table[] = {
        // A number that can be one thing alone settles the others.
        {"25/12/2000", "2000-12-25"},   {"2000.25,12", "2000-12-25"},  {"5 2000 JAN", "2000-01-05"},
        {"31DECEMBER1999", "1999-12-31"},
        {"1 - AUG , 32", "2032-08-01"},
        // Twins.
        {"5 JAN 05", "2005-01-05"},     {"12 12 NOV", "2012-11-12"},   {"99 5 5", "1999-05-05"},
        {"5 99 5", "1999-05-05"},       {"68 2 2", "2068-02-02"},      {"69 2 2", "1969-02-02"},
        // The time of day.
        {"1JAN20001:30", "2000-01-01 01:30"},
        {"1 JAN 2000 12.30.15.25", "2000-01-01 12:30:15.250"}, {"1 JAN 2000 0:0:0.0009", "2000-01-01"},
        {"1 JAN 2000 25:61:61", "2000-01-02 02:02:01"},        {"\t1\nJAN\v2000\f1:2\r", "2000-01-01 01:02"},
        {"1 JAN 2000 0:0:0." + std::string(20, '9'), "2000-01-01 00:00:01"}, // rounded up before it is cut
        {"1 JAN 2000 12:30 PM", "2000-01-01 12:30"},           {"1 JAN 2000 12:30AM", "2000-01-01 00:30"},
        {"1 JAN 2000 1:00:00.5PM", "2000-01-01 13:00:00.500"}, {"1 JAN 2000 11:9\nAM ", "2000-01-01 11:09"}};
    // clang-format on
    for (auto const& [text, time] : table)
        EXPECT_EQ(Parsed(text), Whole(time)) << text;
    EXPECT_EQ(Parsed("68 5 5", false), Whole("1968-05-05")); // without the flag, of the last century

    // The standard text loses no millisecond.
    for (int millisecond = 0; millisecond < 1000; ++millisecond)
    {
        std::string const text = PrintToString(Time(1987, 6, 15, 23, 59, 59, millisecond));
        EXPECT_EQ(Parsed(text), text);
    }
}

TEST(ParseTime, TellsWhatIsWrong)
{
    LocaleGuard const guard("C");
    // clang-format off
    std::pair<std::string, std::vector<std::string>> const table[] = {
        {"Cannot parse time '", {"", "1:2:3", "1 M\xC3\xA4rz 2000", "1 JAN 2000 PM", "1 JAN 2000 1:2 A M"}},
        {"Year specified multiple times in : '", {"1999 2000 1", "32 JAN 33", "2000 1999 0"}},
        {"Month name specified multiple times in: '", {"JAN FEB 2000"}},
        {"Day specified multiple times in : '", {"1999 15 16", "15 1999 15", "1999 15 16 13:00 PM"}},
        // The last one is the second of some month in the year 200, and a time of day.
        {"Invalid date component in: '", {"0 1 2000", "00 2000 1999", "JAN 0 XYZ", "2000 2 3.4"}},
        {"Invalid time: '", {"1 JAN 2000 13:00 PM", "1 JAN 2000 0:30AM", "31 FEB 2000 13:0AM"}},
        {"Invalid AM/PM designator in :'", {"1 JAN 2000 12:30 XM", "1 JAN 2000 99:30 am"}}};
    // clang-format on
    for (auto const& [words, texts] : table)
        for (std::string const& text : texts)
            EXPECT_EQ(Parsed(text), words + text + "'");
    EXPECT_EQ(Parsed("1999 M 2000"), "Cannot parse month: 'M'");
    EXPECT_EQ(Parsed("31 FEB 2000"), "! Day of month is not valid for year");
    EXPECT_EQ(Parsed("1JAN200012:30"),
              "! Year is out of valid range: 1400..10000"); // half past two in 20001
}

TEST(ParseTime, ReadsAMillionOfAnything)
{
    LocaleGuard const guard("C");
    auto const many = [](char c, std::size_t count = 1000000) { return std::string(count, c); };
    EXPECT_EQ(Parsed("5" + many(' ') + "!").substr(0, 19), "Cannot parse time '");
    EXPECT_EQ(Parsed(many('a')), "Cannot parse month: '" + many('a', 999998) + "'");
    EXPECT_EQ(Parsed("1" + many(' ') + "JAN 2000 " + many('0') + "1:2:3." + many('5') + many('\n') + "PM"),
              Whole("2000-01-01 13:02:03.555"));
    EXPECT_EQ(Parsed(many('9') + " JAN 5")[0], '!'); // no year of the calendar, whatever it counts as
}

#ifndef _WIN32

TEST(ParseTime, PassesOnThatThereIsNoSuchLocale)
{
    LocaleGuard const guard("no_WHERE");
    for (std::string const text : {"1 2 3", "1 Jan 2000", "1 JAN 2000 1:00 PM"})
        EXPECT_EQ(Parsed(text)[0], '!') << text;                  // not our own
    EXPECT_EQ(Parsed("1 JAN 2000 1:00"), Whole("2000-01-01 01")); // nobody asks for it
}

TEST(ParseTime, AsksForTheOrderLast)
{
    // clang-format off
    std::array<std::string, 7> const texts =
               {"1 2 3",      "JAN 2 3",    "2 JAN 3",    "2 3 JAN",    "2000 2 3",   "2 2000 3", "2 3 2000"};
    // Where there is nothing, the text does not conform.
    std::pair<std::string, std::array<std::string, 7>> const table[] = {
#ifdef ORV_TEST_LOCALES
        {"en_US", {"2003-01-02", "2003-01-02", "",           "",           "2000-02-03", "", "2000-02-03"}},
        {"de_DE", {"2003-02-01", "",           "2003-01-02", "",           "2000-02-03", "", "2000-03-02"}},
        {"sv_SE", {"2001-02-03", "",           "2002-01-03", "",           "2000-02-03", "", ""}},
        {"ydm",   {"2001-03-02", "",           "",           "2002-01-03", "2000-03-02", "", ""}},
        {"orderless", {"Cannot deduce date (unknown locale date order) in: '1 2 3'",
                                   "",         "",           "",           "2000-02-03", "", ""}},
#endif
        {"C",     {"2003-01-02", "2003-01-02", "",           "",           "2000-02-03", "", "2000-02-03"}}};
    // clang-format on
    for (auto const& [locale, times] : table)
    {
        LocaleGuard const guard(locale);
        for (std::size_t i = 0; i < texts.size(); ++i)
            EXPECT_EQ(Parsed(texts[i]),
                      times[i].empty()
                          ? "Cannot deduce date (does not conform to locale) in: '" + texts[i] + "'"
                          : Whole(times[i]))
                << locale << ": " << texts[i];
    }
}

#ifdef ORV_TEST_LOCALES
TEST(ParseTime, KnowsTheWordsOfTheLocale)
{
    // clang-format off
    std::array<std::string, 3> const table[] = {
        {"en_US", "February 1 2000 1:00 PM", "2000-02-01 13"},
        {"en_GB", "1 Feb 2000 12:00 am",     "2000-02-01"},
        {"de_DE", "1. Mai 2000",             "2000-05-01"},
        {"de_DE", "24.December 99",          "Cannot parse month: 'December'"},
        {"de_DE", "1 MAY 2000 1:00 AM",      "Invalid AM/PM designator in :'1 MAY 2000 1:00 AM'"},
        {"sv_SE", "1 maj 2000 1:00",         "2000-05-01 01"}};
    // clang-format on
    for (auto const& [locale, text, time] : table)
    {
        LocaleGuard const guard(locale);
        EXPECT_EQ(Parsed(text), Whole(time)) << locale << ": " << text;
    }
    LocaleGuard const guard("", "en_GB", "en_US"); // the category decides before the language
    EXPECT_EQ(Parsed("1 2 3 1:00 pm"), Whole("2003-02-01 13"));
}
#endif

#endif

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
