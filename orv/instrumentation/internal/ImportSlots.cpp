#include "orv/instrumentation/internal/ImportSlots.h"

#include <algorithm>

namespace Zan::Orv::Core::Service::Internal {

namespace {

// Addresses are counted from the start of the image.
struct ImportDescriptor
{
    std::uint32_t lookupTable;
    std::uint32_t timeStamp;
    std::uint32_t forwarderChain;
    std::uint32_t name; // 0 behind the last descriptor
    std::uint32_t addressTable;
};

// As ASCII, whatever the locale.
bool IsKernel32(std::string_view name)
{
    constexpr std::string_view wanted = "kernel32.dll";
    return std::equal(name.begin(), name.end(), wanted.begin(), wanted.end(), [](char given, char lower) {
        return given == lower || (given >= 'A' && given <= 'Z' && given + ('a' - 'A') == lower);
    });
}

} // namespace

void ForEachImportSlot(Platform::ModuleImage const& module, SlotVisitor const& visit)
{
    if (module.directory == 0)
        return;
    ModuleReader const reader(module);
    ImportDescriptor descriptor;
    for (std::uintptr_t at = module.directory;; at += sizeof descriptor)
    {
        if (!reader.Read(at, descriptor) || descriptor.name == 0)
            return;
        if (IsKernel32(reader.Text(module.base + descriptor.name)))
            break;
    }

    Slot slot;
    slot.address = module.base + descriptor.addressTable;
    while (slot.address % sizeof slot.value == 0 && reader.Read(slot.address, slot.value) && slot.value != 0)
    {
        visit(slot);
        slot.address += sizeof slot.value;
    }
}

} // namespace Zan::Orv::Core::Service::Internal
