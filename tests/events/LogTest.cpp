#include "orv/events/Log.h"

#include "orv/events/CErrLogService.h"
#include "orv/events/LogEnabler.h"
#include "orv/events/LogTracker.h"
#include "tests/support/LogRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <iostream>
#include <limits>
#include <sstream>

namespace Zan::Orv::Core::Service::Tests {

using ::testing::ElementsAre;

namespace {

// The C library's own formatting is the measure.
template<class... Arguments>
void ExpectAsPrintf(char const* format, Arguments... arguments)
{
    char expected[1000];
    std::snprintf(expected, sizeof expected, format, arguments...);
    LogRecorder log;
    Log::LogIF(format, arguments...);
    EXPECT_THAT(log.messages, ElementsAre(std::string("1:") + expected)) << format;
}

std::string Texts(LogTracker const& tracker)
{
    std::string texts;
    for (LogMessageArgs const& message : tracker.GetLogs())
        texts += message.GetLogMessage();
    return texts;
}

} // namespace

TEST(LogTest, FormatsAsPrintfDoes)
{
    long long const least = std::numeric_limits<long long>::min();
    ExpectAsPrintf("%i|%u|%x|%c|%%", std::numeric_limits<int>::min(), 4294967295u, 0xABCDEFu, 'c');
    ExpectAsPrintf("%ld %lu %lld %llu %llx %zu", -1L, ~0ul, least, ~0ull, ~0ull, sizeof least);
    ExpectAsPrintf("%5d|%-5d|%05d|%+d|%#x|%.3d|%*d", 1, 2, 3, 4, 5, 6, 7, 8);
    ExpectAsPrintf("%10s|%.2s|%-4s|%hhd|%hu|%p|%X", "right", "cut", "l", 300, 70000, nullptr, 0xABu);
    ExpectAsPrintf("%10.3f|%-8.1e|%G|%a", 1.5, 2.5, 3.5e-7, 1.0);
    for (double const value : {-0.0, 2.0 / 3.0, HUGE_VAL, std::nan(""), 5e-324, 1e308})
        ExpectAsPrintf("%g|%.17g|%.0e|%e|%f", value, value, value, value, value);
}

TEST(LogTest, DeliversTextAndSeverity)
{
    std::string const longest(9999, 'x');
    Log::LogE("nobody listens yet");
    LogRecorder log;
    Log::LogE("bad: 100 %d");
    Log::LogW("doubtful");
    Log::LogEF("%d of %s", 3, "four");
    Log::LogWF("%.2f%%", 12.5);
    Log::LogIF("%s", longest.c_str());
    Log::SendLogMessage("own", static_cast<MessageSeverity>(4));
    EXPECT_THAT(log.messages, ElementsAre("3:bad: 100 %d", "2:doubtful", "3:3 of four", "2:12.50%",
                                          "1:" + longest, "4:own"));
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
        }
        EXPECT_FALSE(Log::isEnabled());
    }
    Log::LogE("three");
    EXPECT_THAT(log.messages, ElementsAre("3:two", "3:three"));
}

TEST(LogTest, HandlersMayLogAndSwitchOff)
{
    LogRecorder busy([](LogMessageArgs const& args) {
        if (args.GetSeverity() != MessageSeverity::Error)
            return;
        Log::LogIF("%s", "written over the text of the message in flight");
        Log::enable(false);
    });
    LogRecorder last;
    Log::LogEF("%s message, longer than any small string", "outer");
    Log::LogE("dropped");
    Log::enable(true);
    EXPECT_THAT(last.messages, ElementsAre("1:written over the text of the message in flight",
                                           "3:outer message, longer than any small string"));
}

TEST(CErrLogServiceTest, WritesEachMessageOnce)
{
    std::ostringstream captured;
    std::streambuf* const previous = std::cerr.rdbuf(captured.rdbuf());
    Log::LogE("before");
    CErrLogService::Start();
    CErrLogService::Start();
    Log::LogE("no file");
    Log::LogW("old");
    Log::LogI("");
    Log::SendLogMessage("plain", MessageSeverity::Plain);
    Log::SendLogMessage("own", static_cast<MessageSeverity>(4));
    CErrLogService::Stop();
    Log::LogE("behind");
    std::cerr.rdbuf(previous);
    EXPECT_EQ(captured.str(), "Error: no file\nWarning: old\nInfo: \nplain\nown");
}

TEST(LogTrackerTest, KeepsTheLastMessages)
{
    LogTracker const none(0);
    LogTracker three(3);
    LogTracker const all(-1);
    LogTracker const usual;
    for (int i = 0; i < 52; ++i)
        Log::LogW(i < 49 ? "x" : "y");
    EXPECT_EQ(Texts(none), "");
    EXPECT_EQ(Texts(three), "yyy");
    EXPECT_EQ(Texts(all), std::string(49, 'x') + "yyy");
    EXPECT_EQ(Texts(usual), std::string(47, 'x') + "yyy");
    three.Clear();
    Log::LogE("a");
    EXPECT_EQ(Texts(three), "a");
    EXPECT_EQ(three.GetLogs().back().GetSeverity(), MessageSeverity::Error);
}

TEST(LogTrackerTest, ACopyIsASnapshot)
{
    LogTracker tracker(2);
    LogTracker assigned(5);
    Log::LogI("a");
    LogTracker snapshot(tracker);
    Log::LogI("b");
    EXPECT_EQ(Texts(snapshot), "a");
    assigned = tracker;
    snapshot = assigned;
    Log::LogI("c");
    EXPECT_EQ(Texts(tracker), "bc") << "the copy took no subscription with it";
    EXPECT_EQ(Texts(assigned), "bc") << "the capacity is assigned, the subscription stays";
    EXPECT_EQ(Texts(snapshot), "ab") << "assignment does not subscribe";
}

} // namespace Zan::Orv::Core::Service::Tests
