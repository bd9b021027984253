#include "orv/platform/LetterCase.h"

#include <clocale>
#include <cstring>

namespace Zan::Orv::Core::Service::Platform {

bool OnlyASCIIHasCase()
{
    char const* const locale = std::setlocale(LC_CTYPE, nullptr);
    return locale != nullptr && std::strcmp(locale, "C") == 0;
}

} // namespace Zan::Orv::Core::Service::Platform
