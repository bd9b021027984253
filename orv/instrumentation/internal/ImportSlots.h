#pragma once

#include "orv/instrumentation/internal/ModuleReader.h"

namespace Zan::Orv::Core::Service::Internal {

/// Finds the slots by which a Windows module in memory reaches Kernel32.dll: the address table of the first
/// import descriptor of that name, in any case, up to its first zero (PE Format, "The .idata Section").
void ForEachImportSlot(Platform::ModuleImage const& module, SlotVisitor const& visit);

} // namespace Zan::Orv::Core::Service::Internal
