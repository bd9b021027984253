#include "orv/instrumentation/PerformanceTestTimer.h"

namespace Zan::Orv::Core::Service {

void const* PerformanceTestSection::CurrentId()
{
    if (timesSet_ != PerformanceTestControl::m_timesSet)
    {
        id_ = PerformanceTestControl::getSectionID(label_, file_, line_);
        timesSet_ = PerformanceTestControl::m_timesSet;
    }
    return id_;
}

void const* PerformanceTestTimer::LookUp(char const* label, char const* file, int line)
{
    return PerformanceTestControl::getSectionID(label, file, line);
}

} // namespace Zan::Orv::Core::Service
