#pragma once

#include "orv/Export.h"
#include "orv/events/Delegate.h"

#include <cstdint>
#include <string>

/// \file
/// The log: a static front end that turns messages into events. It prints nothing by itself; subscribed
/// handlers decide (`CErrLogService`, `LogTracker`, or your own).
///
///     CErrLogService::Start();
///     Log::LogWF("%d weeks have no value", missing);    // "Warning: 59 weeks have no value"
///
/// All state is the thread's own: its handlers, its enabled flag, its format buffer. A handler sees the
/// messages of the thread that subscribed it and no others, and no call takes a lock.

namespace Zan::Orv::Core::Service {

/// How grave a message is.
enum class MessageSeverity : std::int32_t
{
    Plain = 0,   ///< without a word for it
    Info = 1,    ///< worth knowing
    Warning = 2, ///< the program goes on, perhaps with other results
    Error = 3    ///< something was not done
};

/// The event that a message becomes.
class ORV_API LogMessageArgs : public DelegateArgs
{
public:
    LogMessageArgs() = default;
    LogMessageArgs(LogMessageArgs const&) = default;
    LogMessageArgs(LogMessageArgs&&) = default;
    LogMessageArgs& operator=(LogMessageArgs const&) = default;
    LogMessageArgs& operator=(LogMessageArgs&&) = default;
    ~LogMessageArgs() override;

    /// How grave the message is.
    MessageSeverity GetSeverity() const { return severity_; }
    /// The text, without a severity.
    std::string const& GetLogMessage() const { return message_; }

private:
    friend class Log;
    LogMessageArgs(MessageSeverity severity, char const* message) : severity_(severity), message_(message) {}

    MessageSeverity severity_ = MessageSeverity::Plain;
    std::string message_;
};

/// Sends messages to the handlers of the calling thread. Each thread has handlers and a switch of its own, so that any
/// thread may call it at any time.
class ORV_API Log
{
public:
    Log() = delete;

    /// \{
    /// `SendLogMessage` with the severity of the letter: error, warning, info.
    static void LogE(char const* message);
    static void LogW(char const* message);
    static void LogI(char const* message);
    /// \}

    /// \{
    /// `SendLogMessage` with a printf format and the severity of the letter: error, warning, info. The text may
    /// have at most 9,999 bytes; a longer one ends the process, on Windows through the C runtime's
    /// invalid-parameter handler. Formatting takes place even when the log is off.
    static void LogEF(char const* format, ...) ORV_PRINTF_FORMAT(1, 2);
    static void LogWF(char const* format, ...) ORV_PRINTF_FORMAT(1, 2);
    static void LogIF(char const* format, ...) ORV_PRINTF_FORMAT(1, 2);
    /// \}

    /// Delivers one message to the thread's handlers, or drops it when the thread's log is off. `message` is
    /// copied and must not be null. Exceptions of handlers reach the caller.
    static void SendLogMessage(char const* message, MessageSeverity severity);

    /// \{
    /// Subscribe and unsubscribe on the calling thread. Both take ownership of `handler`, as `DelegateBase`
    /// does. A handler that is being called must not unsubscribe itself.
    static void addEventHandler(DelegateHandler<LogMessageArgs>* handler);
    static void removeEventHandler(DelegateHandler<LogMessageArgs>* handler);
    /// \}

    /// \{
    /// The thread's switch, on at the start. For a scope, use `LogEnabler`.
    static void enable(bool on);
    static bool isEnabled();
    /// \}
};

} // namespace Zan::Orv::Core::Service
