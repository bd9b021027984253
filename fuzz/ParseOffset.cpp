#include "fuzz/Input.h"
#include "orv/foundation/Exception.h"
#include "orv/time/TimeFrequency.h"
#include "orv/time/TimeOffset.h"

namespace Zan::Orv::Core::Service::Fuzz {

void Run(Input& input)
{
    std::string const text = input.Rest();
    Succeeds<TimeException>([&] { ParseTimeOffset(text); });
    Succeeds<TimeException>([&] { ParseTimeFrequency(text); });
}

} // namespace Zan::Orv::Core::Service::Fuzz
