#pragma once

#include "orv/Export.h"

#include <string>

namespace Zan::Orv::Core::Service {

class IPerformanceTestRecorder;

/// Marks a named test for the length of a scope, and holds the process's one recorder.
///
///     SimplePerformanceTestRecorder recorder;
///     PerformanceTestControl::setRecorder(&recorder);
///     {
///         PerformanceTestControl const test("water flood");
///         simulate();                                       // its sections: see PerformanceTestTimer
///     }
///     PerformanceTestControl::setRecorder(nullptr);
///     recorder.writeResultsToFile("performance.txt");
///
/// At the start there is no recorder, and all instrumentation does nothing. One test runs at a time: a
/// second one ends the first, and whichever object goes first then ends the second.
///
/// There is no lock. While a recorder is set, a single thread may run instrumented code; without one, any
/// may.
class ORV_API PerformanceTestControl
{
public:
    /// `testName` must not be null, and should not be empty: nothing tells an empty one from no test, and
    /// its object does not stop it.
    explicit PerformanceTestControl(char const* testName);
    PerformanceTestControl(PerformanceTestControl const&) = delete;
    PerformanceTestControl& operator=(PerformanceTestControl const&) = delete;
    ~PerformanceTestControl();

    /// The recorder that is set, or null.
    static IPerformanceTestRecorder* recorder() { return m_recorder; }

    /// Borrows `recorder` until the next call; null turns instrumentation off. To be called while no timer
    /// and no test object lives. Ids of sections that were asked for by hand end with this call.
    static void setRecorder(IPerformanceTestRecorder* recorder);

    /// The recorder's id for a label, to be kept for timers that run often. Null without a recorder.
    static void const* getSectionID(std::string const& label, char const* file, int line);

private:
    friend class PerformanceTestSection;

    static IPerformanceTestRecorder* m_recorder;
    static unsigned long long m_timesSet; // tells one setting of a recorder from any other
    static std::string m_runningTest;     // empty when there is none
};

} // namespace Zan::Orv::Core::Service
