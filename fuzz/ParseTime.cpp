#include "orv/time/ParseTime.h"

#include "fuzz/Input.h"
#include "orv/foundation/Exception.h"
#include "orv/time/TimeString.h"
#include "orv/time/TimeSymbolTable.h"

#include <algorithm>
#include <list>
#include <stdexcept>

namespace Zan::Orv::Core::Service::Fuzz {

namespace {

template<class Action>
bool Tries(Action action)
{
    return Succeeds<TimeException, ServiceException, std::out_of_range>(action);
}

} // namespace

// A date by itself, and as a symbolic time before a table of whatever the input holds.
void Run(Input& input)
{
    bool const twoDigitYears2000 = input.Flag();
    TimeSymbolTable table;
    for (unsigned count = input.Below(8); count > 0; --count)
    {
        std::string const name = input.Text();
        table[name] = TimeString(input.Text());
    }
    std::string const text = input.Rest();
    Tries([&] { ParseTime(text, twoDigitYears2000); });
    bool const isTime = Tries([&] { ParseTime(TimeString(text), &table, true); });
    Tries([&] {
        Require(isTime == TimeSymbolTable::IsValid(TimeString(text), table),
                "what is valid can be evaluated");
    });
    Tries([&] {
        std::list<std::string> invalid;
        bool const isValid = TimeSymbolTable::IsValid(table, &invalid);
        Require(isValid == invalid.empty(), "a table is valid when nothing in it is not");
        for (auto const& [name, definition] : table)
        {
            bool const isInvalid = std::find(invalid.begin(), invalid.end(), name) != invalid.end();
            bool const hasMoment = Tries([&, &text = definition] { ParseTime(text, &table, true); });
            Require(isInvalid != hasMoment, "a definition is valid where it has a moment");
        }
    });
}

} // namespace Zan::Orv::Core::Service::Fuzz
