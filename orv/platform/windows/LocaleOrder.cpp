#include "orv/platform/LocaleOrder.h"

#include "orv/platform/windows/WindowsHeaders.h"

namespace Zan::Orv::Core::Service::Platform {

std::string UserDatePattern()
{
    char order[8] = {};
    if (::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_IDATE, order, sizeof order) == 0)
        return {};
    switch (order[0])
    {
    case '0': return "%m/%d/%Y";
    case '1': return "%d/%m/%Y";
    case '2': return "%Y/%m/%d";
    default: return {};
    }
}

} // namespace Zan::Orv::Core::Service::Platform
