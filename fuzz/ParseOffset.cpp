#include "fuzz/Input.h"
#include "orv/time/TimeFrequency.h"
#include "orv/time/TimeOffset.h"

namespace Zan::Orv::Core::Service::Fuzz {

void Run(Input& input)
{
    std::string const text = input.Rest();
    Succeeds([&] { ParseTimeOffset(text); });
    Succeeds([&] { ParseTimeFrequency(text); });
}

} // namespace Zan::Orv::Core::Service::Fuzz
