#pragma once

#include <string>
#include <typeinfo>

namespace Zan::Orv::Core::Service::Platform {

/// The name of a type as a person writes it, not as the linker does.
std::string TypeName(std::type_info const& type);

} // namespace Zan::Orv::Core::Service::Platform
