#pragma once

#include "orv/Export.h"

namespace Zan::Orv::Core::Service::Internal {

/// The clock of every `SimplePerformanceTestRecorder`: milliseconds of wall time since the process began.
/// Exported, so that a test can put a clock of its own in its place.
ORV_API extern long long (*wallTimeMillis)();

} // namespace Zan::Orv::Core::Service::Internal
