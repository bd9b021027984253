#include "orv/foundation/SystemInfo.h"

#include "orv/foundation/LibraryProperties.h"
#include "orv/foundation/internal/OperatingSystemText.h"

#include <gtest/gtest.h>

#include <limits>
#include <regex>
#include <string>

namespace Zan::Orv::Core::Service::Tests {

TEST(SystemInfoTest, FactsAreFoundOnce)
{
    EXPECT_EQ(&GetOperatingSystem(), &GetOperatingSystem());
    EXPECT_NE(GetHostname(), "");
    EXPECT_EQ((GetHostname() + GetUsername()).find('\0'), std::string::npos);

    // Every host that the tests run on has a version, which a fact that was not found would lack.
    std::string const text = GetOperatingSystem();
    EXPECT_TRUE(std::regex_match(text, std::regex(R"([A-Z].*\S \(Build [1-9]\d*\.\d+\.\d+\))"))) << text;
}

TEST(OperatingSystemTextTest, IsComposedFromTheVersion)
{
    constexpr auto most = std::numeric_limits<std::uint32_t>::max();
    std::pair<Platform::OperatingSystem, char const*> const table[] = {
        {{"Windows", 4, 0, 950, 1, ""}, "Windows 95 (Build 4.0.950)"},
        {{"Windows", 4, 0, 1381, 2, "Service Pack 6"}, "Windows NT 4.0 Service Pack 6 (Build 4.0.1381)"},
        {{"Windows", 4, 0, 1381, 0, ""}, "Windows (Build 4.0.1381)"},
        {{"Windows", 4, 10, 0x040A08AE, 1, " A "}, "Windows 98  A  (Build 4.10.2222)"},
        {{"Windows", 4, 90, 0x045A0BB8, 1, ""}, "Windows Me (Build 4.90.3000)"},
        {{"Windows", 5, 0, 2195, 2, ""}, "Windows 2000 (Build 5.0.2195)"},
        {{"Windows", 5, 1, 2600, 2, ""}, "Windows XP (Build 5.1.2600)"},
        {{"Windows", 5, 2, 3790, 7, ""}, "Windows Server 2003 (Build 5.2.3790)"},
        {{"Windows", 6, 0, 6002, 2, ""}, "Windows Vista (Build 6.0.6002)"},
        {{"Windows", most, most, most, most, ""}, "Windows (Build 4294967295.4294967295.4294967295)"},
        // The numbers of other systems name no release of Windows.
        {{"Linux", 6, 0, 12, 0, ""}, "Linux (Build 6.0.12)"}};
    for (auto const& [system, text] : table)
        EXPECT_EQ(Internal::OperatingSystemText(system), text);
}

TEST(LibraryPropertiesTest, TheTableComesFromTheBuild)
{
    auto const property = [](int index) {
        char const* key = nullptr;
        char const* value = nullptr;
        getLibProperty(index, key, value);
        return std::string(key) + '=' + value + '|';
    };
    std::string table;
    for (int const index : {-1, 0, 1, 2, 3, 4, 6, 7})
        table += property(index);
    EXPECT_EQ(table, "=|CompanyName=Zanwick|FileVersion=5.2017.0.0|"
                     "FileDescription=Zanwick Simulation Support Library|ProductVersion=Main/0|"
                     "InternalName=Zan.Orv.Core.Service|OriginalFilename=Zan.Orv.Core.Service|=|");
    EXPECT_EQ(getNumLibProperties(), 7);
    EXPECT_EQ(property(5).rfind("LegalCopyright=", 0), 0u);
    EXPECT_EQ(GetVersion(), 0);
}

TEST(LibraryPropertiesTest, TheStampIsInTheFormOfACompiler)
{
    std::regex const form("[A-Z][a-z]{2} ( [1-9]|[12][0-9]|3[01]) [0-9]{4} [0-2][0-9](:[0-5][0-9]){2}");
    EXPECT_TRUE(std::regex_match(GetBuildTimestamp(), form)) << GetBuildTimestamp();
}

TEST(LibraryPropertiesTest, LaxMatchIsOnUntilSomebodyTurnsItOff)
{
    EXPECT_TRUE(UseLaxMatch());
    UseLaxMatch(false);
    EXPECT_FALSE(UseLaxMatch());
    UseLaxMatch(true);
}

} // namespace Zan::Orv::Core::Service::Tests
