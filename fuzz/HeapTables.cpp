#include "fuzz/Input.h"
#include "orv/instrumentation/internal/ImportSlots.h"
#include "orv/instrumentation/internal/RelocationSlots.h"

#include <vector>

namespace Zan::Orv::Core::Service::Fuzz {

// A loaded module of two segments, with whatever tables the input holds.
void Run(Input& input)
{
    constexpr std::uintptr_t base = 0x10000;
    Platform::ModuleImage module;
    module.base = base;
    module.directory = base + input.Number<std::uint16_t>();
    module.directorySize = input.Number<std::uint16_t>();
    module.dataSlot = input.Number<std::uint8_t>();
    module.callSlot = input.Number<std::uint8_t>();
    std::string const code = input.Text();
    std::string const data = input.Rest();

    auto const bytes = [](std::string const& text) { return std::as_bytes(std::span(text)); };
    Platform::ModuleSegment const segments[] = {{base, bytes(data), false},
                                                {base + data.size() + 0x1000, bytes(code), true}};
    module.segments = segments;
    auto const visit = [&](Internal::Slot const& slot) {
        Require(slot.address >= base &&
                    slot.address - base + sizeof slot.value <= data.size() + 0x1000 + code.size(),
                "a slot lies inside of its module");
    };
    Internal::ForEachRelocationSlot(module, visit);
    Internal::ForEachImportSlot(module, visit);
}

} // namespace Zan::Orv::Core::Service::Fuzz
