#include "orv/events/Log.h"

#include "orv/platform/BoundedFormat.h"

#include <array>
#include <cstdarg>
#include <utility>

namespace Zan::Orv::Core::Service
{

LogMessageArgs::~LogMessageArgs() = default;

namespace
{

struct ThreadState {
    DelegateBase delegate;
    bool enabled = true;
    std::array<char, 10000> format{};
};

// A bare pointer needs no guard on access, which an object with a destructor would: a disabled message costs
// one load and one test.
thread_local constinit ThreadState* threadState = nullptr;

struct Reclaimer {
    ~Reclaimer() { delete std::exchange(threadState, nullptr); }
    void Arm() {}
};

// Frees the state at the end of its thread. What logs after that, from the destructor of an older
// thread-local object, gets a fresh state, which is then left to the process.
thread_local Reclaimer reclaimer;

ThreadState& CreateState()
{
    reclaimer.Arm();
    threadState = new ThreadState;
    return *threadState;
}

ThreadState& State()
{
    return threadState != nullptr ? *threadState : CreateState();
}

void SendFormatted(MessageSeverity severity, char const* format, std::va_list arguments)
{
    auto& buffer = State().format;
    Platform::FormatBounded(buffer.data(), buffer.size(), format, arguments);
    Log::SendLogMessage(buffer.data(), severity);
}

} // namespace

void Log::LogE(char const* message)
{
    SendLogMessage(message, MessageSeverity::Error);
}

void Log::LogW(char const* message)
{
    SendLogMessage(message, MessageSeverity::Warning);
}

void Log::LogI(char const* message)
{
    SendLogMessage(message, MessageSeverity::Info);
}

void Log::LogEF(char const* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    SendFormatted(MessageSeverity::Error, format, arguments);
    va_end(arguments);
}

void Log::LogWF(char const* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    SendFormatted(MessageSeverity::Warning, format, arguments);
    va_end(arguments);
}

void Log::LogIF(char const* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    SendFormatted(MessageSeverity::Info, format, arguments);
    va_end(arguments);
}

void Log::SendLogMessage(char const* message, MessageSeverity severity)
{
    ThreadState const& state = State();
    if (!state.enabled)
        return;
    LogMessageArgs args(severity, message);
    state.delegate.Invoke(&args);
}

void Log::addEventHandler(DelegateHandler<LogMessageArgs>* handler)
{
    State().delegate.AddDelegateHandler(handler);
}

void Log::removeEventHandler(DelegateHandler<LogMessageArgs>* handler)
{
    State().delegate.RemoveDelegateHandler(handler);
}

void Log::enable(bool on)
{
    State().enabled = on;
}

bool Log::isEnabled()
{
    return State().enabled;
}

} // namespace Zan::Orv::Core::Service
