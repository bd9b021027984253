#pragma once

#include "orv/Export.h"

#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service {

/// How much heap a running program uses, and which large blocks moved it. While tracking is on, every
/// allocation and release that a loaded module makes goes through a function that keeps a table of live
/// blocks and a running total, and writes a line to a CSV file for each block above a threshold. Nothing
/// has to be recompiled or preloaded, and with tracking off there is no cost at all.
///
///     {
///         MemoryTrackerGuard const tracking(true);
///         model.Load("season.xml");
///     } // "memory_tracker_<process id>.csv" tells what it took
///
/// Tracking redirects the tables through which modules reach the heap of others, and puts each back bit for
/// bit.
///
/// - On Linux: `malloc`, `free`, `calloc`, `realloc`, `aligned_alloc` and `posix_memalign`, and what is made
///   of them, such as `operator new` in the C++ runtime. A call that is not bound yet counts too. `realloc` is
///   a release and an allocation; when it fails, the old block stays in the table and the failure counts as
///   that of any allocation; of size 0 it is a release alone.
/// - On Windows: `HeapAlloc` and `HeapFree` where they are imported from Kernel32.dll. `HeapReAlloc` is not
///   seen.
///
/// A module that is loaded later is not redirected: a block that it releases stays in the table. So does a
/// block that is released while tracking is off.
///
/// A line of the file has its number, the total after the change, and a message. The file is whole up to the
/// last line, whatever happens to the process; that one may be cut where the process was killed in writing it:
///
///     1, 0, Memory tracking ON
///     2, 45112, allocate 20000 bytes at 0x55d0c8a2f2c0, was, 25112, diff, 25112
///     3, 26000, free 20000 bytes at 0x55d0c8a2f2c0, was, 46000, diff, -888
///
/// "was" is the total before. "diff" of an allocation is the usage that was added since the last logged
/// block; of a release it is the usage given back since then.
///
/// Sizes and totals are 32 bits wide and wrap. A failed allocation counts like any other.
///
/// **Threads.** Turn tracking on and off on one thread at a time, while no other loads or unloads a
/// library. Any number of threads may use the heap meanwhile and none is made to wait: while one is in the
/// bookkeeping, what the others allocate and release passes uncounted. Figures are exact where one thread
/// allocates at a time.
class ORV_API MemoryTracker
{
public:
    /// Whether the heap is tracked.
    enum trackerInitFlag
    {
        TrackingOff = 0, ///< nothing is redirected
        TrackingOn = 1   ///< every loaded module is
    };

    /// The threshold of a new tracker, in bytes.
    static constexpr std::uint64_t THRESHOLD = 0x4000;

    /// The tracker that the redirected calls report to. Made on first use, which must be on one thread;
    /// turning tracking on is such a use.
    static MemoryTracker& instance();
    /// The state of the process. Safe on any thread.
    static trackerInitFlag state();

    /// A copy has the table and the figures. It can be driven by hand, and hears of nothing by itself. A move
    /// exchanges the tables and copies the figures.
    MemoryTracker(MemoryTracker const& other);
    MemoryTracker(MemoryTracker&& other) noexcept;
    MemoryTracker& operator=(MemoryTracker const& other);
    MemoryTracker& operator=(MemoryTracker&& other) noexcept;
    ~MemoryTracker();

    /// True while tracking is on, which is a state of the process.
    bool tracking() const { return state() == TrackingOn; }

    /// Records one allocation, while tracking is on. An address that is in the table keeps its first size,
    /// although the total grows.
    void check_alloc(unsigned long size, void* address);

    /// Records one release, while tracking is on; none of null. That of an unknown address lowers the count
    /// of allocations alone.
    void check_free(void* address);

    /// Writes a line with the text of a printf format, while tracking is on. The line ends where the text
    /// says so. The heap traffic of the line itself is counted.
    void log(char const* format, ...) ORV_PRINTF_FORMAT(2, 3);

    /// The same at any time. `arguments` is used up, as by `vprintf`. The first line of the process empties
    /// the file, which stands in the working directory of the moment. A file that cannot be opened loses
    /// the line, not its number.
    void v_log_message(char const* format, std::va_list arguments);

    /// Only blocks of more than `threshold` bytes are logged from now on.
    void reset_threshold(unsigned long threshold);

    /// Allocations minus releases. Below zero it wraps.
    unsigned int allocations() const { return allocationCount_.load(std::memory_order_relaxed); }

    /// \{
    /// Bytes in use, and the same right after the last logged block.
    unsigned long total() const { return total_.load(std::memory_order_relaxed); }
    unsigned long total_logged() const { return totalLogged_.load(std::memory_order_relaxed); }
    /// \}

private:
    friend class MemoryTrackerGuard;
    MemoryTracker();
    void turn_on_memory_tracking();
    void turn_off_memory_tracking();
    void CopyFigures(MemoryTracker const& other);

    static std::atomic<trackerInitFlag> flag_;
    static std::unique_ptr<MemoryTracker> instance_;

    // Addresses and sizes of live blocks.
    class BlockTable
    {
    public:
        /// An address that is there keeps its size. \throws std::bad_alloc and nothing is inserted.
        void Insert(void* address, std::uint32_t size);
        /// Removes an address and tells its size, or that there is none.
        std::optional<std::uint32_t> Take(void const* address);
        void Swap(BlockTable& other) noexcept;

    private:
        struct Block
        {
            void* address = nullptr;
            std::uint32_t size = 0;
            bool used = false;
        };
        std::size_t Home(void const* address) const;
        std::size_t Next(std::size_t place) const;
        std::size_t Find(void const* address) const;
        void Grow();

        std::vector<Block> places_; // as many as a power of two, or none
        std::size_t count_ = 0;
    };

    BlockTable blocks_;

    // Set while a thread is in the bookkeeping. Only that thread touches the table.
    mutable std::atomic<bool> busy_ = false;

    std::atomic<std::uint32_t> total_ = 0;
    std::atomic<std::uint32_t> totalLogged_ = 0;
    std::atomic<std::uint32_t> allocationCount_ = 0;
    std::atomic<std::uint32_t> lineCount_ = 0;
    std::atomic<std::uint32_t> threshold_ = static_cast<std::uint32_t>(THRESHOLD);
};

/// Tracks the heap for a scope. Guards do not count each other: the end of any that enables turns tracking
/// off.
class ORV_API MemoryTrackerGuard
{
public:
    /// Turns tracking on, where it is off. With false, neither this nor the destructor does anything.
    explicit MemoryTrackerGuard(bool enable);
    MemoryTrackerGuard(MemoryTrackerGuard const&) = delete;
    MemoryTrackerGuard& operator=(MemoryTrackerGuard const&) = delete;
    ~MemoryTrackerGuard();

private:
    MemoryTracker& tracker_;
    bool enable_;
};

} // namespace Zan::Orv::Core::Service
