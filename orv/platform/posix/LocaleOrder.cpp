#include "orv/platform/LocaleOrder.h"

#include <langinfo.h>
#include <locale.h>

namespace Zan::Orv::Core::Service::Platform {

std::string UserDatePattern()
{
    locale_t const user = ::newlocale(LC_TIME_MASK, "", nullptr);
    if (user == nullptr)
        return {};
    std::string pattern = ::nl_langinfo_l(D_FMT, user);
    ::freelocale(user);
    return pattern;
}

} // namespace Zan::Orv::Core::Service::Platform
