#include "orv/instrumentation/MemoryTracker.h"

#include "orv/instrumentation/internal/HeapRedirection.h"
#include "orv/platform/SystemFacts.h"

#include <array>
#include <cstdio>
#include <exception>
#include <utility>

namespace Zan::Orv::Core::Service {

constinit std::atomic<MemoryTracker::trackerInitFlag> MemoryTracker::flag_ = TrackingOff;
constinit std::unique_ptr<MemoryTracker> MemoryTracker::instance_;

namespace {

// The object of `instance_`, also when that has let go of it.
constinit MemoryTracker* theTracker = nullptr;

// The process id of the time of loading: a forked child goes on in its parent's file.
std::array<char, 256> const logFileName = [] {
    std::array<char, 256> name = {};
    std::snprintf(name.data(), name.size(), "memory_tracker_%d.csv", Platform::ProcessId());
    return name;
}();

constinit std::atomic<bool> fileIsStarted = false;

// Stays as long as the process: the destructors of others may still turn tracking on and off.
Internal::HeapRedirection& redirection = *new Internal::HeapRedirection;

// The claim on a tracker's table. Who finds it taken passes by: no thread waits for another, and the heap
// traffic of the bookkeeping leads no further than this.
class Bookkeeping
{
public:
    explicit Bookkeeping(std::atomic<bool>& busy)
        : busy_(busy),
          mine_(!busy.load(std::memory_order_relaxed) && !busy.exchange(true, std::memory_order_acquire))
    {}
    Bookkeeping(Bookkeeping const&) = delete;
    Bookkeeping& operator=(Bookkeeping const&) = delete;
    ~Bookkeeping()
    {
        if (mine_)
            busy_.store(false, std::memory_order_release);
    }

    bool IsMine() const { return mine_; }

private:
    std::atomic<bool>& busy_;
    bool const mine_;
};

// Only the holder of the claim changes a figure; others read it meanwhile.
std::uint32_t Get(std::atomic<std::uint32_t> const& figure)
{
    return figure.load(std::memory_order_relaxed);
}

void Set(std::atomic<std::uint32_t>& figure, std::uint32_t value)
{
    figure.store(value, std::memory_order_relaxed);
}

long SignedDifference(std::uint32_t a, std::uint32_t b)
{
    return static_cast<std::int32_t>(a - b);
}

// What is thrown out of the bookkeeping is its own lack of memory. The block then goes without a record.
void OnAllocated(std::size_t size, void* address) noexcept
{
    try
    {
        MemoryTracker::instance().check_alloc(static_cast<std::uint32_t>(size), address);
    }
    catch (std::exception const&)
    {}
}

void OnReleased(void* address) noexcept
{
    MemoryTracker::instance().check_free(address);
}

} // namespace

MemoryTracker& MemoryTracker::instance()
{
    if (theTracker == nullptr)
    {
        instance_.reset(new MemoryTracker);
        theTracker = instance_.get();

        // Ends the redirection when the library goes, before `instance_` does. The tracker stays: threads
        // that still run may stand inside of it, and the destructors of others may still use it.
        static struct Farewell
        {
            ~Farewell()
            {
                flag_ = TrackingOff;
                redirection.Remove();
                static_cast<void>(instance_.release());
            }
        } const farewell;
    }
    return *theTracker;
}

MemoryTracker::trackerInitFlag MemoryTracker::state()
{
    return flag_.load(std::memory_order_relaxed);
}

MemoryTracker::MemoryTracker() = default;

// The copy's own heap traffic may be what the other tracker hears of, so the other is busy meanwhile.
MemoryTracker::MemoryTracker(MemoryTracker const& other)
{
    Bookkeeping const scope(other.busy_);
    blocks_ = other.blocks_;
    busy_ = !scope.IsMine();
    CopyFigures(other);
}

MemoryTracker::MemoryTracker(MemoryTracker&& other) noexcept
{
    *this = std::move(other);
}

MemoryTracker& MemoryTracker::operator=(MemoryTracker const& other)
{
    return *this = MemoryTracker(other);
}

MemoryTracker& MemoryTracker::operator=(MemoryTracker&& other) noexcept
{
    if (this != &other)
    {
        blocks_.Swap(other.blocks_);
        busy_ = other.busy_.load();
        CopyFigures(other);
    }
    return *this;
}

MemoryTracker::~MemoryTracker() = default;

void MemoryTracker::CopyFigures(MemoryTracker const& other)
{
    Set(total_, Get(other.total_));
    Set(totalLogged_, Get(other.totalLogged_));
    Set(allocationCount_, Get(other.allocationCount_));
    Set(lineCount_, Get(other.lineCount_));
    Set(threshold_, Get(other.threshold_));
}

void MemoryTracker::check_alloc(unsigned long size, void* address)
{
    if (!tracking())
        return;
    Bookkeeping const scope(busy_);
    if (!scope.IsMine())
        return;

    auto const bytes = static_cast<std::uint32_t>(size);
    std::uint32_t const was = Get(total_);
    Set(total_, was + bytes);
    if (bytes > Get(threshold_))
    {
        log("allocate %lu bytes at %p, was, %lu, diff, %ld\n", static_cast<unsigned long>(bytes), address,
            static_cast<unsigned long>(was), SignedDifference(was, Get(totalLogged_)));
        Set(totalLogged_, Get(total_));
    }
    blocks_.Insert(address, bytes);
    Set(allocationCount_, Get(allocationCount_) + 1);
}

void MemoryTracker::check_free(void* address)
{
    if (!tracking() || address == nullptr)
        return;
    Bookkeeping const scope(busy_);
    if (!scope.IsMine())
        return;

    if (auto const size = blocks_.Take(address))
    {
        std::uint32_t const bytes = *size;
        std::uint32_t const was = Get(total_);
        Set(total_, was - bytes);
        if (bytes > Get(threshold_))
        {
            // The other way round than for an allocation: what was given back.
            log("free %lu bytes at %p, was, %lu, diff, %ld\n", static_cast<unsigned long>(bytes), address,
                static_cast<unsigned long>(was), SignedDifference(Get(totalLogged_), was));
            Set(totalLogged_, Get(total_));
        }
    }
    Set(allocationCount_, Get(allocationCount_) - 1);
}

void MemoryTracker::log(char const* format, ...)
{
    if (!tracking())
        return;
    std::va_list arguments;
    va_start(arguments, format);
    v_log_message(format, arguments);
    va_end(arguments);
}

void MemoryTracker::v_log_message(char const* format, std::va_list arguments)
{
    if (!fileIsStarted.exchange(true))
    {
        // Apart from the first line, and unseen: a line about the heap traffic of the first one may come
        // before it.
        Bookkeeping const scope(busy_);
        if (std::FILE* const file = std::fopen(logFileName.data(), "w"))
            std::fclose(file);
    }
    std::FILE* const file = std::fopen(logFileName.data(), "a");
    std::uint32_t const line = lineCount_.fetch_add(1, std::memory_order_relaxed) + 1;
    if (file == nullptr)
        return;
    std::fprintf(file, "%d, %lu, ", static_cast<int>(line), total());
    std::vfprintf(file, format, arguments);
    std::fclose(file);
}

void MemoryTracker::reset_threshold(unsigned long threshold)
{
    Set(threshold_, static_cast<std::uint32_t>(threshold));
}

void MemoryTracker::turn_on_memory_tracking()
{
    if (tracking() || !redirection.Install({OnAllocated, OnReleased}))
        return;
    flag_ = TrackingOn;
    log("Memory tracking ON\n");
}

void MemoryTracker::turn_off_memory_tracking()
{
    if (!tracking())
        return;
    log("Memory tracking OFF\n");
    flag_ = TrackingOff; // first, so that putting the slots back is not counted
    redirection.Remove();
}

MemoryTrackerGuard::MemoryTrackerGuard(bool enable) : tracker_(MemoryTracker::instance()), enable_(enable)
{
    if (enable_)
        tracker_.turn_on_memory_tracking();
}

MemoryTrackerGuard::~MemoryTrackerGuard()
{
    if (enable_)
        tracker_.turn_off_memory_tracking();
}

} // namespace Zan::Orv::Core::Service
