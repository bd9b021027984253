#include "orv/foundation/Exception.h"
#include "orv/time/TimeFrequency.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/internal/TermReader.h"

namespace Zan::Orv::Core::Service {

namespace {

using Internal::UnitRow;

// Numbers wrap at 32 bits, as the counts of an offset do.
int Times(int number, long long factor)
{
    return static_cast<int>(number * factor);
}

TimeOffset MakeOffset(int number, UnitRow row)
{
    switch (row)
    {
    case UnitRow::Years: return TimeOffset(number, 0, 0, 0, 0, 0, 0);
    case UnitRow::Months: return TimeOffset(0, number, 0, 0, 0, 0, 0);
    case UnitRow::Weeks: return TimeOffset(0, 0, Times(number, 7), 0, 0, 0, 0);
    case UnitRow::Days: return TimeOffset(0, 0, number, 0, 0, 0, 0);
    case UnitRow::Hours: return TimeOffset(0, 0, 0, number, 0, 0, 0);
    case UnitRow::Minutes: return TimeOffset(0, 0, 0, 0, number, 0, 0);
    case UnitRow::Seconds: return TimeOffset(0, 0, 0, 0, 0, number, 0);
    case UnitRow::Milliseconds: return TimeOffset(0, 0, 0, 0, 0, 0, number);
    }
    throw TimeException("Internal error: LookupUnit failed");
}

TimeFrequency MakeFrequency(int number, UnitRow row)
{
    using Unit = TimeFrequency::FrequencyUnit;
    switch (row)
    {
    case UnitRow::Years: return TimeFrequency(number, Unit::Years);
    case UnitRow::Months: return TimeFrequency(number, Unit::Months);
    case UnitRow::Weeks: return TimeFrequency(Times(number, 7), Unit::Days);
    case UnitRow::Days: return TimeFrequency(number, Unit::Days);
    case UnitRow::Hours: return TimeFrequency(number, Unit::Hours);
    case UnitRow::Minutes: return TimeFrequency(number, Unit::Minutes);
    case UnitRow::Seconds: return TimeFrequency(number, Unit::Seconds);
    case UnitRow::Milliseconds: return TimeFrequency(number, Unit::Milliseconds);
    }
    throw TimeException("Internal error: LookupUnit failed");
}

} // namespace

TimeOffset ParseTimeOffset(std::string const& text)
{
    TimeOffset result(0, 0, 0, 0, 0, 0, 0);
    for (Internal::TermReader reader(text); reader.Next(true);)
    {
        int const number = Times(reader.Number(), reader.IsNegative() ? -1 : 1);
        result += MakeOffset(number, Internal::LookupUnit(reader.Unit()));
    }
    return result;
}

TimeFrequency ParseTimeFrequency(std::string const& text)
{
    Internal::TermReader reader(text);
    bool const found = reader.Next(false);
    // A text without a term fails on its empty unit.
    UnitRow const row = Internal::LookupUnit(found ? reader.Unit() : std::string_view());
    return MakeFrequency(reader.Number(), row);
}

} // namespace Zan::Orv::Core::Service
