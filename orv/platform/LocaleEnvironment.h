#pragma once

#include <string>

namespace Zan::Orv::Core::Service::Platform {

/// Appends what the environment says of the user's locale: every variable that `std::locale("")` looks at. Two equal
/// texts mean the same locale.
void AppendLocaleEnvironment(std::string& text);

} // namespace Zan::Orv::Core::Service::Platform
