#include "orv/platform/TypeName.h"

#include <cstdlib>
#include <cxxabi.h>
#include <memory>

namespace Zan::Orv::Core::Service::Platform {

std::string TypeName(std::type_info const& type)
{
    int status = 0;
    std::unique_ptr<char, decltype(&std::free)> const name(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    return name != nullptr ? name.get() : type.name();
}

} // namespace Zan::Orv::Core::Service::Platform
