#pragma once

#include "orv/foundation/Exception.h"
#include "orv/time/Time.h"

#include <gtest/gtest.h>

#include <exception>
#include <string>

namespace Zan::Orv::Core::Service::Tests {

inline Time Date(int year, int month, int day)
{
    return Time(year, month, day, 0, 0, 0, 0);
}

/// A moment in milliseconds from the beginning of the year 2000.
inline Time At(long long milliseconds)
{
    return Date(2000, 1, 1) += milliseconds;
}

/// With midnight, or what is missing of it, where the text of a time is cut short. Other texts are as they are.
inline std::string Whole(std::string const& time)
{
    std::string const first = "1400-01-01 00:00:00.000";
    return time.find('-') == 4 && time.size() < first.size() ? time + first.substr(time.size()) : time;
}

/// What an action returns as text, or the words of a TimeException, or '!' and those of another failure.
template<class Action>
std::string Outcome(Action&& action)
{
    try
    {
        return testing::PrintToString(action());
    }
    catch (TimeException const& e)
    {
        return e.what();
    }
    catch (std::exception const& e)
    {
        return std::string("! ") + e.what();
    }
}

} // namespace Zan::Orv::Core::Service::Tests
