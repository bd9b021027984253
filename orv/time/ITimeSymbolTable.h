#pragma once

#include "orv/Export.h"

#include <string>

namespace Zan::Orv::Core::Service {

class TimeString;

/// What evaluation needs of a table of symbols. It is asked on the thread that evaluates.
class ORV_API ITimeSymbolTable
{
public:
    ITimeSymbolTable() = default;
    ITimeSymbolTable(ITimeSymbolTable const&) = default;
    ITimeSymbolTable& operator=(ITimeSymbolTable const&) = default;
    virtual ~ITimeSymbolTable();

    /// The definition of `name`, or a time that is not defined. Must not throw for an unknown name.
    virtual TimeString find(std::string const& name) const = 0;
};

} // namespace Zan::Orv::Core::Service
