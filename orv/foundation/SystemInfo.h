#pragma once

#include "orv/Export.h"

#include <string>

/// \file
/// Facts for the head of a log or a report. Each is found on the first call of its function and never
/// changes again; the references are valid as long as the library is loaded. Safe on any thread, and without
/// failures: what cannot be found is empty.

namespace Zan::Orv::Core::Service {

/// The computer's name.
ORV_API std::string const& GetHostname();

/// The name of the user whom the process runs as.
ORV_API std::string const& GetUsername();

/// The operating system: its name, on Windows up to Vista that of the release, the service pack if there is
/// one, and the version, as in "Windows (Build 6.2.9200)" or "Linux (Build 6.1.0)".
ORV_API std::string const& GetOperatingSystem();

} // namespace Zan::Orv::Core::Service
