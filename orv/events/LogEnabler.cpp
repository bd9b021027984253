#include "orv/events/LogEnabler.h"

#include "orv/events/Log.h"

namespace Zan::Orv::Core::Service {

LogEnabler::LogEnabler(bool enable) : previous_(Log::isEnabled())
{
    Log::enable(enable);
}

LogEnabler::~LogEnabler()
{
    Log::enable(previous_);
}

} // namespace Zan::Orv::Core::Service
