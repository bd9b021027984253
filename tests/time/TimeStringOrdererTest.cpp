#include "orv/time/TimeStringOrderer.h"
#include "orv/foundation/Exception.h"
#include "orv/time/ITimeStringResolver.h"
#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>
#include <string>

namespace Zan::Orv::Core::Service::Tests {
namespace {

// A set of texts of one letter each.
std::set<TimeString> Texts(std::string const& letters)
{
    std::set<TimeString> texts;
    for (char const letter : letters)
        texts.insert(TimeString(std::string(1, letter)));
    return texts;
}

Time At(int millisecond)
{
    return Time(2000, 1, 1, 0, 0, 0, millisecond);
}

struct Moments : ITimeStringResolver
{
    Time getTime(TimeString const& time) override
    {
        if (milliseconds.count(time.GetString()) == 0)
            throw TimeException("no " + time.GetString());
        return At(milliseconds[time.GetString()]);
    }
    std::map<std::string, int> milliseconds{{"a", 10}, {"b", 20}, {"B", 20}, {"c", 30}};
};

TimeString const a(std::string("a"));
TimeString const b(std::string("b"));
TimeString const unknown(std::string("q"));

TEST(TimeStringOrderer, AnswersByMomentAndByText)
{
    Moments moments;
    TimeStringOrderer orderer(moments);
    EXPECT_EQ(orderer.current(Time::MaxTime()), Texts(""));
    orderer.insert(b);
    orderer.insert(Texts("cabB"));
    struct
    {
        Time moment;
        char const* found;
        char const* current;
    } const table[] = {{Time::MinTime(), "", ""}, {At(9), "", ""},      {At(10), "a", "a"},
                       {At(19), "", "a"},         {At(20), "bB", "bB"}, {At(29), "", "bB"},
                       {At(30), "c", "c"},        {At(31), "", "c"},    {Time::MaxTime(), "", "c"}};
    for (auto const& [moment, found, current] : table)
    {
        EXPECT_EQ(orderer.find(moment), Texts(found)) << moment;
        EXPECT_EQ(orderer.current(moment), Texts(current)) << moment;
    }
    EXPECT_EQ(orderer.find(b), Texts("bB"));
}

TEST(TimeStringOrderer, TakesAMomentOnce)
{
    Moments moments;
    TimeStringOrderer orderer(moments, Texts("ab"));
    TimeStringOrderer copy(orderer);
    moments.milliseconds["a"] = 20;
    EXPECT_EQ(orderer.find(At(10)), Texts("a"));
    EXPECT_EQ(orderer.find(a), Texts("b")); // where it would be now
    orderer.insert(a);
    EXPECT_EQ(orderer.find(At(20)), Texts("ab"));
    EXPECT_EQ(orderer.find(At(10)), Texts("a"));
    orderer.clear();
    EXPECT_EQ(orderer.current(Time::MaxTime()), Texts(""));
    orderer.insert(a);
    EXPECT_EQ(orderer.current(b), Texts("a"));
    EXPECT_EQ(copy.find(b), Texts("b")); // by the same resolver, among its own
}

TEST(TimeStringOrderer, PassesOnWhatTheResolverThrows)
{
    Moments moments;
    TimeStringOrderer orderer(moments);
    std::set<TimeString> texts = Texts("abqz");
    for (auto const& action : std::initializer_list<std::function<void()>>{
             [&] { TimeStringOrderer(moments, texts); }, [&] { orderer.insert(unknown); },
             [&] { orderer.find(unknown); }, [&] { orderer.current(unknown); }})
        EXPECT_TRUE(Throws<TimeException>(action, "no q"));
    EXPECT_EQ(orderer.current(Time::MaxTime()), Texts(""));
    EXPECT_TRUE(Throws<TimeException>([&] { orderer.insert(texts); }, "no q"));
    EXPECT_EQ(orderer.find(a), Texts("a")); // those before it are in
    EXPECT_EQ(orderer.current(Time::MaxTime()), Texts("b"));
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
