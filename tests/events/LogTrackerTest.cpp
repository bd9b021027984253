#include "orv/events/LogTracker.h"

#include <gtest/gtest.h>

#include <optional>
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

// Keeps no errors.
struct Calm : LogTracker
{
    void OnLogEvent(LogMessageArgs* args) override
    {
        if (args->GetSeverity() != MessageSeverity::Error)
            LogTracker::OnLogEvent(args);
    }
};

} // namespace

TEST(LogTrackerTest, KeepsTheLastMessages)
{
    LogTracker none(0);
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
    EXPECT_EQ(Texts(three), "|}~");
    EXPECT_EQ(Texts(all), sent);
    EXPECT_EQ(Texts(usual), sent.substr(sent.size() - 50));

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
    std::optional<LogTracker> snapshot;
    snapshot.emplace(9);
    snapshot.emplace(tracker); // at the place of another one, which took its subscription with it
    {
        LogTracker const dying(tracker);
        Log::LogI("b");
    }
    EXPECT_EQ(Texts(*snapshot), "a");
    assigned = tracker;
    *snapshot = assigned;
    Log::LogI("c");
    EXPECT_EQ(Texts(tracker), "bc") << "the copy took no subscription with it";
    EXPECT_EQ(Texts(assigned), "bc") << "the capacity is assigned, the subscription stays";
    EXPECT_EQ(Texts(*snapshot), "ab") << "assignment does not subscribe";
}

TEST(LogTrackerTest, ADerivedClassChoosesWhatIsKept)
{
    Calm const calm;
    Log::LogE("a");
    Log::LogW("b");
    EXPECT_EQ(Texts(calm), "b");
}

} // namespace Zan::Orv::Core::Service::Tests
