#pragma once

#include <cstddef>

/// A module of its own that uses the heap, and is first called when a test says so.
extern "C" void* ClientAllocate(std::size_t size);
extern "C" void ClientRelease(void* block);
