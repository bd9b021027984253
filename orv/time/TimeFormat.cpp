#include "orv/time/TimeFormat.h"

#include "orv/foundation/Exception.h"
#include "orv/foundation/internal/Characters.h"
#include "orv/serialization/Serializer.h"
#include "orv/time/Time.h"
#include "orv/time/internal/Calendar.h"

#include <array>
#include <cctype>
#include <cstdlib>
#include <ctime>
#include <iomanip>
#include <istream>
#include <iterator>
#include <limits>
#include <locale>
#include <ostream>
#include <sstream>
#include <string_view>
#include <typeinfo>

namespace Zan::Orv::Core::Service {

namespace {

using TimePut = std::time_put<char>;
using TimeGet = std::time_get<char>;

[[noreturn]] void ThrowMismatch()
{
    throw TimeException("Time does not match required format");
}

[[noreturn]] void ThrowIllFormed()
{
    throw TimeException("Ill-formed time format code");
}

[[noreturn]] void ThrowInvalidCode()
{
    throw TimeException("Invalid time format code");
}

// Month names of the code E. July is written in one form and read in two.
constexpr std::array<std::string_view, 12> monthNames = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                         "JLY", "AUG", "SEP", "OCT", "NOV", "DEC"};
constexpr std::string_view otherJuly = "JUL";
constexpr int july = 6;

// What time_put writes for one code.
std::string PutCode(TimePut const& facet, std::tm const& fields, char code)
{
    std::ostringstream stream;
    facet.put(std::ostreambuf_iterator<char>(stream), stream, ' ', &fields, code);
    return stream.str();
}

// ---- writing ----

// What a time is written from, decoded once.
struct Fields
{
    std::tm tm{};
    int millisecond;

    explicit Fields(Time const& time)
    {
        long long const sinceMin = time - Time::MinTime();
        long long const days = (sinceMin >= 0 ? sinceMin : sinceMin - (DAY - 1)) / DAY;
        long long const dayNumber = Internal::firstDayNumber + days;
        Internal::Date const date = Internal::DateOfDay(dayNumber);
        tm.tm_mday = date.day;
        tm.tm_mon = date.month - 1;
        tm.tm_year = date.year - 1900;
        tm.tm_wday = Internal::DayOfWeek(dayNumber);
        tm.tm_yday = Internal::DayOfYear(dayNumber, date.year) - 1;

        auto const ofDay = static_cast<int>(sinceMin - days * DAY);
        millisecond = ofDay % 1000;
        tm.tm_sec = ofDay / 1000 % 60;
        tm.tm_min = ofDay / 60000 % 60;
        tm.tm_hour = ofDay / 3600000;
    }
};

// Writes a time by a format. Text is gathered, and goes to the stream in one piece or ahead of what the facet
// writes there by itself.
class Writer
{
public:
    Writer(std::ostream& stream, Time const& time)
        : stream_(stream), fields_(time), tm_(fields_.tm), facet_(std::use_facet<TimePut>(locale_)),
          isPlain_(typeid(facet_) == typeid(TimePut))
    {}

    void Write(std::string_view format)
    {
        for (std::size_t i = 0; i < format.size(); ++i)
        {
            if (format[i] != '%')
            {
                Put(format[i]);
                continue;
            }
            if (++i == format.size())
                Fail(ThrowIllFormed);
            WriteCode(format[i]);
        }
        Flush();
    }

private:
    void WriteCode(char code)
    {
        switch (code)
        {
        case 'Y': return PutNumber(code, tm_.tm_year + 1900, 4);
        case 'm': return PutNumber(code, tm_.tm_mon + 1, 2);
        case 'd': return PutNumber(code, tm_.tm_mday, 2);
        case 'H': return PutNumber(code, tm_.tm_hour, 2);
        case 'M': return PutNumber(code, tm_.tm_min, 2);
        case 'S': return PutNumber(code, tm_.tm_sec, 2);
        case 'y': return PutNumber(code, (tm_.tm_year + 1900) % 100, 2);
        case 'j': return PutNumber(code, tm_.tm_yday + 1, 3);
        case 'L': return PutMilliseconds();
        case 'E': return PutMonthName();
        case '%':
        case 'A':
        case 'B':
        case 'I':
        case 'U':
        case 'W':
        case 'X':
        case 'Z':
        case 'a':
        case 'b':
        case 'c':
        case 'p':
        case 'w':
        case 'x': return PutByFacet(code);
        default: Fail(ThrowInvalidCode);
        }
    }

    void PutByFacet(char code)
    {
        Flush();
        if (facet_.put(std::ostreambuf_iterator<char>(stream_), stream_, ' ', &tm_, code).failed())
            stream_.setstate(std::ios::badbit);
    }

    // The standard facet writes these codes as digits in every locale, and takes its time for it. A facet of
    // the program's own is asked.
    void PutNumber(char code, int number, int width)
    {
        if (isPlain_)
            PutDigits(number, width);
        else
            PutByFacet(code);
    }

    void PutDigits(int number, int width)
    {
        if (number >= 10000) // the year at the far end of arithmetic
        {
            PutDigits(number / 10000, 1);
            number %= 10000;
        }
        char* const end = Reserve(static_cast<std::size_t>(width)) + width;
        for (char* at = end - 1; at != end - 1 - width; --at, number /= 10)
            *at = static_cast<char>('0' + number % 10);
    }

    // As the stream formats integers, with a fill of '0' that stays.
    void PutMilliseconds()
    {
        stream_.fill('0');
        auto const flags = stream_.flags();
        bool const isPlain =
            (flags & std::ios::basefield) == std::ios::dec && (flags & std::ios::showpos) == 0 &&
            (flags & std::ios::adjustfield) != std::ios::left && stream_.getloc() == std::locale::classic();
        if (isPlain)
        {
            PutDigits(fields_.millisecond, 3);
            stream_.width(0);
            return;
        }
        Flush();
        stream_ << std::setw(3) << fields_.millisecond;
    }

    void PutMonthName()
    {
        auto const month = static_cast<std::size_t>(tm_.tm_mon);
        if (month >= monthNames.size())
            Fail([] { throw TimeException("Invalid month in Time object"); });
        monthNames[month].copy(Reserve(3), 3);
    }

    void Put(char c) { *Reserve(1) = c; }

    // Room for a few characters of the text that is gathered.
    char* Reserve(std::size_t count)
    {
        if (used_ + count > buffer_.size())
            Flush();
        used_ += count;
        return buffer_.data() + used_ - count;
    }

    void Flush()
    {
        stream_.write(buffer_.data(), static_cast<std::streamsize>(used_));
        used_ = 0;
    }

    // What stands before a bad code is written.
    template<class Thrower>
    [[noreturn]] void Fail(Thrower thrower)
    {
        Flush();
        thrower();
        std::abort();
    }

    std::ostream& stream_;
    Fields const fields_;
    std::tm const& tm_;
    std::locale const locale_;
    TimePut const& facet_;
    bool const isPlain_;
    std::array<char, 64> buffer_;
    std::size_t used_ = 0;
};

// ---- reading ----

// Reads a time by a format. The stream's state is the one that its own operations would leave: the end of
// input is seen only by looking beyond it.
class Reader
{
public:
    explicit Reader(std::istream& stream)
        : stream_(stream), facet_(std::use_facet<TimeGet>(locale_)),
          ctype_(std::use_facet<std::ctype<char>>(locale_))
    {
        // A text that gives no date is of this day.
        fields_.tm_year = 1400 - 1900;
        fields_.tm_mday = 1;
    }

    void Read(std::string_view format)
    {
        if (stream_.good() && !format.empty())
            std::istream::sentry const flushTied(stream_, true);
        for (std::size_t i = 0; i < format.size(); ++i)
        {
            if (!stream_.good())
                ThrowMismatch();
            char const c = format[i];
            if (c == '%')
            {
                if (++i == format.size())
                    ThrowIllFormed();
                ReadCode(format[i]);
            }
            else if (IsSpace(c))
                SkipSpace();
            else
                Expect(c);
        }
    }

    Time Result() const
    {
        if (week_ > 53)
            throw TimeException("Invalid week number");
        if (dayOfWeek_ > 6)
            throw TimeException("Invalid day of week");
        if (dayOfYear_ > 365)
            throw TimeException("Invalid day of year");
        int const year = fields_.tm_year + 1900;
        if (year < 1400 || year > 9999)
            throw TimeException("Invalid year");
        return Time(year, fields_.tm_mon + 1, fields_.tm_mday, fields_.tm_hour, fields_.tm_min,
                    fields_.tm_sec, millisecond_);
    }

private:
    using Get = std::istreambuf_iterator<char> (TimeGet::*)(std::istreambuf_iterator<char>,
                                                            std::istreambuf_iterator<char>, std::ios_base&,
                                                            std::ios_base::iostate&, std::tm*) const;

    static constexpr int endOfInput = std::char_traits<char>::eof();

    void ReadCode(char code)
    {
        switch (code)
        {
        case '%': return Expect('%');
        case 'A':
        case 'a':
            ReadByFacet(&TimeGet::get_weekday);
            dayOfWeek_ = fields_.tm_wday;
            return;
        case 'B':
        case 'b': return ReadByFacet(&TimeGet::get_monthname);
        case 'E': fields_.tm_mon = ReadMonthName(); return;
        case 'H':
            fields_.tm_hour = ReadNumber(2);
            twelveHours_ = false;
            return;
        case 'I':
            fields_.tm_hour = ReadNumber(2);
            if (fields_.tm_hour < 1 || fields_.tm_hour > 12)
                throw TimeException("Invalid 12-hour clock hour");
            twelveHours_ = true;
            return;
        case 'L': millisecond_ = ReadNumber(3); return;
        case 'M': fields_.tm_min = ReadNumber(2); return;
        case 'S': fields_.tm_sec = ReadNumber(2); return;
        case 'U':
        case 'W': week_ = ReadNumber(2); return;
        case 'X': return ReadByFacet(&TimeGet::get_time);
        case 'Y': fields_.tm_year = ReadNumber(4) - 1900; return;
        case 'Z': return ReadZone();
        case 'c':
            if (ReadByFacetAlone(&TimeGet::get_date) == std::ios::goodbit)
            {
                SkipSpace();
                ReadByFacet(&TimeGet::get_time);
            }
            return;
        case 'd': fields_.tm_mday = ReadNumber(2); return;
        case 'j': dayOfYear_ = ReadNumber(3); return;
        case 'm': fields_.tm_mon = ReadNumber(2) - 1; return;
        case 'p': return ReadDesignator();
        case 'w': dayOfWeek_ = ReadNumber(1); return;
        case 'x': return ReadByFacet(&TimeGet::get_date);
        case 'y':
        {
            int const year = ReadNumber(2);
            fields_.tm_year = year < 69 ? year + 100 : year;
            return;
        }
        default: ThrowInvalidCode();
        }
    }

    // A failing buffer shows in the stream's state, as with the stream's own operations.
    int Peek()
    {
        int c = endOfInput;
        try
        {
            c = stream_.rdbuf()->sgetc();
        }
        catch (...)
        {
            stream_.setstate(std::ios::badbit);
            return endOfInput;
        }
        if (c == endOfInput)
            stream_.setstate(std::ios::eofbit);
        return c;
    }

    void Consume() { stream_.rdbuf()->sbumpc(); }

    bool IsSpace(char c) const { return ctype_.is(std::ctype_base::space, c); }

    void SkipSpace()
    {
        for (int c = Peek(); c != endOfInput && IsSpace(static_cast<char>(c)); c = Peek())
            Consume();
    }

    void Expect(char expected)
    {
        int const c = Peek();
        if (c == endOfInput || static_cast<char>(c) != expected)
            ThrowMismatch();
        Consume();
    }

    // Up to `digits` digits; none is 0.
    int ReadNumber(int digits)
    {
        int number = 0;
        for (; digits > 0; --digits)
        {
            int const c = Peek();
            if (!Internal::IsDigit(c))
                break;
            number = 10 * number + (c - '0');
            Consume();
        }
        return number;
    }

    std::ios::iostate ReadByFacetAlone(Get get)
    {
        std::ios::iostate state = std::ios::goodbit;
        (facet_.*get)(std::istreambuf_iterator<char>(stream_), {}, stream_, state, &fields_);
        stream_.setstate(state);
        return state;
    }

    void ReadByFacet(Get get) { ReadByFacetAlone(get); }

    // Three characters, or fewer before a line end.
    int ReadMonthName()
    {
        std::string name;
        while (name.size() < 3)
        {
            int const c = Peek();
            if (c == endOfInput || (c == '\n' && name.empty()))
                throw TimeException("Invalid Orvane month name");
            if (c == '\n')
                break;
            name += static_cast<char>(std::toupper(c));
            Consume();
        }
        if (name == otherJuly)
            return july;
        for (std::size_t month = 0; month < monthNames.size(); ++month)
        {
            if (name == monthNames[month])
                return static_cast<int>(month);
        }
        throw TimeException("Invalid Orvane month name: '" + name + "'");
    }

    void ReadDesignator()
    {
        TimePut const& names = std::use_facet<TimePut>(locale_);
        std::tm morning{};
        morning.tm_hour = 1;
        std::tm afternoon{};
        afternoon.tm_hour = 13;
        int const found = MatchEither(PutCode(names, morning, 'p'), PutCode(names, afternoon, 'p'));
        if (found < 0)
            throw TimeException("Invalid AM/PM designator");
        if (!twelveHours_)
            return;
        if (found == 0 && fields_.tm_hour == 12)
            fields_.tm_hour = 0;
        else if (found == 1 && fields_.tm_hour < 12)
            fields_.tm_hour += 12;
    }

    void ReadZone()
    {
        std::string const zone = PutCode(std::use_facet<TimePut>(locale_), std::tm{}, 'Z');
        if (MatchEither(zone, "GMT") < 0)
            throw TimeException("Invalid time zone");
    }

    bool NextIs(char expected)
    {
        return stream_.good() && stream_.peek() == static_cast<unsigned char>(expected);
    }

    // Consumes `text` from `at` for as long as the stream goes on matching. Returns where it stopped.
    std::size_t ConsumeMatching(std::string_view text, std::size_t at)
    {
        while (at < text.size() && NextIs(text[at]))
        {
            stream_.ignore();
            ++at;
        }
        return at;
    }

    // Decides which of two texts the stream goes on with, reading as little as it can: 0, 1 or -1 for
    // neither.
    int MatchEither(std::string_view first, std::string_view second)
    {
        std::size_t at = 0;
        while (at < first.size() && at < second.size() && first[at] == second[at] && NextIs(first[at]))
        {
            stream_.ignore();
            ++at;
        }
        bool const firstEnded = at == first.size();
        bool const secondEnded = at == second.size();
        if (firstEnded && secondEnded)
            return 0;
        if (!firstEnded && !secondEnded)
        {
            if (NextIs(first[at]))
                return ConsumeMatching(first, at) == first.size() ? 0 : -1;
            if (NextIs(second[at]))
                return ConsumeMatching(second, at) == second.size() ? 1 : -1;
            return -1;
        }

        // One is the head of the other: the longer one counts when it stands there whole.
        std::string_view const longer = firstEnded ? second : first;
        std::size_t const end = ConsumeMatching(longer, at);
        if (end == longer.size())
            return firstEnded ? 1 : 0;
        for (std::size_t i = at; i < end; ++i)
            stream_.unget();
        return firstEnded ? 0 : 1;
    }

    std::istream& stream_;
    std::locale const locale_;
    TimeGet const& facet_;
    std::ctype<char> const& ctype_;
    std::tm fields_{};
    int millisecond_ = 0;
    // Checked and dropped. Not in the fields: a facet that reads a date may work these out for itself.
    int week_ = 0;
    int dayOfWeek_ = 0;
    int dayOfYear_ = 0;
    bool twelveHours_ = false;
};

} // namespace

TimeFormat::TimeFormat(std::string const& format) : format_(format)
{}

TimeFormat::BoundTimeFormat TimeFormat::operator()(Time& time) const
{
    return {this, &time};
}

TimeFormat::BoundTimeFormat TimeFormat::operator()(Time const& time) const
{
    return {this, const_cast<Time*>(&time)};
}

void TimeFormat::Serialize(Serializer& serializer)
{
    serializer.Serialize(format_, "timeFormat");
}

std::ostream& operator<<(std::ostream& stream, TimeFormat::BoundTimeFormat const& bound)
{
    Writer(stream, *bound.time).Write(bound.format->format_);
    return stream;
}

std::istream& operator>>(std::istream& stream, TimeFormat::BoundTimeFormat const& bound)
{
    Reader reader(stream);
    reader.Read(bound.format->format_);
    *bound.time = reader.Result();
    return stream;
}

} // namespace Zan::Orv::Core::Service
