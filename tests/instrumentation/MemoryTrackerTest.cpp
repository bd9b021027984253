#include "tests/instrumentation/MemoryTrackerTest.h"

#include "orv/instrumentation/internal/HeapRedirection.h"
#include "tests/instrumentation/HeapClient.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <map>
#include <thread>
#include <utility>

#if __has_include(<dlfcn.h>)
#include <dlfcn.h>
#endif

namespace Zan::Orv::Core::Service::Tests {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

using MemoryTrackerDeathTest = MemoryTrackerTest;

// Addresses of blocks that nobody has.
char places[8];

// A tracker beside the one that hears of the heap: nothing but the calls of the test moves its figures.
// Total and total logged are 0, also when an earlier test has left something.
MemoryTracker MakeTracker()
{
    MemoryTracker tracker = MemoryTracker::instance();
    MemoryTrackerGuard const on(true);
    tracker.reset_threshold(0);
    tracker.check_alloc(1, nullptr);
    tracker.check_alloc(0ul - tracker.total(), nullptr);
    tracker.reset_threshold(MemoryTracker::THRESHOLD);
    return tracker;
}

// The values of the slots in all modules by their addresses, and whether they lead to the heap.
using Slots = std::map<std::uintptr_t, std::pair<std::uintptr_t, bool>>;

Slots AllSlots()
{
    Slots slots;
    Internal::HeapFunctions const functions = Platform::WatchHeap({});
    Platform::ForEachModule([&](Platform::ModuleImage const& module) {
        Internal::ForEachSlot(module, [&](Internal::Slot const& slot) {
            slots[slot.address] = {slot.value, Internal::FunctionBehind(slot, functions) != nullptr};
        });
    });
    return slots;
}

} // namespace

TEST_F(MemoryTrackerTest, LogsBlocksAboveTheThreshold)
{
    MemoryTracker tracker = MakeTracker();
    std::ofstream(FileName()).close();
    {
        MemoryTrackerGuard const on(true);
        tracker.check_alloc(100, &places[0]);
        tracker.check_alloc(16384, &places[1]);
        tracker.check_free(&places[1]);
        tracker.check_alloc(20000, &places[2]);
        tracker.check_free(&places[2]);
        tracker.check_alloc(16385, &places[3]);
        tracker.check_alloc(50, &places[4]);
        tracker.check_free(&places[3]);
        tracker.reset_threshold(0);
        tracker.check_alloc(0, &places[5]);
        tracker.check_alloc(1, &places[6]);
        tracker.check_alloc(4294967295u, &places[7]); // wraps to one less
        tracker.check_free(&places[7]);
        tracker.log("%s of %d\n", "note", 2);
    }
    EXPECT_EQ(tracker.total(), 151u);
    EXPECT_EQ(tracker.total_logged(), 151u);
    std::string const expected[] = {
        "20100, " + Event("allocate", 20000, Address(&places[2])) + "100, diff, 100",
        "100, " + Event("free", 20000, Address(&places[2])) + "20100, diff, 0",
        "16485, " + Event("allocate", 16385, Address(&places[3])) + "100, diff, 0",
        "150, " + Event("free", 16385, Address(&places[3])) + "16535, diff, -50",
        "151, " + Event("allocate", 1, Address(&places[6])) + "150, diff, 0",
        "150, " + Event("allocate", 4294967295u, Address(&places[7])) + "151, diff, 0",
        "151, " + Event("free", 4294967295u, Address(&places[7])) + "150, diff, 0",
        "151, note of 2"};
    std::vector<std::string> const lines = Lines();
    ASSERT_EQ(lines.size(), 2 + std::size(expected)) << Text();
    EXPECT_THAT(lines.front(), HasSubstr("Memory tracking ON"));
    EXPECT_THAT(lines.back(), HasSubstr("Memory tracking OFF"));
    int number = std::stoi(lines[1]);
    for (std::size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(lines[i + 1], std::to_string(number++) + ", " + expected[i]);
}

TEST_F(MemoryTrackerTest, CountsWhatItKnowsAndWhatItDoesNot)
{
    MemoryTracker tracker = MakeTracker();
    unsigned const count = tracker.allocations();
    {
        MemoryTrackerGuard const on(true);
        tracker.check_free(nullptr);                                                 // is none
        tracker.check_free(&places[0]);                                              // unknown
        tracker.check_alloc(static_cast<unsigned long>(0x10000000Aull), &places[1]); // 32 bits of it: 10
        tracker.check_alloc(5, &places[1]);
        EXPECT_EQ(tracker.allocations(), count + 1);
        for (unsigned i = 0; i < count + 4; ++i)
        {
            tracker.check_free(&places[1]);
            EXPECT_EQ(tracker.total(), 5u) << "the first size is kept, and goes once";
        }
        EXPECT_EQ(static_cast<int>(tracker.allocations()), -3) << "the count goes below zero";
        tracker.check_alloc(20, nullptr); // a failed allocation counts
    }
    tracker.check_alloc(70000, &places[2]);
    tracker.check_free(&places[0]);
    MemoryTracker copy = MakeTracker();
    copy = tracker;
    EXPECT_EQ(copy.total(), 25u) << "nothing is recorded while tracking is off";
}

TEST_F(MemoryTrackerTest, KnowsEachOfManyBlocks)
{
    MemoryTracker tracker = MakeTracker();
    MemoryTrackerGuard const on(true);
    tracker.reset_threshold(0xFFFFFFFF);
    auto const address = [](unsigned long number) { return reinterpret_cast<void*>(number * 0x1010); };
    for (unsigned long number = 1; number <= 5000; ++number)
        tracker.check_alloc(number, address(number));
    unsigned long total = tracker.total();
    EXPECT_EQ(total, 5000u * 5001 / 2);
    for (unsigned long i = 1; i <= 5000; ++i)
    {
        unsigned long const number = i * 7 % 5001; // 5001 is no multiple of 7
        tracker.check_free(address(number));
        ASSERT_EQ(tracker.total(), total -= number) << number;
    }
}

TEST_F(MemoryTrackerTest, GuardsTurnTrackingOnAndOff)
{
    {
        MemoryTrackerGuard const outer(true);
        EXPECT_EQ(MemoryTracker::state(), MemoryTracker::TrackingOn);
        static_cast<void>(MemoryTrackerGuard(false));
        EXPECT_TRUE(MemoryTracker::instance().tracking());
        static_cast<void>(MemoryTrackerGuard(true));
        EXPECT_FALSE(MemoryTracker::instance().tracking()) << "an inner guard turns off what was on";
        MemoryTracker::instance().log("unseen\n");
    }
    EXPECT_THAT(Lines(), ElementsAre(HasSubstr("Memory tracking ON"), HasSubstr("Memory tracking OFF")));
}

TEST_F(MemoryTrackerTest, TheHeapCallsOfAllModulesPassAndEverySlotIsPutBack)
{
    static_cast<void>(MemoryTrackerGuard(true)); // binds what the tracker and this test call besides
    AllSlots();
    Slots const before = AllSlots();
    std::uintptr_t own = 0;
    std::uintptr_t cleared = 0;
    std::uintptr_t ofClient = 0;
    {
        MemoryTrackerGuard const on(true);
        Slots const during = AllSlots();
        for (auto const& [slot, found] : before)
            EXPECT_TRUE(!found.second || during.at(slot).first != found.first) << slot;
        void* const blocks[] = {std::malloc(20001), std::calloc(3, 10000), ClientAllocate(20002)};
        own = Address(blocks[0]);
        cleared = Address(blocks[1]);
        ofClient = Address(blocks[2]); // by a slot that was not bound, where the host has such
        std::free(std::realloc(blocks[0], 50000));
        std::free(blocks[1]);
        ClientRelease(blocks[2]);
    }
    Slots const after = AllSlots();
    EXPECT_THAT(Text(), HasSubstr(Event("allocate", 20001, own)));
    EXPECT_THAT(Text(), HasSubstr(Event("allocate", 30000, cleared)));
    EXPECT_THAT(Text(), HasSubstr(Event("allocate", 20002, ofClient)));
    EXPECT_THAT(Text(), HasSubstr(Event("free", 20002, ofClient)));

    for (auto const& [slot, found] : before)
        EXPECT_TRUE(!found.second || after.at(slot).first == found.first) << slot;
}

TEST_F(MemoryTrackerTest, ItsOwnHeapTrafficIsNotCounted)
{
    MemoryTracker& tracker = MemoryTracker::instance();
    unsigned before = 0;
    unsigned after = 0;
    {
        MemoryTrackerGuard const on(true);
        tracker.reset_threshold(0);
        before = tracker.allocations();
        void* volatile block = std::malloc(5); // or a compiler leaves out what nobody looks at
        errno = EDOM;
        std::free(block);
        EXPECT_EQ(errno, EDOM) << "writing the line leaves errno alone";
        block = std::malloc(6);
        after = tracker.allocations();
        tracker.reset_threshold(MemoryTracker::THRESHOLD);
        std::free(block);
    }
    EXPECT_EQ(after, before + 1);
    EXPECT_EQ(Text().find("bytes", Text().find("allocate 6 bytes") + 12), std::string::npos) << Text();
}

TEST_F(MemoryTrackerTest, ThreadsUseTheHeapWhileTrackingGoesOnAndOff)
{
    MemoryTracker::instance().reset_threshold(0xFFFFFFFF); // no lines but those of the guards
    std::atomic<bool> stop = false;
    std::vector<std::thread> threads;
    for (int number = 0; number < 8; ++number)
        threads.emplace_back([&] {
            std::vector<std::string> kept(64); // from before tracking goes on or off until after
            for (std::size_t i = 0; !stop; ++i)
            {
                kept[i % kept.size()] = std::string(16 + i % 3000, 'x');
                std::free(std::realloc(std::calloc(i % 50 + 1, 8), i % 7000 + 1));
                std::this_thread::yield();
            }
        });
    int constexpr rounds = ORV_TEST_ROUNDS;
    for (int round = 0; round < rounds; ++round)
    {
        MemoryTrackerGuard const on(true);
        std::this_thread::yield();
    }
    stop = true;
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(Lines().size(), 2u * rounds);
}

#if GTEST_HAS_DEATH_TEST
TEST_F(MemoryTrackerDeathTest, TheFirstLineOfAProcessEmptiesTheFile)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto const writeAndCheck = [] {
        std::ofstream(FileName()) << "1, 2, an earlier process\n";
        MemoryTracker::instance().reset_threshold(0); // the first line's own traffic has lines as well
        static_cast<void>(MemoryTrackerGuard(true));
        std::string const text = '\n' + Text();
        bool whole = Lines().size() > 1 && text.find("earlier") == std::string::npos;
        for (std::size_t number = 1; number <= Lines().size(); ++number)
            whole = whole && text.find('\n' + std::to_string(number) + ", ") != std::string::npos;
        std::exit(whole ? 0 : 1);
    };
    EXPECT_EXIT(writeAndCheck(), ::testing::ExitedWithCode(0), "");
}

TEST_F(MemoryTrackerDeathTest, AProcessMayEndWhileTrackingIsOn)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto const endEarly = [] {
        for (int i = 0; i < 4; ++i)
            std::thread([] {
                for (std::size_t size = 1;; size = size % 5000 + 1)
                    std::free(std::malloc(size));
            }).detach();
        MemoryTrackerGuard const on(true); // never ends
        std::exit(0);
    };
    EXPECT_EXIT(endEarly(), ::testing::ExitedWithCode(0), "");
}
#endif

#if __has_include(<dlfcn.h>)
TEST_F(MemoryTrackerTest, EveryWayToABlockCounts)
{
    void* blocks[3] = {};
    {
        MemoryTrackerGuard const on(true);
        blocks[0] = std::aligned_alloc(64, 20032);
        EXPECT_EQ(::posix_memalign(&blocks[1], 64, 20001), 0);
        blocks[2] = std::realloc(std::malloc(20003), 20004);
        for (void* const block : blocks)
            std::free(block);
    }
    for (std::string const event : {"allocate 20032", "free 20032", "allocate 20001", "free 20001",
                                    "free 20003", "allocate 20004", "free 20004"})
        EXPECT_THAT(Text(), HasSubstr(event + " bytes at"));
}

TEST_F(MemoryTrackerTest, ModulesMayComeAndGo)
{
    void* library = nullptr;
    auto const use = [&](std::size_t size) {
        ASSERT_NE(library, nullptr) << ::dlerror();
        std::free(reinterpret_cast<decltype(&ClientAllocate)>(::dlsym(library, "ClientAllocate"))(size));
    };
    library = ::dlopen(ORV_TEST_LATE_CLIENT, RTLD_LAZY);
    {
        MemoryTrackerGuard const on(true);
        use(30001);
        ::dlclose(library);
        library = ::dlopen(ORV_TEST_LATE_CLIENT, RTLD_NOW);
        use(30002);
    }
    ::dlclose(library);
    EXPECT_THAT(Text(), HasSubstr("allocate 30001 bytes"));
    EXPECT_THAT(Text(), Not(HasSubstr("allocate 30002 bytes"))) << "not redirected: loaded later";
}
#endif

} // namespace Zan::Orv::Core::Service::Tests
