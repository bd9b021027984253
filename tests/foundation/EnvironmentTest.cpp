#include "orv/foundation/Environment.h"

#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace Zan::Orv::Core::Service::Tests {

using namespace std::string_literals;

TEST(EnvironmentTest, WhatIsSetIsSeenByTheWholeProcess)
{
    ScopedEnvironment const guard("ORV_TEST_VARIABLE", "");
    for (std::string const& value : {"two words"s, "x=y="s, std::string(30000, 'x'), ""s})
    {
        SetEnvVariable("ORV_TEST_VARIABLE", value);
        char const* const seen = std::getenv("ORV_TEST_VARIABLE");
        EXPECT_EQ(seen != nullptr ? seen : "not set", value.empty() ? "not set" : value);
        EXPECT_EQ(GetEnvVariable("ORV_TEST_VARIABLE"), value);
    }
}

TEST(EnvironmentTest, TheFirstEqualsSignDividesAndAZeroByteEnds)
{
    ScopedEnvironment const guard("ORV_TEST_VARIABLE", "");
    SetEnvVariable("ORV_TEST_VARIABLE=a", "b");
    EXPECT_EQ(GetEnvVariable("ORV_TEST_VARIABLE"), "a=b");
    SetEnvVariable("ORV_TEST_VARIABLE", "c\0d"s);
    EXPECT_EQ(GetEnvVariable("ORV_TEST_VARIABLE\0_"s), "c");
}

TEST(EnvironmentTest, WhatTheHostRefusesChangesNothing)
{
    ScopedEnvironment const guard("ORV_TEST_VARIABLE", "kept");
    SetEnvVariable("", "x");
    SetEnvVariable("ORV_TEST_VARIABLE\0"s, "x"); // ends before any '='
    EXPECT_EQ(GetEnvVariable("ORV_TEST_VARIABLE"), "kept");
    EXPECT_EQ(GetEnvVariable(""), "");
}

} // namespace Zan::Orv::Core::Service::Tests
