#include "orv/foundation/DebugFlags.h"

#include "orv/foundation/internal/DebugWords.h"
#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

namespace Zan::Orv::Core::Service::Tests {

// In one test, since the environment is read once in a process.
TEST(DebugFlagsTest, BeginWithTheEnvironmentAndAreASetOfBytes)
{
    auto const texts = [] { return testing::PrintToString(DebugFlags::GetInstance()); };
    ScopedEnvironment const guard("ORV_DEBUG_FLAGS", "beta alpha\tGamma\nbeta");
    EXPECT_EQ(texts(), "Gamma alpha beta ");
    SetEnvVariable("ORV_DEBUG_FLAGS", "a_later_and_unread_flag");
    EXPECT_EQ(texts(), "Gamma alpha beta ");
    EXPECT_TRUE(DebugFlags::IsSet("alpha"));
    EXPECT_FALSE(DebugFlags::IsSet("Alpha"));

    std::istringstream stream("b a\n\v a");
    EXPECT_EQ(&(stream >> DebugFlags::GetInstance()), &stream);
    EXPECT_TRUE(stream.fail());
    EXPECT_EQ(texts(), "Gamma a alpha b beta ");

    DebugFlags::ResetAll();
    for (std::string const flag : {"a", "b", "B", "\xE9", "", "a", "two words"})
        DebugFlags::Set(flag);
    EXPECT_EQ(texts(), " B a b two words \xE9 ");
    DebugFlags::Reset("a");
    DebugFlags::Reset("absent");
    EXPECT_EQ(texts(), " B b two words \xE9 ");
}

TEST(DebugWordsTest, AValueHasAtLeastSixteenCharacters)
{
    std::pair<char const*, std::set<std::string>> const table[] = {
        {"first second it", {}},
        {"first second its", {"first", "its", "second"}},
        {"                ", {}},
        {"NAME=value;a,\"b\"", {"NAME=value;a,\"b\""}}};
    for (auto const& [value, words] : table)
        EXPECT_EQ(Internal::DebugWordsOfEnvironment(value), words) << '"' << value << '"';
}

} // namespace Zan::Orv::Core::Service::Tests
