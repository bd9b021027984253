#include "Graphs.h"
#include "orv/datafiles/BinaryFileIO.h"
#include "orv/files/Directory.h"
#include "orv/files/FileName.h"
#include "orv/files/FileSystemUtil.h"
#include "orv/files/FileUtils.h"
#include "orv/foundation/Exception.h"
#include "orv/instrumentation/MemoryTracker.h"
#include "tests/files/DiskTest.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <ucontext.h>
#include <unistd.h>
#include <vector>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/common_interface_defs.h>
#endif

// What the host does to a program at work: no more room on the disk, a stack whose end nobody knows, and an end without a
// word.

namespace Zan::Orv::Core::Service::Tests {
namespace {

/// Runs `action` while no file of this process grows beyond `bytes`.
template<class Action>
void OnSmallDisk(rlim_t bytes, Action action)
{
    auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before;
    ::getrlimit(RLIMIT_FSIZE, &before);
    rlimit const limit{bytes, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    action();
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
}

template<class Copy>
void ExpectPrefixes(Copy copy, bool failureIsTold)
{
    std::string const content(20'000, 'x');
    for (std::size_t const limit : {0U, 1U, 9'999U, 10'000U, 19'999U, 20'000U})
    {
        SCOPED_TRACE(limit);
        TemporaryDirectory const folder;
        std::string const source = folder.Write("source/file", content);
        folder.Make("target");
        bool isTold = false;
        OnSmallDisk(limit, [&] {
            try
            {
                copy(folder / "source", folder / "target");
            }
            catch (fs::filesystem_error const&)
            {
                isTold = true;
            }
        });
        EXPECT_EQ(isTold, failureIsTold && limit < content.size());
        EXPECT_EQ(Content(folder / "target/file"), content.substr(0, limit));
        EXPECT_EQ(Content(source), content);
    }
}

TEST(FullDisk, CopiesArePrefixes)
{
    ExpectPrefixes([](auto const& from, auto const& to) { FileSystemUtil::copyDirectory(from, to, false); },
                   true);
    ExpectPrefixes(
        [](auto const& from, auto const& to) { Directory(from).CopyContentsTo(Directory(to), true); }, true);
    ExpectPrefixes(
        [](auto const& from, auto const& to) {
            EXPECT_TRUE(FileUtils::Copy(FileName(from + "/file"), FileName(to + "/file"), false));
        },
        false);
}

TEST(FullDisk, IsToldByBinaryFileIO)
{
    std::vector<double> values(2'000);
    for (rlim_t const limit : {0U, 1U, 9'999U, 15'999U, 16'000U})
    {
        TemporaryDirectory const folder;
        std::ofstream file(folder / "file", std::ios::binary);
        bool isWhole = false;
        OnSmallDisk(limit, [&] {
            isWhole = BinaryFileIO::writeFloat64s(file, values.data(), static_cast<int>(values.size())) &&
                      file.flush();
        });
        EXPECT_EQ(isWhole, limit == 16'000);
        EXPECT_EQ(Content(folder / "file").size(), limit);
    }
}

// Tracks large blocks in a child without an end, until it is killed. What the file then holds.
std::string TrackUntilKilled(TemporaryDirectory const& folder, std::chrono::microseconds life)
{
    std::string const file = folder / ("memory_tracker_" + std::to_string(::getpid()) + ".csv");
    pid_t const child = ::fork();
    if (child == 0)
    {
        fs::current_path(folder.Name());
        MemoryTrackerGuard const tracking(true);
        for (;;)
            MemoryTracker::instance().log("%s\n", std::string(200, 'x').c_str());
    }
    auto const hasBegun = [&] {
        boost::system::error_code ignored; // of a file that is not there yet
        return fs::exists(file, ignored) && fs::file_size(file, ignored) > 0;
    };
    pid_t ended = 0;
    while (!hasBegun() && ended == 0)
    {
        std::this_thread::yield();
        ended = ::waitpid(child, nullptr, WNOHANG);
    }
    std::this_thread::sleep_for(life);
    if (ended == 0 && ::kill(child, SIGKILL) == 0)
        ::waitpid(child, nullptr, 0);
    EXPECT_EQ(ended, 0) << "it has ended by itself";
    return Content(file);
}

// The kernel may cut the line in writing, where a page of memory ends.
TEST(KilledProcess, LeavesWholeLinesUpToTheLast)
{
    for (int i = 0; i < 20; ++i)
    {
        TemporaryDirectory const folder;
        std::istringstream lines(TrackUntilKilled(folder, std::chrono::microseconds(100 * i)));
        int number = 0;
        for (std::string line; std::getline(lines, line) && !lines.eof();)
        {
            ASSERT_EQ(line.rfind(std::to_string(++number) + ", ", 0), 0U) << line;
            ASSERT_TRUE(line.size() > 200 || line.ends_with(", Memory tracking ON")) << line;
        }
        EXPECT_GT(number, 0);
    }
}

// AddressSanitizer wants to hear of a change of stacks.
#ifdef __SANITIZE_ADDRESS__
constexpr auto leaveFor = __sanitizer_start_switch_fiber;
constexpr auto arrive = __sanitizer_finish_switch_fiber;
#else
constexpr auto leaveFor = [](void**, void const*, std::size_t) {};
constexpr auto arrive = [](void*, void const**, std::size_t*) {};
#endif

/// Runs `Action` as a coroutine, on a stack that the host does not know.
template<void (*Action)()>
void RunOnOtherStack()
{
    std::vector<char> stack(std::size_t{1} << 20);
    ucontext_t here;
    ucontext_t coroutine;
    ::getcontext(&coroutine);
    coroutine.uc_stack.ss_sp = stack.data();
    coroutine.uc_stack.ss_size = stack.size();
    coroutine.uc_link = &here;
    auto const run = [] {
        void const* bottom = nullptr;
        std::size_t size = 0;
        arrive(nullptr, &bottom, &size);
        Action();
        leaveFor(nullptr, bottom, size);
    };
    ::makecontext(&coroutine, run, 0);
    void* memory = nullptr;
    leaveFor(&memory, stack.data(), stack.size());
    ASSERT_EQ(::swapcontext(&here, &coroutine), 0);
    arrive(memory, nullptr, nullptr);
}

template<class Form>
void PassChains()
{
    EXPECT_EQ(PassChain<Form>(5), 5);
    EXPECT_THROW(PassChain<Form>(100'000), SerializeException);
}

TYPED_TEST(FormTest, GraphsOnTheStackOfACoroutine)
{
    RunOnOtherStack<PassChains<TypeParam>>();
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
