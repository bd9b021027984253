#include "tests/instrumentation/MemoryTrackerTest.h"

#include <memory>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

TEST_F(MemoryTrackerTest, OperatorNewPasses)
{
    std::string allocated;
    std::string freed;
    {
        MemoryTrackerGuard const on(true);
        auto const block = std::make_unique<std::vector<char>>(20005);
        allocated = Event("allocate", 20005, block->data());
        freed = Event("free", 20005, block->data());
    }
    EXPECT_THAT(Text(), ::testing::HasSubstr(allocated));
    EXPECT_THAT(Text(), ::testing::HasSubstr(freed));
}

} // namespace Zan::Orv::Core::Service::Tests
