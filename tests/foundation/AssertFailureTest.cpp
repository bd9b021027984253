#include "orv/foundation/AssertFailure.h"

#include "orv/events/LogEnabler.h"
#include "orv/foundation/Exception.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/LogRecorder.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

TEST(AssertFailureTest, LogsAndThrowsTheSameText)
{
    std::tuple<char const*, char const*, std::string> const cases[] = {
        {nullptr, nullptr, "ASSERTION FAILURE"}, {"x", nullptr, "ASSERTION FAILURE: x"},
        {nullptr, "f", "ASSERTION FAILURE (f)"}, {"x", "f", "ASSERTION FAILURE: x (f)"},
        {"", "", "ASSERTION FAILURE:  ()"},      {"%s %n", "%d", "ASSERTION FAILURE: %s %n (%d)"}};
    for (auto const& [message, location, text] : cases)
    {
        for (bool const enabled : {true, false})
        {
            LogRecorder log;
            LogEnabler const switched(enabled);
            EXPECT_TRUE(
                Throws<std::runtime_error>([m = message, l = location] { AssertFailure(m, l); }, text));
            EXPECT_EQ(log.messages, std::vector<std::string>(enabled ? 1 : 0, "3:" + text));
        }
    }
    EXPECT_FALSE(Throws<Exception>([] { AssertFailure(nullptr, nullptr); }, "ASSERTION FAILURE"))
        << "is none of the library's own exceptions";
}

TEST(AssertFailureTest, MacroChecksOnceAndTellsThePlace)
{
    int calls = 0;
    if (calls == 0)
        ORV_ASSERT(++calls == 1 && "a statement like any other");
    else
        FAIL();
    ORV_ASSERT(std::make_unique<int>());
    EXPECT_EQ(calls, 1);

    std::string const place = " (" __FILE__ ":" + std::to_string(__LINE__ + 1) + ")";
    auto const broken = [&] { ORV_ASSERT(calls % 2 == 0); };
    EXPECT_TRUE(Throws<std::runtime_error>(broken, "ASSERTION FAILURE: calls % 2 == 0" + place));
}

TEST(ExceptionTest, EveryKindIsCaughtAsOneWithItsText)
{
    EXPECT_TRUE(Throws<Exception>([] { throw ServiceException(); }, "ServiceException"));
    EXPECT_TRUE(Throws<Exception>([] { throw DirectoryException("a"); }, "a"));
}

} // namespace Zan::Orv::Core::Service::Tests
