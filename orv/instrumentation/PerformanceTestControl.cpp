#include "orv/instrumentation/PerformanceTestControl.h"

#include "orv/instrumentation/IPerformanceTestRecorder.h"

namespace Zan::Orv::Core::Service {

IPerformanceTestRecorder::~IPerformanceTestRecorder() = default;

IPerformanceTestRecorder* PerformanceTestControl::m_recorder = nullptr;
unsigned long long PerformanceTestControl::m_timesSet = 0;
std::string PerformanceTestControl::m_runningTest;

PerformanceTestControl::PerformanceTestControl(char const* testName)
{
    if (m_recorder == nullptr)
        return;
    if (!m_runningTest.empty())
        m_recorder->stopTest(m_runningTest);
    m_runningTest = testName;
    m_recorder->startTest(m_runningTest);
}

PerformanceTestControl::~PerformanceTestControl()
{
    if (m_recorder == nullptr || m_runningTest.empty())
        return;
    m_recorder->stopTest(m_runningTest);
    m_runningTest.clear();
}

void PerformanceTestControl::setRecorder(IPerformanceTestRecorder* recorder)
{
    m_recorder = recorder;
    ++m_timesSet;
}

void const* PerformanceTestControl::getSectionID(std::string const& label, char const* file, int line)
{
    return m_recorder != nullptr ? m_recorder->getSectionID(label, file, line) : nullptr;
}

} // namespace Zan::Orv::Core::Service
