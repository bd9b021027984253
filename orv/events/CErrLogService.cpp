#include "orv/events/CErrLogService.h"

#include "orv/events/Log.h"

#include <array>
#include <iostream>
#include <utility>

namespace Zan::Orv::Core::Service {

namespace {

// Never destroyed by the process: its thread's log is gone by then. Only Start and Stop touch it.
CErrLogService* instance = nullptr;

DelegateHandler<LogMessageArgs>* MakeHandler(CErrLogService* target,
                                             void (CErrLogService::*function)(LogMessageArgs*))
{
    return new MemberFuncPtrDelegateHandler<CErrLogService, LogMessageArgs>(target, function);
}

} // namespace

void CErrLogService::Start()
{
    if (instance == nullptr)
        instance = new CErrLogService;
}

void CErrLogService::Stop()
{
    delete std::exchange(instance, nullptr);
}

CErrLogService::CErrLogService()
{
    Log::addEventHandler(MakeHandler(this, &CErrLogService::OnLogEvent));
}

CErrLogService::~CErrLogService()
{
    Log::removeEventHandler(MakeHandler(this, &CErrLogService::OnLogEvent));
}

void CErrLogService::OnLogEvent(LogMessageArgs* args)
{
    static constexpr std::array<char const*, 4> prefixes = {"", "Info: ", "Warning: ", "Error: "};

    auto const severity = static_cast<std::size_t>(args->GetSeverity());
    if (severity < prefixes.size())
        std::cerr << prefixes[severity] << args->GetLogMessage() << std::endl;
    else
        std::cerr << args->GetLogMessage(); // an unknown severity is the caller's own: not even a line end
}

} // namespace Zan::Orv::Core::Service
