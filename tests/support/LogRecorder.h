#pragma once

#include "orv/events/Log.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

/// Subscribes to the calling thread's log for its lifetime. Notes each message as "severity:text" and then
/// does with it what it was told to do.
class LogRecorder
{
public:
    using Action = std::function<void(LogMessageArgs const&)>;

    explicit LogRecorder(Action action = {}) : action_(std::move(action))
    {
        Log::addEventHandler(MakeHandler());
    }
    LogRecorder(LogRecorder const&) = delete;
    LogRecorder& operator=(LogRecorder const&) = delete;
    ~LogRecorder() { Log::removeEventHandler(MakeHandler()); }

    std::vector<std::string> messages;

private:
    DelegateHandler<LogMessageArgs>* MakeHandler()
    {
        return new MemberFuncPtrDelegateHandler<LogRecorder, LogMessageArgs>(this, &LogRecorder::OnMessage);
    }

    void OnMessage(LogMessageArgs* args)
    {
        messages.push_back(std::to_string(static_cast<int>(args->GetSeverity())) + ":" +
                           args->GetLogMessage());
        if (action_)
            action_(*args);
    }

    Action action_;
};

} // namespace Zan::Orv::Core::Service::Tests
