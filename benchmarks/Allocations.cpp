#include "Allocations.h"

#include <cstddef>
#include <cstdlib>
#include <new>

// The program's own operator new replaces that of every library in the process. Forms that are not here call
// these.

namespace {

thread_local long long allocations = 0;

} // namespace

long long OrvBenchmark::AllocationCount()
{
    return allocations;
}

void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const memory = std::malloc(size != 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
