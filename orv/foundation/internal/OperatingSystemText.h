#pragma once

#include "orv/platform/SystemFacts.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>

namespace Zan::Orv::Core::Service::Internal {

/// The name of a release of Windows, with a blank in front. Releases behind the last row have none: the build
/// tells them apart. Other systems use the same numbers for releases of their own, and have none either.
inline char const* ReleaseName(Platform::OperatingSystem const& system)
{
    constexpr std::uint32_t any = 0xFFFFFFFF;
    struct Release
    {
        std::uint32_t majorVersion;
        std::uint32_t minorVersion;
        std::uint32_t platformId;
        char const* name;
    };
    static constexpr Release releases[] = {
        {4, 0, 1, " 95"},     {4, 0, 2, " NT 4.0"}, {4, 10, any, " 98"},         {4, 90, any, " Me"},
        {5, 0, any, " 2000"}, {5, 1, any, " XP"},   {5, 2, any, " Server 2003"}, {6, 0, any, " Vista"}};

    if (system.name != "Windows")
        return "";
    auto const* const found =
        std::find_if(std::begin(releases), std::end(releases), [&](Release const& release) {
            return release.majorVersion == system.majorVersion &&
                   release.minorVersion == system.minorVersion &&
                   (release.platformId == any || release.platformId == system.platformId);
        });
    return found != std::end(releases) ? found->name : "";
}

/// The system in one line, such as "Windows XP Service Pack 2 (Build 5.1.2600)".
inline std::string OperatingSystemText(Platform::OperatingSystem const& system)
{
    std::string text = system.name + ReleaseName(system);
    if (!system.servicePack.empty())
        text.append(" ").append(system.servicePack);

    // The old line of Windows repeats its version in the upper half.
    std::uint32_t const build = system.platformId == 1 ? system.buildNumber & 0xFFFFu : system.buildNumber;
    return text + " (Build " + std::to_string(system.majorVersion) + '.' +
           std::to_string(system.minorVersion) + '.' + std::to_string(build) + ')';
}

} // namespace Zan::Orv::Core::Service::Internal
