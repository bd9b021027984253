#include "orv/foundation/AssertFailure.h"

#include "orv/events/LogEnabler.h"
#include "orv/foundation/Exception.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/LogRecorder.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

TEST(AssertFailureTest, LogsAndThrowsTheSameText)
{
    LogRecorder log;
    auto const fails = [](char const* message, char const* location, std::string const& text) {
        return Throws<std::runtime_error>([=] { AssertFailure(message, location); }, text);
    };
    EXPECT_TRUE(fails(nullptr, nullptr, "ASSERTION FAILURE"));
    EXPECT_TRUE(fails("x", nullptr, "ASSERTION FAILURE: x"));
    EXPECT_TRUE(fails(nullptr, "f", "ASSERTION FAILURE (f)"));
    LogEnabler const off(false);
    EXPECT_TRUE(fails("%s %n", "%d", "ASSERTION FAILURE: %s %n (%d)"));
    EXPECT_EQ(log.messages, (std::vector<std::string>{"3:ASSERTION FAILURE", "3:ASSERTION FAILURE: x",
                                                      "3:ASSERTION FAILURE (f)"}));
    EXPECT_FALSE(Throws<Exception>([] { AssertFailure(nullptr, nullptr); }, "ASSERTION FAILURE"))
        << "is none of the library's own exceptions";
}

TEST(AssertFailureTest, MacroChecksOnceAndTellsThePlace)
{
    int calls = 0;
    ORV_ASSERT(++calls == 1);
    ORV_ASSERT(std::make_unique<int>());
    EXPECT_EQ(calls, 1);

    std::string const place = " (" __FILE__ ":" + std::to_string(__LINE__ + 1) + ")";
    auto const broken = [&] { ORV_ASSERT(calls % 2 == 0); };
    EXPECT_TRUE(Throws<std::runtime_error>(broken, "ASSERTION FAILURE: calls % 2 == 0" + place));
}

TEST(ExceptionTest, EveryKindIsCaughtAsOneWithItsText)
{
    EXPECT_TRUE(Throws<Exception>([] { throw ServiceException(); }, "ServiceException"));
}

} // namespace Zan::Orv::Core::Service::Tests
