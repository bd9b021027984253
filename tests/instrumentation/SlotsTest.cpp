#include "orv/instrumentation/internal/HeapRedirection.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

// The slots of modules that are made up.

namespace Zan::Orv::Core::Service::Tests {
namespace {

// A module of two segments, data and code, whose bytes end where their memory ends.
struct MadeUpModule
{
    static constexpr std::uintptr_t base = 0x7f0000000000;
    static constexpr std::uintptr_t code = base + 0x10000;

    std::vector<std::byte> data;
    std::vector<std::byte> instructions = std::vector<std::byte>(64);
    Platform::ModuleImage image;

    explicit MadeUpModule(std::size_t size) : data(size) { image.base = base; }

    template<class Value>
    void Put(std::size_t offset, Value value)
    {
        std::memcpy(&data.at(offset + sizeof value - 1) - (sizeof value - 1), &value, sizeof value);
    }
    void PutText(std::size_t offset, char const* text)
    {
        std::memcpy(&data.at(offset), text, std::strlen(text));
    }

    // What is found. Nothing outside of the module may be a slot.
    std::vector<Internal::Slot> Slots()
    {
        Platform::ModuleSegment const segments[] = {{base, data, false}, {code, instructions, true}};
        image.segments = segments;
        std::vector<Internal::Slot> slots;
        Internal::ForEachSlot(image, [&](Internal::Slot const& slot) { slots.push_back(slot); });
        image.segments = {};
        return slots;
    }
};

// Descriptors at 0x20, names at 0xA0, address tables at 0x100 and every 0x20 behind it.
class PeModule : public MadeUpModule
{
public:
    PeModule() : MadeUpModule(0x180)
    {
        image.format = Platform::ModuleFormat::PortableExecutable;
        image.directory = base + 0x20;
    }

    void AddImport(char const* module, std::vector<std::uint64_t> const& addresses)
    {
        PutText(0xA0 + 0x18 * count_, module);
        Put(0x20 + 20 * count_ + 12, static_cast<std::uint32_t>(0xA0 + 0x18 * count_));
        Put(0x20 + 20 * count_ + 16, static_cast<std::uint32_t>(0x100 + 0x20 * count_));
        for (std::size_t i = 0; i < addresses.size(); ++i)
            Put(0x100 + 0x20 * count_ + 8 * i, addresses[i]);
        ++count_;
    }

    // The offsets and values of the slots.
    std::string Found()
    {
        std::string found;
        for (Internal::Slot const& slot : Slots())
            found += std::to_string(slot.address - base) + "=" + std::to_string(slot.value) + " ";
        return found;
    }

private:
    std::size_t count_ = 0;
};

TEST(Slots, OfImportsAreTheFirstTableOfKernel32UpToItsFirstZero)
{
    PeModule module;
    module.AddImport("msvcrt.dll", {11, 12});
    module.AddImport("kernel32.dllx", {21});
    module.AddImport("KERNEL32.dLL", {31, 32, 0, 34});
    module.AddImport("Kernel32.dll", {41});
    EXPECT_EQ(module.Found(), "320=31 328=32 ");
}

constexpr std::uint32_t dataSlot = 6;
constexpr std::uint32_t callSlot = 7;

// The module holds the replacements itself.
constexpr Platform::HeapFunction functions[] = {{"malloc", 0x5555000, MadeUpModule::code + 48},
                                                {"free", 0x5555100, MadeUpModule::code + 56}};

constexpr std::size_t slots = 0x300; // where they stand
constexpr std::size_t tables[] = {0x100, 0x180, 0x200};

// The dynamic section at 0, four symbols at 0x240, their names at 0x2A0, the slots at 0x300. `loaded` is
// what the loader has added to the addresses in the dynamic section.
class ElfModule : public MadeUpModule
{
public:
    explicit ElfModule(std::uintptr_t loaded) : MadeUpModule(0x348)
    {
        image.directory = base;
        image.directorySize = 0xB0;
        image.dataSlot = dataSlot;
        image.callSlot = callSlot;
        std::uint64_t const tags[] = {7, 8, 9, 17, 18, 23, 2, 20, 6, 5, 0};
        std::uint64_t const values[] = {tables[0], 0, 24, tables[1], 0, tables[2], 0, 7, 0x240, 0x2A0, 0};
        for (std::size_t i = 0; i < std::size(tags); ++i)
        {
            Put(16 * i, tags[i]);
            Put(16 * i + 8, values[i] + (values[i] >= tables[0] ? loaded : 0));
        }
        PutText(0x2A1, "malloc");
        PutText(0x2A8, "free");
        Put(0x240 + 24, std::uint32_t{1});
        Put(0x240 + 48, std::uint32_t{8});
        Put(0x240 + 72, std::uint32_t{8});
        Put(0x240 + 78, std::uint16_t{12}); // the third symbol is the module's own free
    }

    // Adds a relocation to a table and gives its slot a value.
    void Add(std::size_t table, std::uint32_t type, std::uint64_t symbol, std::uintptr_t value)
    {
        std::size_t const step = table == 1 ? 16 : 24;
        Put(tables[table] + step * counts_[table], std::uint64_t{slots + 8 * count_});
        Put(tables[table] + step * counts_[table] + 8, symbol << 32 | type);
        std::size_t const sizeEntries[] = {1, 4, 6};
        Put(16 * sizeEntries[table] + 8, std::uint64_t{step * ++counts_[table]});
        Put(slots + 8 * count_++, value);
    }

    // "<slot>:<function>" for each slot that is to change.
    std::string Changes()
    {
        std::string changes;
        for (Internal::Slot const& slot : Slots())
            if (auto const* const function = Internal::FunctionBehind(slot, functions))
                changes += std::to_string((slot.address - base - slots) / 8) + ":" + function->name + " ";
        return changes;
    }

private:
    std::size_t counts_[3] = {};
    std::size_t count_ = 0;
};

TEST(Slots, OfRelocationsAreFoundByValueAndUnboundOnesByName)
{
    constexpr std::uintptr_t stub = MadeUpModule::code;
    // Loaders that rewrite the dynamic section, and those that do not.
    for (std::uintptr_t const loaded : {MadeUpModule::base, std::uintptr_t{0}})
    {
        ElfModule module(loaded);
        module.Add(0, dataSlot, 1, functions[0].real);
        module.Add(0, 1, 1, functions[0].real); // a pointer that the program initialised
        module.Add(0, dataSlot, 1, stub);       // data slots are never unbound
        module.Add(1, callSlot, 2, functions[1].real);
        module.Add(2, callSlot, 1, stub + 8);
        module.Add(2, callSlot, 2, 0x6666000);                // somebody else's function
        module.Add(1, callSlot, 1, functions[0].replacement); // redirected already
        module.Add(1, callSlot, 0, stub);                     // another name
        module.Add(1, callSlot, 3, stub);                     // the module's own free
        EXPECT_EQ(module.Changes(), "0:malloc 3:free 4:malloc ") << loaded;
    }
}

// Damaged tables are the business of a fuzz target.
TEST(Slots, ModulesWithoutTablesHaveNone)
{
    ElfModule elf(0);
    elf.Add(0, dataSlot, 1, functions[0].real);
    elf.image.directory = 0;
    EXPECT_EQ(elf.Changes(), "");

    PeModule pe;
    pe.AddImport("user32.dll", {11});
    pe.AddImport("kernel32.dll", {21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32}); // to the very end
    EXPECT_EQ(pe.Slots().size(), 12u);
    pe.image.directory = std::uintptr_t(-8);
    EXPECT_EQ(pe.Found(), "");
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
