#include "orv/foundation/Exception.h"
#include "orv/time/ITimeStringResolver.h"
#include "orv/time/ParseTime.h"
#include "orv/time/TimeStringOrderer.h"
#include "orv/time/TimeSymbolTable.h"

#include <iostream>
#include <list>
#include <string>

using namespace Zan::Orv::Core::Service;

// Evaluates a name or a date against the plan.
class PlanResolver : public ITimeStringResolver
{
public:
    explicit PlanResolver(TimeSymbolTable const& plan) : plan_(plan) {}

    Time getTime(TimeString const& time) override { return ParseTime(time, &plan_, true); }

private:
    TimeSymbolTable const& plan_;
};

int main()
{
    TimeSymbolTable plan;
    plan["START"] = TimeString("1 JAN 2000");
    plan["INJECTION"] = TimeString("START + 18 months");
    plan["REVIEW"] = TimeString("INJECTION - 1 week");
    PlanResolver resolver(plan);
    std::cout << resolver.getTime(TimeString("REVIEW + 12h")) << '\n';

    // Nothing but START changes, and all that hangs on it moves.
    plan["START"] = TimeString("1 MAR 2000");
    std::cout << resolver.getTime(TimeString("REVIEW + 12h")) << '\n';

    // What is in force at a moment: the latest event that is not after it?
    TimeStringOrderer orderer(resolver);
    for (auto const& [name, definition] : plan)
        orderer.insert(TimeString(name));
    for (TimeString const& event : orderer.current(Time(2001, 8, 30, 0, 0, 0, 0)))
        std::cout << "in force: " << event.GetString() << '\n';

    // Is the whole plan sound? The names of those that are not are listed.
    plan["END"] = TimeString("ABANDONMENT");
    std::list<std::string> invalid;
    if (!TimeSymbolTable::IsValid(plan, &invalid))
        std::cout << "not defined: " << invalid.front() << '\n';
    try
    {
        resolver.getTime(TimeString("END"));
    }
    catch (TimeException const& e)
    {
        std::cout << e.what() << '\n';
    }
}
