#include "orv/foundation/AssertFailure.h"

#include "orv/events/LogEnabler.h"
#include "orv/foundation/Exception.h"
#include "tests/support/LogRecorder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

TEST(AssertFailureTest, LogsAndThrowsTheSameText)
{
    struct
    {
        char const* message;
        char const* location;
        char const* text;
    } const cases[] = {
        {nullptr, nullptr, "ASSERTION FAILURE"}, {"x", nullptr, "ASSERTION FAILURE: x"},
        {nullptr, "f", "ASSERTION FAILURE (f)"}, {"x", "f", "ASSERTION FAILURE: x (f)"},
        {"", "", "ASSERTION FAILURE:  ()"},      {"%s %n", "%d", "ASSERTION FAILURE: %s %n (%d)"}};
    for (auto const& c : cases)
    {
        for (bool const enabled : {true, false})
        {
            LogRecorder log;
            LogEnabler const switched(enabled);
            try
            {
                AssertFailure(c.message, c.location);
            }
            catch (std::exception const& e)
            {
                EXPECT_EQ(typeid(e), typeid(std::runtime_error))
                    << "and none of the library's own exceptions";
                EXPECT_STREQ(e.what(), c.text);
            }
            EXPECT_EQ(log.messages, std::vector<std::string>(enabled ? 1 : 0, std::string("3:") + c.text));
        }
    }
}

} // namespace Zan::Orv::Core::Service::Tests
