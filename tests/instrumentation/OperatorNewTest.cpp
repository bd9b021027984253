#include "tests/instrumentation/MemoryTrackerTest.h"

#include <memory>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

TEST_F(MemoryTrackerTest, OperatorNewPasses)
{
    std::uintptr_t address = 0;
    {
        MemoryTrackerGuard const on(true);
        auto const block = std::make_unique<std::vector<char>>(20005);
        address = Address(block->data());
    }
    EXPECT_THAT(Text(), ::testing::HasSubstr(Event("allocate", 20005, address)));
    EXPECT_THAT(Text(), ::testing::HasSubstr(Event("free", 20005, address)));
}

} // namespace Zan::Orv::Core::Service::Tests
