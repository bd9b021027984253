#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace Zan::Orv::Core::Service::Platform {

/// A part of a loaded module, readable from end to end.
struct ModuleSegment
{
    std::uintptr_t address = 0;
    std::span<std::byte const> bytes;
    bool executable = false;
};

enum class ModuleFormat
{
    Elf,
    PortableExecutable
};

/// Where the tables of one loaded module stand, by which it reaches the functions of others.
struct ModuleImage
{
    ModuleFormat format = ModuleFormat::Elf;
    std::uintptr_t base = 0; ///< what addresses in the tables are counted from
    std::span<ModuleSegment const> segments;
    std::uintptr_t directory = 0; ///< the dynamic section or the import directory; 0 where there is none
    std::size_t directorySize = 0;

    // ELF alone.
    std::uint32_t dataSlot = 0; ///< the machine's type of relocation for a slot that is filled at once
    std::uint32_t callSlot = 0; ///< the same for one that may be filled at the first call
    std::uintptr_t sealedBegin = 0, sealedEnd = 0; ///< what is read-only since the module was relocated
};

/// Calls `visit` for each module of this process, from the inside of the loader where it holds them in place.
/// Allocates nothing. False when the host does not list them.
bool ForEachModule(std::function<void(ModuleImage const&)> const& visit);

/// Puts `value` into a slot of the module, whole, and leaves the protection of its page as it was. A slot
/// that cannot be written stays as it is.
void WriteSlot(ModuleImage const& module, std::uintptr_t slot, std::uintptr_t value);

/// Who hears of the heap. Called on any thread, in the middle of its heap calls, and allowed to make some.
struct HeapObserver
{
    void (*allocated)(std::size_t size, void* address) noexcept = nullptr;
    void (*released)(void* address) noexcept = nullptr;
};

/// A function of the heap, and the one that tells the observer of its calls.
struct HeapFunction
{
    char const* name = nullptr;
    std::uintptr_t real = 0;
    std::uintptr_t replacement = 0;
};

/// The functions to be watched. The replacements call the real ones from now on for ever, whatever the slots
/// hold: a thread may stand in one while the slots are put back. An allocation is told when it is made, also
/// when it failed; a release before it is made. Call it again with the same observer only.
std::span<HeapFunction const> WatchHeap(HeapObserver const& observer);

} // namespace Zan::Orv::Core::Service::Platform
