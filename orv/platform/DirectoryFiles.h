#pragma once

#include <functional>
#include <string>

namespace Zan::Orv::Core::Service::Platform {

/// Calls `visit` with the path of each entry of `directory` that neither is a directory nor leads to one, in
/// the host's order: `directory`, a separator, and the name. A link to nothing counts as a file. False when
/// the directory cannot be read to its end, or of an entry cannot be told what it is.
bool VisitFiles(std::string const& directory, std::function<void(std::string const& path)> const& visit);

} // namespace Zan::Orv::Core::Service::Platform
