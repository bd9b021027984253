#include "orv/time/TimeSymbolTable.h"

#include "orv/time/ParseTime.h"
#include "orv/time/internal/SymbolEvaluator.h"

namespace Zan::Orv::Core::Service {

ITimeSymbolTable::~ITimeSymbolTable() = default;

TimeSymbolTable::~TimeSymbolTable() = default;

TimeString TimeSymbolTable::find(std::string const& name) const
{
    auto const entry = map::find(name);
    return entry == end() ? TimeString() : entry->second;
}

bool TimeSymbolTable::IsValid(TimeString const& time, TimeSymbolTable const& table)
{
    return Internal::SymbolEvaluator(&table, true).IsValid(time.GetString());
}

bool TimeSymbolTable::IsValid(TimeSymbolTable const& table, std::list<std::string>* invalidSymbols)
{
    Internal::SymbolEvaluator evaluator(&table, true);
    for (auto const& [name, definition] : table)
    {
        if (evaluator.IsValid(definition.GetString()))
            continue;
        if (invalidSymbols == nullptr)
            return false;
        invalidSymbols->push_back(name);
    }
    // The list answers, also for what it held before.
    return invalidSymbols == nullptr || invalidSymbols->empty();
}

Time ParseTime(TimeString const& time, ITimeSymbolTable const* table, bool twoDigitYears2000)
{
    return Internal::SymbolEvaluator(table, twoDigitYears2000).Evaluate(time.GetString());
}

} // namespace Zan::Orv::Core::Service
