#pragma once

#include "orv/time/Time.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Zan::Orv::Core::Service {

class ITimeSymbolTable;

namespace Internal {

/// Evaluates symbolic times against one table.
class SymbolEvaluator
{
public:
    SymbolEvaluator(ITimeSymbolTable const* table, bool twoDigitYears2000)
        : table_(table), twoDigitYears2000_(twoDigitYears2000)
    {}

    /// The moment of a text. \throws as the symbolic `ParseTime`.
    Time Evaluate(std::string const& text);

    /// True when the text has a moment, false for what is a `TimeException`. The symbols on the way are remembered, so
    /// that a table whose definitions build on each other is checked in time linear to its size.
    bool IsValid(std::string const& text);

private:
    struct Level;

    Time EvaluateChain(std::string const& text, bool remember);
    /// The moment at the end of a chain of definitions, and the levels that lead to it.
    Time FollowChain(std::string const& text, std::vector<Level>& levels);
    /// The name that comes again the earliest, in a chain where one does.
    static std::string const& FirstRepeated(std::vector<Level> const& levels);

    ITimeSymbolTable const* table_;
    bool twoDigitYears2000_;
    std::map<std::string, std::optional<Time>> known_; // without a time where there is none
};

} // namespace Internal

} // namespace Zan::Orv::Core::Service
