#include "orv/time/ParseTime.h"

#include "orv/foundation/Exception.h"
#include "orv/foundation/internal/Characters.h"
#include "orv/time/internal/DateMatcher.h"
#include "orv/time/internal/DateOrder.h"
#include "orv/time/internal/UserLocale.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <ctime>
#include <iterator>
#include <limits>
#include <locale>
#include <sstream>
#include <string_view>

namespace Zan::Orv::Core::Service {

namespace {

[[noreturn]] void Refuse(char const* words, std::string_view text)
{
    throw TimeException(words + std::string(text) + "'");
}

constexpr char doesNotConform[] = "Cannot deduce date (does not conform to locale) in: '";

// A run of digits. What does not fit gives the largest number, which no date part is.
int ReadNumber(std::string_view digits)
{
    long long number = 0;
    for (char const digit : digits)
        number = std::min<long long>(number * 10 + (digit - '0'), std::numeric_limits<int>::max());
    return static_cast<int>(number);
}

// Month names in capitals, which every locale understands. July has two short ones.
struct MonthName
{
    std::string_view name;
    int month;
};
constexpr MonthName monthNames[] = {
    {"JAN", 1},  {"FEB", 2},     {"MAR", 3},       {"APR", 4},      {"MAY", 5},       {"JUN", 6},
    {"JUL", 7},  {"JLY", 7},     {"AUG", 8},       {"SEP", 9},      {"OCT", 10},      {"NOV", 11},
    {"DEC", 12}, {"JANUARY", 1}, {"FEBRUARY", 2},  {"MARCH", 3},    {"APRIL", 4},     {"JUNE", 6},
    {"JULY", 7}, {"AUGUST", 8},  {"SEPTEMBER", 9}, {"OCTOBER", 10}, {"NOVEMBER", 11}, {"DECEMBER", 12},
};

int ReadMonth(std::string_view word)
{
    for (auto const& [name, month] : monthNames)
    {
        if (name == word)
            return month;
    }

    std::locale const& user = Internal::GetUserLocale().locale;
    std::istringstream stream{std::string(word)};
    stream.imbue(user); // some libraries take the names from the stream's locale
    std::ios::iostate state = std::ios::goodbit;
    std::tm fields{};
    std::use_facet<std::time_get<char>>(user).get_monthname(std::istreambuf_iterator<char>(stream), {},
                                                            stream, state, &fields);
    if ((state & (std::ios::failbit | std::ios::badbit)) != 0)
        Refuse("Cannot parse month: '", word);
    return fields.tm_mon + 1;
}

enum Kind
{
    Unknown = 0,
    Year = 1,
    Month = 2,
    Day = 4
};

using Layout = std::array<Kind, 3>;
constexpr Layout yearMonthDay = {Year, Month, Day};

// The layout of a locale's dates. False for no or an unknown order.
bool FindLayout(std::time_base::dateorder order, Layout& layout)
{
    switch (order)
    {
    case std::time_base::dmy: layout = {Day, Month, Year}; return true;
    case std::time_base::mdy: layout = {Month, Day, Year}; return true;
    case std::time_base::ymd: layout = yearMonthDay; return true;
    case std::time_base::ydm: layout = {Year, Day, Month}; return true;
    default: return false;
    }
}

// The three components of a date in the order of the text, and what each of them was found to be.
class Components
{
public:
    Components(std::string const& text, Internal::DateGroups const& groups) : text_(text)
    {
        Classify(groups);
        if ((Known() & Year) != 0)
            FindDay();
        PlaceTheLast();
        PlaceTwins();
        if (Known() != (Year | Month | Day))
            PlaceByLocale();
    }

    int ValueOf(Kind kind) const { return values_[IndexOf(kind)]; }

private:
    void Classify(Internal::DateGroups const& groups)
    {
        for (std::size_t i = 0; i < 3; ++i)
        {
            std::string_view const component = groups.group[i + 1];
            if (Internal::IsDigit(component.front()))
            {
                values_[i] = ReadNumber(component);
                if (values_[i] > 31)
                    Set(i, Year, "Year specified multiple times in : '");
                if (values_[i] < 1)
                    Refuse("Invalid date component in: '", text_);
            }
            else
            {
                values_[i] = ReadMonth(component);
                Set(i, Month, "Month name specified multiple times in: '");
            }
        }
    }

    // Beside a year, what is too large for a month can only be the day.
    void FindDay()
    {
        for (std::size_t i = 0; i < 3; ++i)
        {
            if (values_[i] >= 13 && values_[i] <= 31)
                Set(i, Day, "Day specified multiple times in : '");
        }
    }

    void PlaceTheLast()
    {
        if (Known() == (Year | Month))
            kinds_[IndexOf(Unknown)] = Day;
        else if (Known() == (Year | Day))
            kinds_[IndexOf(Unknown)] = Month;
    }

    // Two equal numbers mean the same in either order.
    void PlaceTwins()
    {
        int const known = Known();
        if (known != Year && known != Month && known != Day)
            return;
        std::size_t const first = IndexOf(Unknown);
        std::size_t const second = kinds_[first + 1] == Unknown ? first + 1 : first + 2;
        if (values_[first] != values_[second])
            return;
        kinds_[first] = known == Day ? Month : Day;
        kinds_[second] = known == Year ? Month : Year;
    }

    void PlaceByLocale()
    {
        Layout layout{};
        bool const hasOrder = FindLayout(Internal::UserDateOrder(Internal::GetUserLocale().locale), layout);
        if (Known() == Unknown)
        {
            if (!hasOrder)
                Refuse("Cannot deduce date (unknown locale date order) in: '", text_);
        }
        else
        {
            auto const known = static_cast<Kind>(Known());
            std::size_t const at = IndexOf(known);
            bool const conforms = hasOrder && layout[at] == known;
            if (!conforms && (known != Year || at != 0))
                Refuse(doesNotConform, text_);
            if (!conforms) // a date that begins with its year goes on with the month nearly everywhere
                layout = yearMonthDay;
        }
        kinds_ = layout;
    }

    int Known() const { return kinds_[0] | kinds_[1] | kinds_[2]; }

    std::size_t IndexOf(Kind kind) const
    {
        return static_cast<std::size_t>(std::find(kinds_.begin(), kinds_.end(), kind) - kinds_.begin());
    }

    void Set(std::size_t i, Kind kind, char const* wordsForTwice)
    {
        if ((Known() & kind) != 0)
            Refuse(wordsForTwice, text_);
        kinds_[i] = kind;
    }

    std::string const& text_;
    std::array<int, 3> values_{};
    Layout kinds_{};
};

// The hour of the day, from one of a 12-hour clock.
int ApplyDesignator(int hour, std::string_view designator, std::string const& text)
{
    Internal::UserLocale const& user = Internal::GetUserLocale();
    bool const isMorning = designator == user.morning;
    if (!isMorning && designator != user.afternoon)
        Refuse("Invalid AM/PM designator in :'", text);
    if (hour == 0 || hour > 12)
        Refuse("Invalid time: '", text);
    if (isMorning)
        return hour == 12 ? 0 : hour;
    return hour < 12 ? hour + 12 : hour;
}

int ReadMilliseconds(std::string_view fraction)
{
    double value = 0.0;
    std::from_chars(fraction.data(), fraction.data() + fraction.size(), value);
    return static_cast<int>(value * 1000.0);
}

} // namespace

Time ParseTime(std::string const& text, bool twoDigitYears2000)
{
    Internal::DateGroups groups;
    if (!Internal::MatchDate(text, groups))
        Refuse("Cannot parse time '", text);

    Components const date(text, groups);
    int year = date.ValueOf(Year);
    if (year < 100)
        year += twoDigitYears2000 && year < 69 ? 2000 : 1900;

    auto const number = [&groups](std::size_t i) { return groups.took[i] ? ReadNumber(groups.group[i]) : 0; };
    int hour = number(4);
    int const millisecond = groups.took[7] ? ReadMilliseconds(groups.group[7]) : 0;
    if (groups.took[8])
        hour = ApplyDesignator(hour, groups.group[8], text);
    return Time(year, date.ValueOf(Month), date.ValueOf(Day), hour, number(5), number(6), millisecond);
}

} // namespace Zan::Orv::Core::Service
