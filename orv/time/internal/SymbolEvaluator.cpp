#include "orv/time/internal/SymbolEvaluator.h"

#include "orv/foundation/Exception.h"
#include "orv/time/ITimeSymbolTable.h"
#include "orv/time/ParseTime.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimeString.h"
#include "orv/time/internal/ExpressionMatcher.h"

#include <set>
#include <string_view>

namespace Zan::Orv::Core::Service::Internal {

// One definition in a chain of them: whose it is, and what it adds to what it builds on. The first one, which is what
// was asked for, has no name.
struct SymbolEvaluator::Level
{
    std::string name;
    std::string offsets;
};

// A chain is followed to its end before anything is calculated, and then back: in a loop, so that it may have any length.
Time SymbolEvaluator::EvaluateChain(std::string const& text, bool remember)
{
    std::vector<Level> levels(1);
    try
    {
        Time value = FollowChain(text, levels);
        for (; !levels.empty(); levels.pop_back())
        {
            if (!levels.back().offsets.empty())
                value += ParseTimeOffset(levels.back().offsets);
            if (remember && levels.size() > 1)
                known_.insert_or_assign(levels.back().name, value);
        }
        return value;
    }
    catch (TimeException const&)
    {
        // What builds on a failure fails as well. Nothing is remembered of other exceptions, which end the matter.
        if (remember)
        {
            for (Level const& level : levels)
                known_.emplace(level.name, std::nullopt);
        }
        throw;
    }
}

// Goes on past a name that comes again, up to twice as far: it is compared with one name alone, the last at a power of
// two (Brent). Looking back for the first that came again is left to those chains that do.
Time SymbolEvaluator::FollowChain(std::string const& text, std::vector<Level>& levels)
{
    std::size_t mark = 1;
    TimeString definition(text);
    while (true)
    {
        std::string_view base;
        std::string_view offsets;
        if (!MatchExpression(definition.GetString(), base, offsets))
            throw TimeException("Invalid time format");
        levels.back().offsets = offsets;
        std::string name(base);
        if (!IsSymbol(base))
            return ParseTime(name, twoDigitYears2000_);

        auto const known = known_.find(name);
        if (known != known_.end() && known->second)
            return *known->second;
        levels.push_back({name, {}});
        std::size_t const last = levels.size() - 1;
        if (last > mark && levels[mark].name == name)
            throw TimeException("Symbolic time is defined by itself: '" + FirstRepeated(levels) + "'");
        if (last == 2 * mark)
            mark = last;
        definition = table_ != nullptr ? table_->find(name) : TimeString();
        if (!definition.IsDefined() || known != known_.end())
            throw TimeException("Symbolic time is not defined: '" + name + "'");
    }
}

std::string const& SymbolEvaluator::FirstRepeated(std::vector<Level> const& levels)
{
    std::set<std::string_view> seen;
    auto level = levels.begin();
    while (seen.insert(level->name).second)
        ++level;
    return level->name;
}

Time SymbolEvaluator::Evaluate(std::string const& text)
{
    return EvaluateChain(text, false);
}

bool SymbolEvaluator::IsValid(std::string const& text)
{
    try
    {
        EvaluateChain(text, true);
        return true;
    }
    catch (TimeException const&)
    {
        return false;
    }
}

} // namespace Zan::Orv::Core::Service::Internal
