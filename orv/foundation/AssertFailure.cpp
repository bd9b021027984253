#include "orv/foundation/AssertFailure.h"

#include "orv/events/Log.h"

#include <stdexcept>
#include <string>

namespace Zan::Orv::Core::Service {

void AssertFailure(char const* message, char const* location)
{
    std::string text = "ASSERTION FAILURE";
    if (message != nullptr)
        text.append(": ").append(message);
    if (location != nullptr)
        text.append(" (").append(location).append(")");

    Log::SendLogMessage(text.c_str(), MessageSeverity::Error);
    throw std::runtime_error(text);
}

} // namespace Zan::Orv::Core::Service
