#pragma once

#include "orv/Export.h"
#include "orv/instrumentation/IPerformanceTestRecorder.h"
#include "orv/instrumentation/PerformanceTestControl.h"

#include <cstddef>

/// Times the rest of the scope as the section `label`, a string literal. Two statements: it needs a block,
/// and a line of its own.
///
///     void Solver::Assemble()
///     {
///         ORV_TIME_SECTION("assemble");
///         ...
///     }
///
/// The place remembers its section's id, and for which call of `PerformanceTestControl::setRecorder` it
/// holds. The label is looked up in the first run after such a call, whichever recorder that sets, so that
/// no recorder gets the id of another. Ids can not outlive what they number: who assigns to a recorder that
/// is set has to set it again. Without a recorder the place does nothing, and remembers nothing.
#define ORV_TIME_SECTION(label)                                                                              \
    static ::Zan::Orv::Core::Service::PerformanceTestSection ORV_WITH_LINE(orvSection, __LINE__)(            \
        "" label, __FILE__, __LINE__);                                                                       \
    ::Zan::Orv::Core::Service::PerformanceTestTimer const ORV_WITH_LINE(orvTimer, __LINE__)(                 \
        ORV_WITH_LINE(orvSection, __LINE__))

/// \{
/// For `ORV_TIME_SECTION` alone.
#define ORV_WITH_LINE(name, line) ORV_JOINED(name, line)
#define ORV_JOINED(name, line) name##line
/// \}

namespace Zan::Orv::Core::Service {

/// A place in the code that remembers the id of its section. Static, and made by `ORV_TIME_SECTION`.
class ORV_API PerformanceTestSection
{
public:
    /// The texts are borrowed.
    constexpr PerformanceTestSection(char const* label, char const* file, int line)
        : label_(label), file_(file), line_(line)
    {}

    /// What the recorder calls the section. Null without one.
    void const* id() { return PerformanceTestControl::recorder() != nullptr ? CurrentId() : nullptr; }

private:
    void const* CurrentId();

    char const* label_;
    char const* file_;
    int line_;
    unsigned long long timesSet_ = 0; // what PerformanceTestControl had when `id_` was looked up
    void const* id_ = nullptr;
};

/// A section that lasts as long as this object. Sections nest as their objects do, an exception closes
/// those that it leaves, and what runs outside of a test is not recorded. `ORV_TIME_SECTION` is the short
/// form; the classes serve where the label is made at run time:
///
///     PerformanceTestTimer const timer(well.name().c_str(), __FILE__, __LINE__);
///
/// Without a recorder a timer costs two tests of a pointer. The recorder must not change while a timer
/// lives. The thread rule is that of `PerformanceTestControl`.
class ORV_API PerformanceTestTimer
{
public:
    /// Looks the label up at every call. It must not be null.
    PerformanceTestTimer(char const* label, char const* file, int line)
        : PerformanceTestTimer(PerformanceTestControl::recorder() != nullptr ? LookUp(label, file, line)
                                                                             : nullptr)
    {}

    /// The cheaper form: `id` is what `PerformanceTestControl::getSectionID` gave for the recorder that is
    /// set.
    explicit PerformanceTestTimer(void const* id) : id_(id)
    {
        if (IPerformanceTestRecorder* const recorder = PerformanceTestControl::recorder())
            recorder->startSection(id_);
    }

    /// With the id that the place remembers.
    explicit PerformanceTestTimer(PerformanceTestSection& section) : PerformanceTestTimer(section.id()) {}

    /// A label alone, which is no id.
    template<std::size_t N>
    explicit PerformanceTestTimer(char const (&label)[N]) = delete;

    /// A copy would stop what only one has started. Assigned, a timer stops with the id of the other.
    PerformanceTestTimer(PerformanceTestTimer const&) = delete;
    PerformanceTestTimer& operator=(PerformanceTestTimer const&) = default;

    ~PerformanceTestTimer()
    {
        if (IPerformanceTestRecorder* const recorder = PerformanceTestControl::recorder())
            recorder->stopSection(id_);
    }

private:
    static void const* LookUp(char const* label, char const* file, int line);

    void const* id_;
};

} // namespace Zan::Orv::Core::Service
