#include "orv/instrumentation/MemoryTracker.h"

#include "orv/instrumentation/internal/HeapRedirection.h"
#include "orv/platform/SystemFacts.h"
#include "tests/instrumentation/HeapClient.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#if __has_include(<dlfcn.h>)
#include <dlfcn.h>
constexpr std::size_t unboundSlots = 2; // at least, those of the client
#else
constexpr std::size_t unboundSlots = 0;
#endif

namespace Zan::Orv::Core::Service::Tests {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

// Works in a new folder, where the log goes.
class MemoryTrackerTest : public ::testing::Test
{
protected:
    MemoryTrackerTest()
    {
        for (int number = 0; !std::filesystem::create_directory(folder_); ++number)
            folder_ = std::filesystem::temp_directory_path() / ("orv-tracker-" + std::to_string(number));
        std::filesystem::current_path(folder_);
    }
    ~MemoryTrackerTest() override
    {
        MemoryTracker::instance().reset_threshold(MemoryTracker::THRESHOLD);
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(folder_);
    }

    // The log of this test so far.
    static std::vector<std::string> Lines()
    {
        std::ifstream file(FileName());
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        return lines;
    }

    static std::string Text()
    {
        std::string text;
        for (std::string const& line : Lines())
            text += line + "\n";
        return text;
    }

    static std::string FileName()
    {
        return "memory_tracker_" + std::to_string(Platform::ProcessId()) + ".csv";
    }

private:
    std::filesystem::path before_ = std::filesystem::current_path();
    std::filesystem::path folder_ = before_;
};

using MemoryTrackerDeathTest = MemoryTrackerTest;

std::string AsText(void const* address)
{
    char text[40];
    std::snprintf(text, sizeof text, "%p", address);
    return text;
}

// "1, 20100, allocate" of a line, without its number.
std::string WithoutNumber(std::string const& line)
{
    return line.substr(line.find(' ') + 1);
}

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

using Slots = std::map<std::uintptr_t, std::uintptr_t>;

// Addresses and values of the slots in all modules: all of them, and those that lead to the heap.
Slots AllSlots(Slots* ofHeap = nullptr)
{
    Slots slots;
    Internal::HeapFunctions const functions = Platform::WatchHeap({});
    Platform::ForEachModule([&](Platform::ModuleImage const& module) {
        Internal::ForEachSlot(module, [&](Internal::Slot const& slot) {
            slots[slot.address] = slot.value;
            if (ofHeap != nullptr && Internal::FunctionBehind(slot, functions) != nullptr)
                (*ofHeap)[slot.address] = slot.value;
        });
    });
    return slots;
}

} // namespace

TEST_F(MemoryTrackerTest, LogsBlocksAboveTheThreshold)
{
    MemoryTracker tracker = MakeTracker();
    std::filesystem::remove(FileName());
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
    std::vector<std::string> lines = Lines();
    ASSERT_EQ(lines.size(), 10u) << Text();
    EXPECT_THAT(lines.front(), HasSubstr("Memory tracking ON"));
    EXPECT_THAT(lines.back(), HasSubstr("Memory tracking OFF"));
    int const first = std::stoi(lines[1]);
    for (std::size_t i = 1; i <= 8; ++i)
    {
        EXPECT_EQ(std::stoi(lines[i]), first + static_cast<int>(i) - 1) << lines[i];
        lines[i] = WithoutNumber(lines[i]);
    }
    std::string const at2 = AsText(&places[2]), at3 = AsText(&places[3]), at7 = AsText(&places[7]);
    EXPECT_EQ(lines[1], "20100, allocate 20000 bytes at " + at2 + ", was, 100, diff, 100");
    EXPECT_EQ(lines[2], "100, free 20000 bytes at " + at2 + ", was, 20100, diff, 0");
    EXPECT_EQ(lines[3], "16485, allocate 16385 bytes at " + at3 + ", was, 100, diff, 0");
    EXPECT_EQ(lines[4], "150, free 16385 bytes at " + at3 + ", was, 16535, diff, -50");
    EXPECT_EQ(lines[5], "151, allocate 1 bytes at " + AsText(&places[6]) + ", was, 150, diff, 0");
    EXPECT_EQ(lines[6], "150, allocate 4294967295 bytes at " + at7 + ", was, 151, diff, 0");
    EXPECT_EQ(lines[7], "151, free 4294967295 bytes at " + at7 + ", was, 150, diff, 0");
    EXPECT_EQ(lines[8], "151, note of 2");
}

TEST_F(MemoryTrackerTest, CountsWhatItKnowsAndWhatItDoesNot)
{
    MemoryTracker tracker = MakeTracker();
    unsigned const count = tracker.allocations();
    {
        MemoryTrackerGuard const on(true);
        tracker.check_free(nullptr);
        EXPECT_EQ(tracker.allocations(), count);
        tracker.check_free(&places[0]); // unknown
        EXPECT_EQ(tracker.allocations(), count - 1);

        tracker.check_alloc(static_cast<unsigned long>(0x10000000Aull), &places[1]); // 32 bits of it: 10
        tracker.check_alloc(5, &places[1]);
        EXPECT_EQ(tracker.total(), 15u);
        EXPECT_EQ(tracker.allocations(), count + 1);
        MemoryTracker copy(tracker);
        tracker.check_free(&places[1]);
        EXPECT_EQ(tracker.total(), 5u) << "the first size is kept";
        tracker.check_free(&places[1]);
        EXPECT_EQ(tracker.total(), 5u);
        for (unsigned i = 0; i < count + 2; ++i)
            tracker.check_free(&places[0]);
        EXPECT_EQ(static_cast<int>(tracker.allocations()), -3) << "the count goes below zero";

        MemoryTracker moved(std::move(copy));
        copy = tracker;
        copy.check_free(&places[1]);
        EXPECT_EQ(copy.total(), 5u) << "the table went with the move";
        moved.check_free(&places[1]);
        EXPECT_EQ(moved.total(), 5u);
        tracker.check_alloc(20, nullptr); // a failed allocation counts
        EXPECT_EQ(tracker.total(), 25u);
    }
    tracker.check_alloc(70000, &places[2]);
    tracker.check_free(&places[2]);
    EXPECT_EQ(tracker.total(), 25u) << "nothing is recorded while tracking is off";
    EXPECT_EQ(static_cast<int>(tracker.allocations()), -2);
}

TEST_F(MemoryTrackerTest, KnowsEachOfManyBlocks)
{
    MemoryTracker tracker = MakeTracker();
    std::map<std::size_t, unsigned long> sizes; // what is live, by its number
    MemoryTrackerGuard const on(true);
    tracker.reset_threshold(0xFFFFFFFF);
    auto const address = [](std::size_t number) {
        return reinterpret_cast<void*>(number << (number % 2 != 0 ? 4 : 12));
    };
    std::mt19937 random(4096);
    unsigned long total = 0;
    for (int i = 0; i < 100000; ++i)
    {
        std::size_t const number = random() % 5000 + 1;
        if (auto const found = sizes.find(number); found != sizes.end())
        {
            tracker.check_free(address(number));
            total -= found->second;
            sizes.erase(found);
        }
        else
        {
            unsigned long const size = random() % 1000;
            tracker.check_alloc(size, address(number));
            total += size;
            sizes[number] = size;
        }
        ASSERT_EQ(tracker.total(), total) << i;
    }
}

TEST_F(MemoryTrackerTest, GuardsTurnTrackingOnAndOff)
{
    EXPECT_FALSE(MemoryTracker::instance().tracking());
    {
        MemoryTrackerGuard const passive(false);
        EXPECT_EQ(MemoryTracker::state(), MemoryTracker::TrackingOff);
        MemoryTrackerGuard const outer(true);
        EXPECT_EQ(MemoryTracker::state(), MemoryTracker::TrackingOn);
        {
            MemoryTrackerGuard const alsoPassive(false);
        }
        EXPECT_TRUE(MemoryTracker::instance().tracking());
        {
            MemoryTrackerGuard const inner(true);
        }
        EXPECT_FALSE(MemoryTracker::instance().tracking()) << "an inner guard turns off what was on";
        MemoryTracker::instance().log("unseen\n");
    }
    EXPECT_THAT(Lines(), ElementsAre(HasSubstr("Memory tracking ON"), HasSubstr("Memory tracking OFF")));
}

TEST_F(MemoryTrackerTest, TheHeapCallsOfAllModulesPass)
{
    std::array<void*, 4> blocks = {};
    std::array<std::string, 4> addresses;
    {
        MemoryTrackerGuard const on(true);
        blocks[0] = std::malloc(20001);
        blocks[1] = ClientAllocate(20002);
        blocks[2] = std::calloc(3, 10000);
        blocks[3] = std::realloc(std::malloc(20003), 50000);
        std::transform(blocks.begin(), blocks.end(), addresses.begin(), AsText);
        std::free(blocks[0]);
        ClientRelease(blocks[1]);
        std::free(blocks[2]);
        std::free(blocks[3]);
    }
    std::string const text = Text();
    for (char const* const size : {"20001", "20002", "30000", "20003"})
        EXPECT_THAT(text, HasSubstr("allocate " + std::string(size) + " bytes")) << size;
    for (std::size_t const i : {0u, 1u, 2u})
        EXPECT_THAT(text, HasSubstr("bytes at " + addresses[i] + ", was")) << i;
    EXPECT_THAT(text, HasSubstr("free 20002 bytes at " + addresses[1] + ", was"));
}

TEST_F(MemoryTrackerTest, OperatorNewPasses)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer has an operator new of its own, which does not go through malloc";
#endif
    std::string address;
    {
        MemoryTrackerGuard const on(true);
        auto const block = std::make_unique<std::vector<char>>(20005);
        address = AsText(block->data());
    }
    EXPECT_THAT(Text(), HasSubstr("allocate 20005 bytes at " + address));
    EXPECT_THAT(Text(), HasSubstr("free 20005 bytes at " + address));
}

TEST_F(MemoryTrackerTest, EverySlotIsPutBack)
{
    // Binds what the tracker and this test call besides.
    {
        MemoryTrackerGuard const on(true);
    }
    AllSlots();

    Slots before;
    AllSlots(&before);
    Slots during;
    std::string address;
    {
        MemoryTrackerGuard const on(true);
        during = AllSlots();
        void* const block =
            ClientAllocate(20001); // through a slot that was not bound, where the host has such
        address = AsText(block);
        ClientRelease(block);
    }
    Slots const after = AllSlots();
    EXPECT_THAT(Text(), HasSubstr("allocate 20001 bytes at " + address));
    EXPECT_THAT(Text(), HasSubstr("free 20001 bytes at " + address));

    std::set<std::uintptr_t> values;
    for (auto const& [slot, value] : before)
    {
        values.insert(value);
        EXPECT_NE(during.at(slot), value) << slot;
        EXPECT_EQ(after.at(slot), value) << slot;
    }
    EXPECT_GE(values.size(), Platform::WatchHeap({}).size() + unboundSlots);
}

TEST_F(MemoryTrackerTest, ItsOwnHeapTrafficIsNotCounted)
{
    MemoryTracker& tracker = MemoryTracker::instance();
    unsigned counts[4] = {};
    void* block = nullptr;
    MemoryTracker copy = MakeTracker();
    {
        MemoryTrackerGuard const on(true);
        tracker.reset_threshold(0);
        counts[0] = tracker.allocations();
        block = std::malloc(5);
        errno = EDOM;
        std::free(block);
        EXPECT_EQ(errno, EDOM) << "writing the line leaves errno alone";
        block = std::malloc(6);
        counts[1] = tracker.allocations();
        tracker.reset_threshold(MemoryTracker::THRESHOLD);
        copy = tracker; // copies the table that its own nodes would go into
        counts[2] = static_cast<unsigned>(copy.total());
        copy.check_free(block);
        counts[3] = static_cast<unsigned>(copy.total());
    }
    EXPECT_EQ(counts[1], counts[0] + 1);
    EXPECT_EQ(Text().find("bytes", Text().find("allocate 6 bytes") + 12), std::string::npos) << Text();
    EXPECT_EQ(counts[3], counts[2] - 6);
    std::free(block);
}

TEST_F(MemoryTrackerTest, ThreadsUseTheHeapWhileTrackingGoesOnAndOff)
{
    MemoryTracker::instance().reset_threshold(0xFFFFFFFF); // no lines but those of the guards
    std::atomic<bool> stop = false;
    std::atomic<int> damaged = 0;
    std::vector<std::thread> threads;
    for (unsigned number = 0; number < 8; ++number)
        threads.emplace_back([&, number] {
            std::vector<std::string> kept(64);
            for (std::size_t i = 0; !stop; ++i)
            {
                std::string& text = kept[i % kept.size()];
                if (text != std::string(text.size(), static_cast<char>('a' + number)))
                    ++damaged;
                text = std::string(16 + i % 3000, static_cast<char>('a' + number));
                void* const block = std::realloc(std::calloc(i % 50 + 1, 8), i % 7000 + 1);
                std::free(block);
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
    EXPECT_EQ(damaged, 0);
    EXPECT_EQ(Lines().size(), 2u * rounds);
}

#if GTEST_HAS_DEATH_TEST
TEST_F(MemoryTrackerDeathTest, TheFirstLineOfAProcessEmptiesTheFile)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto const writeAndCheck = [] {
        std::ofstream(FileName()) << "1, 2, an earlier process\n";
        MemoryTracker::instance().reset_threshold(0); // the first line's own traffic has lines as well
        {
            MemoryTrackerGuard const on(true);
        }
        std::vector<std::string> const lines = Lines();
        std::vector<bool> seen(lines.size() + 1);
        for (std::string const& line : lines)
            seen.at(static_cast<std::size_t>(std::stoi(line))) = true;
        bool const whole = std::count(seen.begin(), seen.end(), true) == static_cast<int>(lines.size());
        bool const fresh =
            Text().find("earlier") == std::string::npos && Text().find("ON\n") < Text().find("OFF\n");
        std::exit(whole && fresh && lines.size() >= 2 ? 0 : 1);
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
TEST_F(MemoryTrackerTest, ModulesMayComeAndGo)
{
    using Allocate = void* (*)(std::size_t);
    void* library = ::dlopen(ORV_TEST_LATE_CLIENT, RTLD_LAZY);
    ASSERT_NE(library, nullptr) << ::dlerror();
    {
        MemoryTrackerGuard const on(true);
        std::free(reinterpret_cast<Allocate>(::dlsym(library, "ClientAllocate"))(30001));
        ::dlclose(library);
        library = ::dlopen(ORV_TEST_LATE_CLIENT, RTLD_NOW);
        ASSERT_NE(library, nullptr) << ::dlerror();
        std::free(reinterpret_cast<Allocate>(::dlsym(library, "ClientAllocate"))(30002));
    }
    std::free(reinterpret_cast<Allocate>(::dlsym(library, "ClientAllocate"))(30003));
    ::dlclose(library);
    EXPECT_THAT(Text(), HasSubstr("allocate 30001 bytes"));
    EXPECT_THAT(Text(), Not(HasSubstr("allocate 30002 bytes"))) << "not redirected: loaded later";
}
#endif

} // namespace Zan::Orv::Core::Service::Tests
