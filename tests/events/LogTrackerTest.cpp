#include "orv/events/LogTracker.h"

#include <gtest/gtest.h>

#include <string>

namespace Zan::Orv::Core::Service::Tests {

namespace {

std::string Texts(LogTracker const& tracker)
{
    std::string texts;
    for (LogMessageArgs const& message : tracker.GetLogs())
        texts += message.GetLogMessage();
    return texts;
}

// Keeps every second message.
struct Thinned : LogTracker
{
    explicit Thinned(int& offers) : offered(offers) {}
    void OnLogEvent(LogMessageArgs* args) override
    {
        if (++offered % 2 == 0)
            LogTracker::OnLogEvent(args);
    }
    int& offered;
};

} // namespace

TEST(LogTrackerTest, KeepsTheLastMessages)
{
    LogTracker none(0);
    LogTracker newest(1);
    LogTracker three(3);
    LogTracker all(-1);
    LogTracker usual;
    std::string sent;
    for (char c = '!'; c <= '~'; ++c)
    {
        Log::LogW(std::string(1, c).c_str());
        sent += c;
    }
    EXPECT_EQ(Texts(none), "");
    EXPECT_EQ(Texts(newest), "~");
    EXPECT_EQ(Texts(three), "|}~");
    EXPECT_EQ(Texts(all), sent);
    EXPECT_EQ(Texts(usual), sent.substr(sent.size() - 50));

    three.Clear();
    EXPECT_EQ(Texts(three), "");
    for (char const* text : {"a", "b", "c", "d"})
        Log::LogE(text);
    EXPECT_EQ(Texts(three), "bcd");
    EXPECT_EQ(three.GetLogs().back().GetSeverity(), MessageSeverity::Error);
}

TEST(LogTrackerTest, ACopyIsASnapshot)
{
    LogTracker tracker(2);
    LogTracker assigned(5);
    Log::LogI("a");
    {
        LogTracker copy(tracker);
        Log::LogI("b");
        EXPECT_EQ(Texts(copy), "a");
    }
    LogTracker snapshot(tracker);
    assigned = snapshot;
    snapshot = assigned;
    Log::LogI("c");
    EXPECT_EQ(Texts(tracker), "bc") << "the copy took no subscription with it";
    EXPECT_EQ(Texts(assigned), "bc") << "the capacity is assigned, the subscription stays";
    EXPECT_EQ(Texts(snapshot), "ab") << "assignment does not subscribe";
}

TEST(LogTrackerTest, ADerivedClassChoosesWhatIsKeptWhileItLives)
{
    int offered = 0;
    {
        Thinned const tracker(offered);
        Log::LogW("a");
        Log::LogE("b");
        EXPECT_EQ(Texts(tracker), "b");
    }
    Log::LogE("late");
    EXPECT_EQ(offered, 2);
}

} // namespace Zan::Orv::Core::Service::Tests
