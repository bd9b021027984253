#include "orv/events/MessageCapper.h"

#include "orv/events/LogEnabler.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/LogRecorder.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

namespace {

std::string const limit = "\nPrint limit reached, no more messages like this will be displayed.";

// The capper is the process's: each test finds it fresh.
class MessageCapperTest : public testing::Test
{
protected:
    void SetUp() override
    {
        MessageCapper::instance()->reset();
        MessageCapper::instance()->setCurrentKeyword("");
    }

    // Sends a message and gives back what came out at the log.
    static std::vector<std::string> Send(std::string const& message, int times)
    {
        LogRecorder log;
        for (int i = 0; i < times; ++i)
            MessageCapper::instance()->logW(message);
        return log.messages;
    }

    // What comes out when `count` may still be sent, the last one among them.
    static std::vector<std::string> Last(std::size_t count, std::string const& message)
    {
        std::vector<std::string> messages(count, "2:" + message);
        messages.back() += limit;
        return messages;
    }
};

} // namespace

TEST_F(MessageCapperTest, TenWarningsOfEachKindComeThrough)
{
    EXPECT_EQ(Send("a", 9), std::vector<std::string>(9, "2:a"));
    EXPECT_EQ(Send("%s\n", 30), Last(10, "%s\n"));
    EXPECT_EQ(Send("a", 1), Last(1, "a"));
    EXPECT_TRUE(Send("a", 1000).empty());

    MessageCapper::instance()->reset();
    EXPECT_EQ(Send("a", 11), Last(10, "a"));
    EXPECT_EQ(Send("", 11), Last(10, "")) << "nothing is a message like any other";
}

TEST_F(MessageCapperTest, EachKeywordCountsForItself)
{
    MessageCapper* const capper = MessageCapper::instance();
    capper->setCurrentKeyword("AB");
    Send("C", 4);
    capper->setCurrentKeyword("D");
    EXPECT_EQ(Send("C", 20), Last(10, "C"));
    capper->setCurrentKeyword("AB");
    Send("C", 3);
    capper->setCurrentKeyword("A"); // with "BC" the same text as "AB" with "C"
    EXPECT_EQ(Send("BC", 20), Last(3, "BC"));
    capper->reset();
    EXPECT_EQ(Send("C", 1).size(), 1u);
    capper->setCurrentKeyword("");
    EXPECT_EQ(Send("AC", 20), Last(9, "AC")) << "reset had kept the keyword";
}

TEST_F(MessageCapperTest, AWarningCountsWhateverTheLogDoes)
{
    {
        LogEnabler const off(false);
        EXPECT_TRUE(Send("a", 8).empty());
    }
    {
        LogRecorder const failing([](LogMessageArgs const&) { throw std::runtime_error("full"); });
        EXPECT_TRUE(Throws<std::runtime_error>([] { MessageCapper::instance()->logW("a"); }, "full"));
    }
    EXPECT_EQ(Send("a", 5), Last(1, "a"));

    LogRecorder const forgetting([](LogMessageArgs const&) { MessageCapper::instance()->reset(); });
    EXPECT_EQ(Send("b", 30), std::vector<std::string>(30, "2:b")) << "reset while the message is under way";
}

TEST_F(MessageCapperTest, ACopyCountsAlone)
{
    Send("a", 9);
    {
        std::optional<MessageCapper> copy(*MessageCapper::instance());
        LogRecorder log;
        copy->logW("a");
        copy->logW("a");
        EXPECT_EQ(log.messages, Last(1, "a"));
        EXPECT_EQ(Send("a", 2), Last(1, "a"));
        copy->reset();
        *MessageCapper::instance() = *copy;
        EXPECT_EQ(Send("a", 20), Last(10, "a"));
    }
    EXPECT_EQ(Send("a", 20), Last(10, "a")) << "the end of a copy is that of the capper: there is a new one";
}

} // namespace Zan::Orv::Core::Service::Tests
