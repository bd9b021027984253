#pragma once

namespace OrvBenchmark {

/// How often this thread has asked the heap for memory through operator new, in the whole program, the
/// library included.
long long AllocationCount();

} // namespace OrvBenchmark
