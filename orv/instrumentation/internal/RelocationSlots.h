#pragma once

#include "orv/instrumentation/internal/ModuleReader.h"

namespace Zan::Orv::Core::Service::Internal {

/// Finds the slots of an ELF module: those that its relocations fill with the addresses of functions or data
/// (System V Application Binary Interface, chapter 5, in the 64-bit shapes). A pointer that a program
/// initialised with such an address is data of the program, and no slot.
void ForEachRelocationSlot(Platform::ModuleImage const& module, SlotVisitor const& visit);

} // namespace Zan::Orv::Core::Service::Internal
