#include "orv/instrumentation/internal/RelocationSlots.h"

#include "tests/instrumentation/MadeUpModule.h"

#include <gtest/gtest.h>

namespace Zan::Orv::Core::Service::Tests {

namespace {

constexpr std::uint32_t dataSlot = 6;
constexpr std::uint32_t callSlot = 7;

constexpr std::uintptr_t realMalloc = 0x5555000;
constexpr std::uintptr_t realFree = 0x5555100;
constexpr std::uintptr_t newMalloc = MadeUpModule::code + 48; // the module holds the replacements itself
constexpr std::uintptr_t newFree = MadeUpModule::code + 56;
constexpr Platform::HeapFunction functions[] = {{"malloc", realMalloc, newMalloc},
                                                {"free", realFree, newFree}};

constexpr std::size_t slots = 0x300; // where they stand
constexpr std::size_t tables[] = {0x100, 0x180, 0x200};

// The dynamic section at 0, three symbols at 0x240, their names at 0x2A0, the slots at 0x300. `loaded` is
// what the loader has added to the addresses in the dynamic section.
class ElfModule : public MadeUpModule
{
public:
    explicit ElfModule(std::uintptr_t loaded) : MadeUpModule(0x340)
    {
        image.directory = base;
        image.directorySize = 0xB0;
        image.dataSlot = dataSlot;
        image.callSlot = callSlot;
        std::uint64_t const dynamic[][2] = {{7, loaded + tables[0]},
                                            {8, 0},
                                            {9, 24},
                                            {17, loaded + tables[1]},
                                            {18, 0},
                                            {23, loaded + tables[2]},
                                            {2, 0},
                                            {20, 7},
                                            {6, loaded + 0x240},
                                            {5, loaded + 0x2A0},
                                            {0, 0}};
        std::memcpy(data.data(), dynamic, sizeof dynamic);
        PutText(0x2A1, "malloc");
        PutText(0x2A8, "free");
        PutSymbol(1, 1, 0);
        PutSymbol(2, 8, 0);
    }

    void PutSymbol(std::size_t index, std::uint32_t name, std::uint16_t section)
    {
        Put(0x240 + 24 * index, name);
        Put(0x240 + 24 * index + 6, section);
    }

    // Adds a relocation to a table and gives its slot a value.
    void Add(std::size_t table, std::uint32_t type, std::uint64_t symbol, std::size_t slot,
             std::uintptr_t value)
    {
        std::size_t const step = table == 1 ? 16 : 24;
        Put(tables[table] + step * counts_[table], std::uint64_t{slots + 8 * slot});
        Put(tables[table] + step * counts_[table] + 8, symbol << 32 | type);
        std::size_t const sizeEntries[] = {1, 4, 6};
        Put(16 * sizeEntries[table] + 8, std::uint64_t{step * ++counts_[table]});
        Put(slots + 8 * slot, value);
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
};

} // namespace

TEST(RelocationSlotsTest, FindsSlotsByValueAndUnboundOnesByName)
{
    // Loaders that rewrite the dynamic section, and those that do not.
    for (std::uintptr_t const loaded : {MadeUpModule::base, std::uintptr_t{0}})
    {
        ElfModule module(loaded);
        module.Add(0, dataSlot, 1, 0, realMalloc);
        module.Add(0, 1, 1, 1, realMalloc);                // a pointer that the program initialised
        module.Add(0, dataSlot, 1, 2, MadeUpModule::code); // data slots are never unbound
        module.Add(1, callSlot, 2, 3, realFree);
        module.Add(2, callSlot, 1, 4, MadeUpModule::code + 8); // its own stub
        module.Add(2, callSlot, 2, 5, 0x6666000);              // somebody else's function
        EXPECT_EQ(module.Changes(), "0:malloc 3:free 4:malloc ") << loaded;
    }
}

TEST(RelocationSlotsTest, LeavesWhatOnlyLooksUnbound)
{
    ElfModule module(MadeUpModule::base);
    module.Add(2, callSlot, 1, 0, newMalloc);          // redirected already
    module.Add(2, callSlot, 0, 1, MadeUpModule::code); // another name
    module.PutSymbol(2, 8, 12);
    module.Add(2, callSlot, 2, 2, MadeUpModule::code); // the module's own free
    EXPECT_EQ(module.Changes(), "");
}

TEST(RelocationSlotsTest, StaysInsideOfAnyModule)
{
    ElfModule module(0);
    module.Add(0, dataSlot, 1, 0, realMalloc);
    module.Add(1, dataSlot, 1, 1, realMalloc);
    module.Add(2, callSlot, 1, 2, MadeUpModule::code);
    ASSERT_EQ(module.Changes(), "0:malloc 1:malloc 2:malloc ");
    module.WalkDamaged<std::uint64_t>();
    module.WalkDamaged<std::uint32_t>();
    module.image.directory = 0;
    EXPECT_EQ(module.Changes(), "");
}

} // namespace Zan::Orv::Core::Service::Tests
