#include "orv/events/Log.h"

#include "orv/events/internal/PlainFormat.h"
#include "orv/platform/BoundedFormat.h"

#include <array>
#include <cstdarg>
#include <thread>
#include <utility>

namespace Zan::Orv::Core::Service {

LogMessageArgs::~LogMessageArgs() = default;

namespace {

struct ThreadState
{
    DelegateBase delegate;
    bool enabled = true;
    std::array<char, 10000> format{};
};

// A bare pointer needs no guard on access, which an object with a destructor would: a disabled message costs
// one load and one test.
thread_local constinit ThreadState* threadState = nullptr;

struct Reclaimer
{
    ~Reclaimer() { delete std::exchange(threadState, nullptr); }
    void Arm() {}
};

// Frees the state at the end of its thread. What logs after that, from the destructor of an older
// thread-local object, gets a fresh state, which is then left to the process.
thread_local Reclaimer reclaimer;

// The thread that loads the library keeps its state to the end of the process: static objects log in their
// destructors, which run when that thread's own objects are gone.
std::thread::id const loadingThread = std::this_thread::get_id();

ThreadState& CreateState()
{
    if (std::this_thread::get_id() != loadingThread)
        reclaimer.Arm();
    threadState = new ThreadState;
    return *threadState;
}

ThreadState& State()
{
    return threadState != nullptr ? *threadState : CreateState();
}

// The line stands in the thread's buffer until the next one.
char const* Format(char const* format, std::va_list arguments)
{
    auto& buffer = State().format;
    if (!Internal::FormatPlainly(buffer.data(), buffer.size(), format, arguments))
        Platform::FormatBounded(buffer.data(), buffer.size(), format, arguments);
    return buffer.data();
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
    char const* const line = Format(format, arguments);
    va_end(arguments);
    SendLogMessage(line, MessageSeverity::Error);
}

void Log::LogWF(char const* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    char const* const line = Format(format, arguments);
    va_end(arguments);
    SendLogMessage(line, MessageSeverity::Warning);
}

void Log::LogIF(char const* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    char const* const line = Format(format, arguments);
    va_end(arguments);
    SendLogMessage(line, MessageSeverity::Info);
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
