/// Reads a plan of named events, works out when each of them is, and prints them in order. Names what is wrong in a bad
/// plan, with its line.
///
///     schedule <plan.txt>

#include "orv/foundation/Strings.h"
#include "orv/time/ITimeStringResolver.h"
#include "orv/time/ParseTime.h"
#include "orv/time/TimeStringOrderer.h"
#include "orv/time/TimeSymbolTable.h"

#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>

using namespace Zan::Orv::Core::Service;

namespace {

// What can be referred to: a letter or an underscore, and then digits as well.
bool IsName(std::string const& text)
{
    std::string const letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_";
    return text.find_first_of(letters) == 0 &&
           text.find_first_not_of(letters + "0123456789") == std::string::npos;
}

// A plan has one event a line, "NAME = expression". What stands behind a # is for people.
struct Plan
{
    TimeSymbolTable events;
    std::map<int, std::string> names; // by line
};

Plan ReadPlan(std::string const& path)
{
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("Cannot read '" + path + "'.");
    Plan plan;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number)
    {
        line = line.substr(0, line.find('#'));
        if (AllBlanks(line))
            continue;
        std::size_t const sign = line.find('=');
        if (sign == std::string::npos)
            throw std::runtime_error("Line " + std::to_string(number) + ": expected 'NAME = time'.");
        std::string const name = StringTrim(line.substr(0, sign));
        if (!IsName(name))
            throw std::runtime_error("Line " + std::to_string(number) + ": '" + name + "' is no name.");
        if (plan.events.count(name) != 0)
            throw std::runtime_error("Line " + std::to_string(number) + ": '" + name + "' is defined twice.");
        plan.events[name] = TimeString(line.substr(sign + 1));
        plan.names[number] = name;
    }
    return plan;
}

// Looks a text up in the plan, and evaluates it against all of it.
class PlanResolver : public ITimeStringResolver
{
public:
    explicit PlanResolver(Plan const& plan) : plan_(plan) {}

    Time getTime(TimeString const& time) override { return ParseTime(time, &plan_.events, true); }

private:
    Plan const& plan_;
};

// Says of each event what is wrong with it. True when nothing is.
bool Check(Plan const& plan)
{
    bool good = true;
    for (auto const& [line, name] : plan.names)
    {
        try
        {
            ParseTime(plan.events.at(name), &plan.events, true);
        }
        catch (std::exception const& e)
        {
            std::cerr << "Line " << line << ": " << name << ": " << e.what() << '\n';
            good = false;
        }
    }
    return good;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::cerr << "Usage: schedule <plan.txt>\n";
        return 2;
    }
    try
    {
        Plan const plan = ReadPlan(argv[1]);
        if (!Check(plan))
            return 1;

        // The names of events are times themselves: ordered by when they are, not by their letters.
        PlanResolver resolver(plan);
        std::multimap<Time, std::string> inOrder;
        TimeStringOrderer orderer(resolver);
        for (auto const& [name, definition] : plan.events)
        {
            orderer.insert(TimeString(name));
            inOrder.emplace(resolver.getTime(TimeString(name)), name);
        }
        for (auto const& [time, name] : inOrder)
            std::cout << time << "  " << name << '\n';

        Time const review(2001, 1, 1, 0, 0, 0, 0);
        std::cout << "In force at " << review << ":";
        for (TimeString const& event : orderer.current(review))
            std::cout << ' ' << event.GetString();
        std::cout << '\n';
        return 0;
    }
    catch (std::exception const& e)
    {
        std::cerr << e.what() << '\n';
        return 1;
    }
}
