#include "tests/instrumentation/HeapClient.h"

#include <cstdlib>

void* ClientAllocate(std::size_t size)
{
    return std::malloc(size);
}

void ClientRelease(void* block)
{
    std::free(block);
}
