#include "orv/foundation/DebugFlags.h"

#include "orv/foundation/internal/DebugWords.h"
#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

namespace Zan::Orv::Core::Service::Tests {

namespace {

std::string Texts()
{
    return testing::PrintToString(DebugFlags::GetInstance());
}

// The environment is read once in a process. Whichever of these tests comes first finds it prepared, and each
// leaves the flags as they were then.
class DebugFlagsTest : public testing::Test
{
protected:
    static constexpr char const* initial = "Gamma alpha beta ";

    static void SetUpTestSuite()
    {
        ScopedEnvironment const guard("ORV_DEBUG_FLAGS", "beta alpha\tGamma\nbeta");
        DebugFlags::GetInstance();
    }

    void SetUp() override { ASSERT_EQ(Texts(), initial); }

    void TearDown() override
    {
        DebugFlags::ResetAll();
        std::istringstream(initial) >> DebugFlags::GetInstance();
    }
};

} // namespace

TEST_F(DebugFlagsTest, TheEnvironmentIsReadOnce)
{
    ScopedEnvironment const guard("ORV_DEBUG_FLAGS", "a_later_and_unread_flag");
    EXPECT_EQ(Texts(), initial);
    EXPECT_TRUE(DebugFlags::IsSet("alpha"));
    DebugFlags::ResetAll();
    EXPECT_FALSE(DebugFlags::IsSet("alpha"));
    EXPECT_EQ(Texts(), "");
}

TEST_F(DebugFlagsTest, AFlagIsASetOfBytes)
{
    DebugFlags::ResetAll();
    for (std::string const flag : {"a", "b", "B", "\xE9", "", "a", "two words"})
        DebugFlags::Set(flag);
    EXPECT_EQ(Texts(), " B a b two words \xE9 ");
    EXPECT_TRUE(DebugFlags::IsSet("a"));
    EXPECT_FALSE(DebugFlags::IsSet("A"));
    DebugFlags::Reset("a");
    DebugFlags::Reset("absent");
    EXPECT_EQ(Texts(), " B b two words \xE9 ");
}

TEST_F(DebugFlagsTest, AStreamAddsItsWords)
{
    std::istringstream stream("b a\n\v a");
    EXPECT_EQ(&(stream >> DebugFlags::GetInstance()), &stream);
    EXPECT_TRUE(stream.fail());
    EXPECT_EQ(Texts(), "Gamma a alpha b beta ");
}

TEST(DebugWordsTest, AValueHasAtLeastSixteenCharacters)
{
    std::pair<char const*, std::set<std::string>> const table[] = {
        {"", {}},
        {"first second it", {}},
        {"first second its", {"first", "its", "second"}},
        {"short          ", {}},
        {"short           ", {"short"}},
        {"               x", {"x"}},
        {"                ", {}},
        {"NAME=value;a,\"b\"", {"NAME=value;a,\"b\""}}};
    for (auto const& [value, words] : table)
        EXPECT_EQ(Internal::DebugWordsOfEnvironment(value), words) << '"' << value << '"';
}

} // namespace Zan::Orv::Core::Service::Tests
