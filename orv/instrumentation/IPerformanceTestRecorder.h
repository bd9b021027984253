#pragma once

#include "orv/Export.h"

#include <string>

namespace Zan::Orv::Core::Service {

/// What instrumented code reports to: tests that start and stop, and the sections inside of them.
/// `PerformanceTestControl` and `PerformanceTestTimer` make the calls; `SimplePerformanceTestRecorder` is
/// the recorder that comes with the library.
///
/// A recorder names each section by an id, which means something to that recorder alone. The calls come
/// from whatever threads run instrumented code while the recorder is set. Those that stop come from
/// destructors and must not throw.
class ORV_API IPerformanceTestRecorder
{
public:
    IPerformanceTestRecorder() = default;
    IPerformanceTestRecorder(IPerformanceTestRecorder const&) = default;
    IPerformanceTestRecorder& operator=(IPerformanceTestRecorder const&) = default;

    /// What this recorder calls itself.
    virtual std::string name() const = 0;

    /// \{
    /// A test of this name begins or ends.
    virtual void startTest(std::string const& testName) = 0;
    virtual void stopTest(std::string const& testName) = 0;
    /// \}

    /// The id of the section with this label, the same one for the same label. `file`, which may be null,
    /// and `line` tell the place that asks.
    virtual void const* getSectionID(std::string const& label, char const* file, int line) = 0;
    /// The label of the section with this id.
    virtual std::string getSectionLabel(void const* id) = 0;

    /// \{
    /// The section with this id is entered or left.
    virtual void startSection(void const* id) = 0;
    virtual void stopSection(void const* id) = 0;
    /// \}

    virtual ~IPerformanceTestRecorder();
};

} // namespace Zan::Orv::Core::Service
