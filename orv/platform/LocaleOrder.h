#pragma once

#include <string>

namespace Zan::Orv::Core::Service::Platform {

/// The date pattern of the user's locale as the host knows it, in the codes of strftime, such as "%m/%d/%y". Empty when
/// the host does not tell.
std::string UserDatePattern();

} // namespace Zan::Orv::Core::Service::Platform
