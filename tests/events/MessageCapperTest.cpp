#include "orv/events/MessageCapper.h"

#include "orv/events/LogEnabler.h"
#include "tests/support/LogRecorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

namespace {

// The capper is the process's: each test makes it fresh.
MessageCapper* Fresh()
{
    MessageCapper::instance()->reset();
    MessageCapper::instance()->setCurrentKeyword("");
    return MessageCapper::instance();
}

// Sends a message and gives back what came out at the log.
std::vector<std::string> Send(std::string const& message, int times, MessageCapper* capper = nullptr)
{
    LogRecorder log;
    for (int i = 0; i < times; ++i)
        (capper != nullptr ? capper : MessageCapper::instance())->logW(message);
    return log.messages;
}

// What comes out when `count` may still be sent, the last one among them.
std::vector<std::string> Last(std::size_t count, std::string const& message)
{
    std::vector<std::string> messages(count, "2:" + message);
    messages.back() += "\nPrint limit reached, no more messages like this will be displayed.";
    return messages;
}

} // namespace

TEST(MessageCapperTest, TenWarningsOfEachKindComeThrough)
{
    Fresh();
    EXPECT_EQ(Send("a", 9), std::vector<std::string>(9, "2:a"));
    EXPECT_EQ(Send("%s\n", 30), Last(10, "%s\n"));
    EXPECT_EQ(Send("a", 1000), Last(1, "a"));
}

TEST(MessageCapperTest, EachKeywordCountsForItself)
{
    MessageCapper* const capper = Fresh();
    capper->setCurrentKeyword("AB");
    Send("C", 7);
    capper->setCurrentKeyword("D");
    EXPECT_EQ(Send("C", 20), Last(10, "C"));
    capper->setCurrentKeyword("A"); // with "BC" the same text as "AB" with "C"
    EXPECT_EQ(Send("BC", 20), Last(3, "BC"));
}

TEST(MessageCapperTest, AWarningCountsWhateverTheLogDoes)
{
    Fresh();
    {
        LogEnabler const off(false);
        EXPECT_TRUE(Send("a", 8).empty());
    }
    EXPECT_EQ(Send("a", 5), Last(2, "a"));
}

TEST(MessageCapperTest, ACopyCountsAlone)
{
    Fresh();
    Send("a", 9);
    {
        MessageCapper copy(*MessageCapper::instance());
        EXPECT_EQ(Send("a", 2, &copy), Last(1, "a"));
        EXPECT_EQ(Send("a", 2), Last(1, "a"));
        copy.reset();
        *MessageCapper::instance() = copy;
        EXPECT_EQ(Send("a", 20), Last(10, "a"));
    }
    EXPECT_EQ(Send("a", 20), Last(10, "a")) << "the end of a copy is that of the capper: there is a new one";
}

} // namespace Zan::Orv::Core::Service::Tests
