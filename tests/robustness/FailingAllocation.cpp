#include "FailingAllocation.h"

#include <atomic>
#include <cstdlib>
#include <new>

// The program's own operator new replaces that of every library in the process. All forms are here, though most would
// call the first by themselves: those of a sanitizer do not.

namespace Zan::Orv::Core::Service::Tests {

namespace {

std::atomic<long long> liveBlocks{0};

thread_local std::size_t untilFailure = 0; // 0 when none is wanted
thread_local bool lasts = false;
thread_local bool failed = false;

bool MustFail()
{
    if (untilFailure == 0 || --untilFailure != 0)
        return false;
    untilFailure = lasts ? 1 : 0;
    failed = true;
    return true;
}

void* Allocate(std::size_t size)
{
    void* const memory = MustFail() ? nullptr : std::malloc(size != 0 ? size : 1);
    liveBlocks += memory != nullptr ? 1 : 0;
    return memory;
}

void Free(void* memory) noexcept
{
    if (memory != nullptr)
        --liveBlocks;
    std::free(memory);
}

} // namespace

long long LiveBlocks()
{
    return liveBlocks;
}

FailingAllocation::FailingAllocation(std::size_t nth, Shortage shortage)
{
    failed = false;
    lasts = shortage == Shortage::Lasting;
    untilFailure = nth;
}

FailingAllocation::~FailingAllocation()
{
    untilFailure = 0;
}

bool FailingAllocation::HasFailed() const
{
    return failed;
}

} // namespace Zan::Orv::Core::Service::Tests

void* operator new(std::size_t size)
{
    void* const memory = operator new(size, std::nothrow);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    return Zan::Orv::Core::Service::Tests::Allocate(size);
}

void* operator new[](std::size_t size, std::nothrow_t const& nothrow) noexcept
{
    return operator new(size, nothrow);
}

void operator delete(void* memory) noexcept
{
    Zan::Orv::Core::Service::Tests::Free(memory);
}

void operator delete[](void* memory) noexcept
{
    operator delete(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    operator delete(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    operator delete(memory);
}
