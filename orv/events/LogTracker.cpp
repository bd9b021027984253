#include "orv/events/LogTracker.h"

namespace Zan::Orv::Core::Service {

LogTracker::LogTracker(int maxMessages) : maxMessages_(maxMessages)
{
    Log::addEventHandler(MakeHandler());
}

// Not defaulted in the header, to say that the missing subscription is meant.
LogTracker::LogTracker(LogTracker const& other) : maxMessages_(other.maxMessages_), messages_(other.messages_)
{}

LogTracker::~LogTracker()
{
    // For a copy this finds nothing: handlers compare the addresses of their targets.
    Log::removeEventHandler(MakeHandler());
}

DelegateHandler<LogMessageArgs>* LogTracker::MakeHandler()
{
    return new MemberFuncPtrDelegateHandler<LogTracker, LogMessageArgs>(this, &LogTracker::OnLogEvent);
}

void LogTracker::Clear()
{
    messages_.clear();
}

std::list<LogMessageArgs> const& LogTracker::GetLogs() const
{
    return messages_;
}

void LogTracker::OnLogEvent(LogMessageArgs* args)
{
    if (maxMessages_ == 0)
        return;
    if (maxMessages_ > 0 && messages_.size() == static_cast<std::size_t>(maxMessages_))
        messages_.pop_front();
    messages_.push_back(*args);
}

} // namespace Zan::Orv::Core::Service
