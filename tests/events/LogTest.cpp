#include "orv/events/Log.h"

#include "orv/events/LogEnabler.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/LogRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

namespace Zan::Orv::Core::Service::Tests {

using ::testing::ElementsAre;

TEST(LogTest, DeliversTextAndSeverity)
{
    std::string const longest(9999, 'x');
    Log::LogE("nobody listens yet");
    LogRecorder log;
    Log::LogE("bad: 100 %d");
    Log::LogW("doubtful");
    Log::LogI("");
    Log::LogEF("%d of %s", 3, "four");
    Log::LogWF("%.2f%%", 12.5);
    Log::LogIF("%s", longest.c_str());
    Log::LogIF("a line longer than any small string: %lld", 123456789012345LL);
    Log::SendLogMessage("plain", MessageSeverity::Plain);
    Log::SendLogMessage("own", static_cast<MessageSeverity>(4));
    EXPECT_THAT(log.messages,
                ElementsAre("3:bad: 100 %d", "2:doubtful", "1:", "3:3 of four", "2:12.50%", "1:" + longest,
                            "1:a line longer than any small string: 123456789012345", "0:plain", "4:own"));
}

#if GTEST_HAS_DEATH_TEST
TEST(LogDeathTest, ALineTooLongEndsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    std::string const text(10000, 'x');
    EXPECT_DEATH(Log::LogEF("%s", text.c_str()), "");
    LogEnabler const quiet(false);
    EXPECT_DEATH(Log::LogWF("%s", text.c_str()), "") << "a line is formatted although the log is off";
}
#endif

TEST(LogTest, EnablersNestAndRestoreWhatTheyFound)
{
    LogRecorder log;
    {
        LogEnabler const quiet(false);
        Log::LogE("one");
        {
            LogEnabler const loud(true);
            Log::LogE("two");
            Log::enable(false); // meddling in the scope does not outlive it
            LogEnabler copy(loud);
            Log::LogEF("%s", "three");
            Log::enable(true);
        }
        EXPECT_FALSE(Log::isEnabled());
    }
    Log::LogE("four");
    EXPECT_THAT(log.messages, ElementsAre("3:two", "3:four"));
}

TEST(LogTest, EveryThreadHasItsOwnLog)
{
    LogRecorder mine;
    {
        LogEnabler const quiet(false);
        std::thread([] {
            LogRecorder theirs;
            Log::LogW("there");
            EXPECT_THAT(theirs.messages, ElementsAre("2:there")) << "on, whatever other threads have done";
            Log::enable(false);
        }).join();
    }
    Log::LogW("here");
    EXPECT_THAT(mine.messages, ElementsAre("2:here"));
}

TEST(LogTest, HandlersMayThrow)
{
    LogRecorder before;
    LogRecorder thrower([](LogMessageArgs const& args) {
        if (args.GetSeverity() == MessageSeverity::Error)
            throw std::logic_error(args.GetLogMessage());
    });
    LogRecorder after;
    EXPECT_TRUE(Throws<std::logic_error>([] { Log::LogEF("%s", "x"); }, "x"));
    Log::LogI("y");
    EXPECT_THAT(before.messages, ElementsAre("3:x", "1:y"));
    EXPECT_THAT(after.messages, ElementsAre("1:y"));
}

TEST(LogTest, HandlersMayLogSubscribeUnsubscribeAndSwitchOff)
{
    std::unique_ptr<LogRecorder> added;
    std::unique_ptr<LogRecorder> removed;
    LogRecorder busy([&](LogMessageArgs const& args) {
        if (args.GetSeverity() != MessageSeverity::Error)
            return;
        removed.reset();
        Log::LogIF("%s", "written over the text of the message in flight");
        added = std::make_unique<LogRecorder>();
        Log::enable(false);
    });
    removed = std::make_unique<LogRecorder>([](LogMessageArgs const&) { ADD_FAILURE() << "was removed"; });
    LogRecorder last;

    Log::LogEF("%s message, longer than any small string", "outer");
    Log::LogE("dropped");
    Log::enable(true);
    EXPECT_THAT(last.messages, ElementsAre("1:written over the text of the message in flight",
                                           "3:outer message, longer than any small string"));
    ASSERT_NE(added, nullptr);
    EXPECT_THAT(added->messages, ElementsAre("3:outer message, longer than any small string"));
}

} // namespace Zan::Orv::Core::Service::Tests
