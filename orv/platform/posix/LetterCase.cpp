#include "orv/platform/LetterCase.h"

#include <cctype>
#include <cstring>
#include <locale.h>

namespace Zan::Orv::Core::Service::Platform {

#if defined(__GLIBC__)

bool OnlyASCIIHasCase()
{
    // Where toupper looks: the table of this thread's locale, and that of "C", which is never freed.
    static auto const* const plain = ::newlocale(LC_CTYPE_MASK, "C", nullptr)->__ctype_toupper;
    auto const* const table = *::__ctype_toupper_loc();
    return table == plain || std::memcmp(table, plain, 256 * sizeof *plain) == 0;
}

#else

bool OnlyASCIIHasCase()
{
    return false;
}

#endif

} // namespace Zan::Orv::Core::Service::Platform
