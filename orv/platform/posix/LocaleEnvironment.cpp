#include "orv/platform/LocaleEnvironment.h"

#include <unistd.h>

namespace Zan::Orv::Core::Service::Platform {

void AppendLocaleEnvironment(std::string& text)
{
    // One look at all variables is much faster than asking for each of the fourteen.
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable)
    {
        char const* const entry = *variable;
        bool const isLocale = entry[0] == 'L' && ((entry[1] == 'C' && entry[2] == '_') ||
                                                  (entry[1] == 'A' && entry[2] == 'N' && entry[3] == 'G'));
        if (isLocale)
            text.append(entry).push_back('\n');
    }
}

} // namespace Zan::Orv::Core::Service::Platform
