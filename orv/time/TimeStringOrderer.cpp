#include "orv/time/TimeStringOrderer.h"

#include "orv/time/ITimeStringResolver.h"

#include <iterator>

namespace Zan::Orv::Core::Service {

TimeStringOrderer::TimeStringOrderer(ITimeStringResolver& resolver) : resolver_(resolver)
{}

TimeStringOrderer::TimeStringOrderer(ITimeStringResolver& resolver, std::set<TimeString> const& times)
    : resolver_(resolver)
{
    insert(times);
}

void TimeStringOrderer::insert(TimeString const& time)
{
    Time const moment = resolver_.getTime(time);
    std::set<TimeString> added{time};
    auto const [entry, isNew] = entries_.try_emplace(moment, added);
    if (!isNew)
        entry->second.merge(added);
}

void TimeStringOrderer::insert(std::set<TimeString> const& times)
{
    for (TimeString const& time : times)
        insert(time);
}

std::set<TimeString> TimeStringOrderer::find(Time const& moment) const
{
    auto const entry = entries_.find(moment);
    return entry == entries_.end() ? std::set<TimeString>() : entry->second;
}

std::set<TimeString> TimeStringOrderer::find(TimeString const& time) const
{
    return find(resolver_.getTime(time));
}

std::set<TimeString> TimeStringOrderer::current(Time const& moment) const
{
    auto const after = entries_.upper_bound(moment);
    return after == entries_.begin() ? std::set<TimeString>() : std::prev(after)->second;
}

std::set<TimeString> TimeStringOrderer::current(TimeString const& time) const
{
    return current(resolver_.getTime(time));
}

void TimeStringOrderer::clear()
{
    entries_.clear();
}

} // namespace Zan::Orv::Core::Service
