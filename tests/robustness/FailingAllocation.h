#pragma once

#include <cstddef>

namespace Zan::Orv::Core::Service::Tests {

/// How many blocks of the program's heap are in use.
long long LiveBlocks();

enum class Shortage
{
    Once,   ///< one allocation fails
    Lasting ///< and all that follow
};

/// While it lives, the `nth` allocation of the calling thread fails, counted from 1. One at a time.
class FailingAllocation
{
public:
    FailingAllocation(std::size_t nth, Shortage shortage);
    FailingAllocation(FailingAllocation const&) = delete;
    FailingAllocation& operator=(FailingAllocation const&) = delete;
    ~FailingAllocation();

    /// Whether it came to that.
    bool HasFailed() const;
};

} // namespace Zan::Orv::Core::Service::Tests
