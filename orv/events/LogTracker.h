#pragma once

#include "orv/Export.h"
#include "orv/events/Log.h"

#include <list>

namespace Zan::Orv::Core::Service {

/// Keeps the most recent messages of the calling thread in memory, for a report after the fact.
///
///     LogTracker tracker;
///     Simulate();
///     for (LogMessageArgs const& message : tracker.GetLogs()) ...
///
/// It subscribes for its lifetime and must be destroyed on the thread that made it. A copy is a snapshot: it
/// does not subscribe and does not grow.
class ORV_API LogTracker
{
public:
    /// Keeps up to `maxMessages` messages: none for 0, all for a negative number.
    explicit LogTracker(int maxMessages = 50);
    LogTracker(LogTracker const& other);
    LogTracker& operator=(LogTracker const& other) = default;
    virtual ~LogTracker();

    /// Forgets the messages. Capacity and subscription stay.
    void Clear();

    /// The messages that were kept, the oldest first.
    std::list<LogMessageArgs> const& GetLogs() const;

protected:
    /// Receives each message. A derived class may override it to choose what is kept.
    virtual void OnLogEvent(LogMessageArgs* args);

private:
    DelegateHandler<LogMessageArgs>* MakeHandler();

    int maxMessages_;
    std::list<LogMessageArgs> messages_;
};

} // namespace Zan::Orv::Core::Service
