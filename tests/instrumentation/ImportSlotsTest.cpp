#include "orv/instrumentation/internal/ImportSlots.h"

#include "tests/instrumentation/MadeUpModule.h"

#include <gtest/gtest.h>

namespace Zan::Orv::Core::Service::Tests {

namespace {

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

} // namespace

TEST(ImportSlotsTest, WalksTheFirstTableOfKernel32UpToItsFirstZero)
{
    PeModule module;
    module.AddImport("msvcrt.dll", {11, 12});
    module.AddImport("kernel32.dllx", {21});
    module.AddImport("KERNEL32.dLL", {31, 32, 0, 34});
    module.AddImport("Kernel32.dll", {41});
    EXPECT_EQ(module.Found(), "320=31 328=32 ");

    PeModule without;
    without.AddImport("ntdll.dll", {11});
    EXPECT_EQ(without.Found(), "");
    without.image.directory = 0;
    EXPECT_EQ(without.Found(), "");
}

TEST(ImportSlotsTest, StaysInsideOfAnyModule)
{
    PeModule module;
    module.AddImport("user32.dll", {11});
    module.AddImport("kernel32.dll", {21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32}); // to the very end
    ASSERT_EQ(module.Slots().size(), 12u);
    module.WalkDamaged<std::uint32_t>();
    module.image.directory = std::uintptr_t(-8);
    EXPECT_EQ(module.Found(), "");
}

} // namespace Zan::Orv::Core::Service::Tests
