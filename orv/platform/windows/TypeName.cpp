#include "orv/platform/TypeName.h"

#if !defined(_MSC_VER)
#include <cstdlib>
#include <cxxabi.h>
#include <memory>
#endif

namespace Zan::Orv::Core::Service::Platform {

std::string TypeName(std::type_info const& type)
{
#if defined(_MSC_VER)
    return type.name(); // readable as it is
#else
    int status = 0;
    std::unique_ptr<char, decltype(&std::free)> const name(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    return name != nullptr ? name.get() : type.name();
#endif
}

} // namespace Zan::Orv::Core::Service::Platform
