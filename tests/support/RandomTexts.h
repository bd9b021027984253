#pragma once

#include <gtest/gtest.h>

/// A hand-written matcher is held against its expression on a million random texts: four cases, which CTest runs side
/// by side, with a seed and a quarter each. A sanitizer makes a text ten times as dear and adds nothing to the answer,
/// so it is given a tenth of them.

namespace Zan::Orv::Core::Service::Tests {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr int randomTexts = 25'000;
#else
inline constexpr int randomTexts = 250'000;
#endif

/// The parameter is the seed.
class RandomTexts : public testing::TestWithParam<unsigned>
{
};

inline auto Seeds()
{
    return testing::Range(40U, 44U);
}

} // namespace Zan::Orv::Core::Service::Tests
