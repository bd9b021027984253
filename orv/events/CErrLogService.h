#pragma once

#include "orv/Export.h"

namespace Zan::Orv::Core::Service {

class LogMessageArgs;

/// Echoes the messages of one thread to the standard error stream, as "Error: ", "Warning: ", "Info: " or
/// nothing, the message, and a flushed line end.
///
/// There is at most one in the process. `Start` and `Stop` are not synchronised: call both on the thread
/// whose messages are to be shown.
class ORV_API CErrLogService
{
public:
    /// Subscribes on the calling thread. Does nothing when the service runs already.
    static void Start();

    /// Unsubscribes. Does nothing when the service does not run.
    static void Stop();

    CErrLogService(CErrLogService const&) = delete;
    CErrLogService& operator=(CErrLogService const&) = delete;
    virtual ~CErrLogService();

private:
    CErrLogService();
    void OnLogEvent(LogMessageArgs* args);
};

} // namespace Zan::Orv::Core::Service
