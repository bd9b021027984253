#pragma once

#include "orv/Export.h"
#include "orv/time/ITimeSymbolTable.h"
#include "orv/time/TimeString.h"

#include <list>
#include <map>
#include <string>

namespace Zan::Orv::Core::Service {

/// Symbols and their definitions: a map with a second face. Names are compared byte by byte. Nothing is checked on the
/// way in, not even whether a text can refer to a name: see `ParseTime`. Reading one on several threads is safe while
/// nobody changes it.
///
///     TimeSymbolTable table;
///     table["START"] = TimeString("1 JAN 2000");
///     table["REVIEW"] = TimeString("START + 6 months");
///     Time const review = ParseTime(TimeString("REVIEW - 1 week"), &table, true);
class ORV_API TimeSymbolTable : public std::map<std::string, TimeString>, public ITimeSymbolTable
{
public:
    TimeSymbolTable() = default;
    TimeSymbolTable(TimeSymbolTable const&) = default;
    TimeSymbolTable& operator=(TimeSymbolTable const&) = default;
    ~TimeSymbolTable() override;

    /// A copy of the definition, not defined for an unknown name. Never makes an entry.
    TimeString find(std::string const& name) const override;

    /// True when `time` can be evaluated against `table`. What is no `TimeException` passes through.
    static bool IsValid(TimeString const& time, TimeSymbolTable const& table);

    /// True when every definition of `table` can be evaluated. With a list, the names of those that can not are appended
    /// to it, and the answer is whether the list is empty, whoever filled it.
    static bool IsValid(TimeSymbolTable const& table, std::list<std::string>* invalidSymbols);
};

} // namespace Zan::Orv::Core::Service
