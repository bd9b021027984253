#include "orv/time/internal/DateMatcher.h"

#include "orv/foundation/internal/Characters.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Zan::Orv::Core::Service::Internal {

namespace {

// The classes of characters, as bits.
enum Class : std::uint8_t
{
    Nothing = 0,
    Space = 1,
    Digit = 2,
    Letter = 4,
    Point = 8,
    Colon = 16,
    Separator = 32
};

constexpr std::array<std::uint8_t, 256> MakeClasses()
{
    std::array<std::uint8_t, 256> classes{};
    for (int c = 0; c < 128; ++c)
        classes[static_cast<std::size_t>(c)] = static_cast<std::uint8_t>(
            (IsSpace(c) ? Space : 0) | (IsDigit(c) ? Digit : 0) | (IsLetter(c) ? Letter : 0) |
            (c == '.' ? Point | Colon | Separator : 0) | (c == ':' ? Colon : 0) |
            (c == '-' || c == '/' || c == ',' ? Separator : 0));
    return classes;
}

std::uint8_t ClassOf(char c)
{
    static constexpr std::array<std::uint8_t, 256> classes = MakeClasses();
    return classes[static_cast<unsigned char>(c)];
}

// The places in the expression, in its order.
enum State : std::uint8_t
{
    Lead,
    First,
    FirstDigits,
    FirstLetters,
    FirstGap,
    FirstMark,
    SecondLead,
    Second,
    SecondDigits,
    SecondLetters,
    SecondGap,
    SecondMark,
    ThirdLead,
    Third,
    ThirdDigits,
    ThirdLetters,
    ThirdGap,
    Hour,
    HourDigits,
    Minute,
    MinuteDigits,
    SecondsMark,
    Seconds,
    SecondsDigits,
    FractionPoint,
    Fraction,
    FractionDigits,
    Pause,
    Word,
    WordLetters,
    Tail,
    End,
    StateCount,
    None = StateCount
};

// What can be done at a place, the preferred first: consume a character of a class and go on at `next`, or of another
// class and go on at `otherNext`, or consume nothing and go on at `skip`, which lies behind. Characters that are consumed
// belong to `group`, or to none for 0; the other class is of the group too but for the mark behind the hour.
struct Step
{
    std::uint8_t taken;
    State next;
    std::uint8_t other;
    State otherNext;
    State skip;
    std::uint8_t group;
};

constexpr std::array<Step, StateCount> steps = {{
    /* Lead           */ {Space, Lead, Nothing, None, First, 0},
    /* First          */ {Digit, FirstDigits, Letter, FirstLetters, None, 1},
    /* FirstDigits    */ {Digit, FirstDigits, Nothing, None, FirstGap, 1},
    /* FirstLetters   */ {Letter, FirstLetters, Nothing, None, FirstGap, 1},
    /* FirstGap       */ {Space, FirstGap, Nothing, None, FirstMark, 0},
    /* FirstMark      */ {Separator, SecondLead, Nothing, None, SecondLead, 0},
    /* SecondLead     */ {Space, SecondLead, Nothing, None, Second, 0},
    /* Second         */ {Digit, SecondDigits, Letter, SecondLetters, None, 2},
    /* SecondDigits   */ {Digit, SecondDigits, Nothing, None, SecondGap, 2},
    /* SecondLetters  */ {Letter, SecondLetters, Nothing, None, SecondGap, 2},
    /* SecondGap      */ {Space, SecondGap, Nothing, None, SecondMark, 0},
    /* SecondMark     */ {Separator, ThirdLead, Nothing, None, ThirdLead, 0},
    /* ThirdLead      */ {Space, ThirdLead, Nothing, None, Third, 0},
    /* Third          */ {Digit, ThirdDigits, Letter, ThirdLetters, None, 3},
    /* ThirdDigits    */ {Digit, ThirdDigits, Nothing, None, ThirdGap, 3},
    /* ThirdLetters   */ {Letter, ThirdLetters, Nothing, None, ThirdGap, 3},
    /* ThirdGap       */ {Space, ThirdGap, Nothing, None, Hour, 0},
    /* Hour           */ {Digit, HourDigits, Nothing, None, Tail, 4},
    /* HourDigits     */ {Digit, HourDigits, Colon, Minute, None, 4},
    /* Minute         */ {Digit, MinuteDigits, Nothing, None, None, 5},
    /* MinuteDigits   */ {Digit, MinuteDigits, Nothing, None, SecondsMark, 5},
    /* SecondsMark    */ {Colon, Seconds, Nothing, None, Pause, 0},
    /* Seconds        */ {Digit, SecondsDigits, Nothing, None, None, 6},
    /* SecondsDigits  */ {Digit, SecondsDigits, Nothing, None, FractionPoint, 6},
    /* FractionPoint  */ {Point, Fraction, Nothing, None, Pause, 7},
    /* Fraction       */ {Digit, FractionDigits, Nothing, None, None, 7},
    /* FractionDigits */ {Digit, FractionDigits, Nothing, None, Pause, 7},
    /* Pause          */ {Space, Pause, Nothing, None, Word, 0},
    /* Word           */ {Letter, WordLetters, Nothing, None, Tail, 8},
    /* WordLetters    */ {Letter, WordLetters, Nothing, None, Tail, 8},
    /* Tail           */ {Space, Tail, Nothing, None, End, 0},
    /* End            */ {Nothing, None, Nothing, None, None, 0},
}};

void Extend(DateGroups& groups, std::size_t group, std::string_view text, std::size_t at)
{
    if (group == 0)
        return;
    std::size_t const before = groups.took[group] ? groups.group[group].size() : 0;
    groups.group[group] = text.substr(at - before, before + 1);
    groups.took[group] = true;
}

// For each position of the text the places of the expression, as bits, from which the rest of the text matches. Found
// from the end backwards, with no place looked at twice.
std::vector<std::uint32_t> FindWays(std::string_view text)
{
    static_assert(StateCount <= 32);
    auto const has = [](std::uint32_t ways, State state) {
        return state != None && (ways >> state & 1u) != 0;
    };
    std::vector<std::uint32_t> ways(text.size() + 1);
    for (std::size_t at = text.size() + 1; at-- > 0;)
    {
        bool const atEnd = at == text.size();
        std::uint8_t const found = atEnd ? std::uint8_t{Nothing} : ClassOf(text[at]);
        std::uint32_t const behind = atEnd ? 0 : ways[at + 1];
        std::uint32_t here = atEnd ? 1u << End : 0u;
        for (std::size_t state = End; state-- > 0;) // each skip leads to a later place
        {
            Step const& step = steps[state];
            bool const leads = ((found & step.taken) != 0 && has(behind, step.next)) ||
                               ((found & step.other) != 0 && has(behind, step.otherNext)) ||
                               has(here, step.skip);
            here |= (leads ? 1u : 0u) << state;
        }
        ways[at] = here;
    }
    return ways;
}

// Walks through the expression by the preferred step of those from which the rest of the text matches.
void Walk(std::string_view text, DateGroups& groups, std::vector<std::uint32_t> const& ways)
{
    auto const leads = [&ways](std::size_t at, State state) { return (ways[at] >> state & 1u) != 0; };
    groups = DateGroups();
    std::size_t at = 0;
    for (State state = Lead; state != End;)
    {
        Step const& step = steps[state];
        std::uint8_t const found = at < text.size() ? ClassOf(text[at]) : std::uint8_t{Nothing};
        if ((found & step.taken) != 0 && leads(at + 1, step.next))
        {
            Extend(groups, step.group, text, at++);
            state = step.next;
        }
        else if ((found & step.other) != 0 && leads(at + 1, step.otherNext))
        {
            Extend(groups, state == HourDigits ? 0u : step.group, text, at++);
            state = step.otherNext;
        }
        else
            state = step.skip; // one of the three leads to the end
    }
}

// Reads by hand the way that the expression tries first: each piece takes all that it can. What gets through is the match;
// what does not may still be one.
class UsualDate
{
public:
    UsualDate(std::string_view text, DateGroups& groups) : text_(text), groups_(groups)
    {
        groups = DateGroups();
    }

    bool Read()
    {
        SkipSpace();
        for (std::size_t component = 1; component <= 3; ++component)
        {
            if (!Take(component, NextIs(Digit) ? Digit : Letter))
                return false;
            SkipSpace();
            if (component < 3 && NextIs(Separator))
            {
                ++at_;
                SkipSpace();
            }
        }
        if (NextIs(Digit) && !ReadTime())
            return false;
        return at_ == text_.size();
    }

private:
    bool ReadTime()
    {
        if (!Take(4, Digit) || !Skip(Colon) || !Take(5, Digit))
            return false;
        if (Skip(Colon))
        {
            if (!Take(6, Digit) || (NextIs(Point) && !TakeFraction()))
                return false;
        }
        SkipSpace();
        if (NextIs(Letter))
            Take(8, Letter);
        SkipSpace();
        return true;
    }

    bool TakeFraction()
    {
        std::size_t const point = at_++;
        if (!Take(7, Digit))
            return false;
        groups_.group[7] = text_.substr(point, at_ - point);
        return true;
    }

    bool NextIs(Class expected) const { return at_ < text_.size() && (ClassOf(text_[at_]) & expected) != 0; }

    bool Skip(Class expected)
    {
        bool const is = NextIs(expected);
        at_ += is ? 1 : 0;
        return is;
    }

    void SkipSpace()
    {
        while (NextIs(Space))
            ++at_;
    }

    // One character or more of a class.
    bool Take(std::size_t group, Class expected)
    {
        std::size_t const begin = at_;
        while (NextIs(expected))
            ++at_;
        groups_.group[group] = text_.substr(begin, at_ - begin);
        groups_.took[group] = true;
        return at_ != begin;
    }

    std::string_view text_;
    DateGroups& groups_;
    std::size_t at_ = 0;
};

} // namespace

bool MatchDate(std::string_view text, DateGroups& groups)
{
    if (UsualDate(text, groups).Read())
        return true;

    // A number has to be shared between components, or nothing matches.
    std::vector<std::uint32_t> const ways = FindWays(text);
    if ((ways[0] >> Lead & 1u) == 0)
        return false;
    Walk(text, groups, ways);
    return true;
}

} // namespace Zan::Orv::Core::Service::Internal
