#pragma once

#include "orv/instrumentation/internal/ModuleReader.h"

#include <vector>

namespace Zan::Orv::Core::Service::Internal {

using HeapFunctions = std::span<Platform::HeapFunction const>;

/// Finds a module's slots by the tables of its format.
void ForEachSlot(Platform::ModuleImage const& module, SlotVisitor const& visit);

/// The function that calls through this slot reach, by the slot's value, or by its name where it is not bound
/// yet. Null for a slot of another function, and for one that holds a replacement already.
Platform::HeapFunction const* FunctionBehind(Slot const& slot, HeapFunctions functions);

/// Leads the heap calls of the loaded modules to an observer, and puts back what it changed.
///
/// Slots are put back by their values, in the modules that are loaded by then: only this class writes the
/// address of a replacement into a slot, so what stood there before is the real function, or for a slot
/// that was not bound yet, what was kept for it. A module that has gone takes its slots with it, and one at
/// the same place holds no replacement.
///
/// One thread at a time, while no other loads or unloads a module. Others may use the heap.
class HeapRedirection
{
public:
    /// False when the host does not list its modules.
    bool Install(Platform::HeapObserver const& observer);

    /// Does nothing when nothing is installed. Allocates nothing.
    void Remove();

private:
    struct UnboundSlot
    {
        std::uintptr_t address;
        std::uintptr_t stub;
    };

    std::uintptr_t ValueBefore(std::uintptr_t address, Platform::HeapFunction const& function) const;

    HeapFunctions functions_; // empty while nothing is installed
    std::vector<UnboundSlot> unbound_;
};

} // namespace Zan::Orv::Core::Service::Internal
