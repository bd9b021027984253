#pragma once

#include "orv/Export.h"

namespace Zan::Orv::Core::Service {

/// Switches the calling thread's log on or off for a scope and then restores what it found.
///
///     LogEnabler const quiet(false);
///
/// Objects nest, and the innermost one rules. One must be destroyed on the thread that made it. A copy
/// restores the same value as the original.
class ORV_API LogEnabler
{
public:
    /// Switches the log on for true and off for false.
    explicit LogEnabler(bool enable);
    LogEnabler(LogEnabler const&) = default;
    LogEnabler& operator=(LogEnabler const&) = default;
    ~LogEnabler();

private:
    bool previous_;
};

} // namespace Zan::Orv::Core::Service
