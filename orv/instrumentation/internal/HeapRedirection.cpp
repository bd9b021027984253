#include "orv/instrumentation/internal/HeapRedirection.h"

#include "orv/instrumentation/internal/ImportSlots.h"
#include "orv/instrumentation/internal/RelocationSlots.h"

#include <utility>

namespace Zan::Orv::Core::Service::Internal {

void ForEachSlot(Platform::ModuleImage const& module, SlotVisitor const& visit)
{
    switch (module.format)
    {
    case Platform::ModuleFormat::Elf: ForEachRelocationSlot(module, visit); break;
    case Platform::ModuleFormat::PortableExecutable: ForEachImportSlot(module, visit); break;
    }
}

Platform::HeapFunction const* FunctionBehind(Slot const& slot, HeapFunctions functions)
{
    for (Platform::HeapFunction const& function : functions)
    {
        bool const bound = slot.value == function.real && function.real != 0;
        // A replacement looks like a stub in the one module that it is a part of.
        bool const unbound = !slot.unboundName.empty() && slot.unboundName == function.name &&
                             slot.value != function.replacement;
        if (bound || unbound)
            return &function;
    }
    return nullptr;
}

bool HeapRedirection::Install(Platform::HeapObserver const& observer)
{
    functions_ = Platform::WatchHeap(observer);
    unbound_.clear();
    return Platform::ForEachModule([this](Platform::ModuleImage const& module) {
        ForEachSlot(module, [&](Slot const& slot) {
            Platform::HeapFunction const* const function = FunctionBehind(slot, functions_);
            if (function == nullptr)
                return;
            if (slot.value != function->real)
                unbound_.push_back({slot.address, slot.value});
            Platform::WriteSlot(module, slot.address, function->replacement);
        });
    });
}

void HeapRedirection::Remove()
{
    HeapFunctions const functions = std::exchange(functions_, {});
    if (functions.empty())
        return;
    Platform::ForEachModule([&](Platform::ModuleImage const& module) {
        ForEachSlot(module, [&](Slot const& slot) {
            for (Platform::HeapFunction const& function : functions)
                if (slot.value == function.replacement)
                    Platform::WriteSlot(module, slot.address, ValueBefore(slot.address, function));
        });
    });
}

std::uintptr_t HeapRedirection::ValueBefore(std::uintptr_t address,
                                            Platform::HeapFunction const& function) const
{
    for (UnboundSlot const& slot : unbound_)
        if (slot.address == address)
            return slot.stub;
    return function.real;
}

} // namespace Zan::Orv::Core::Service::Internal
