#include "fuzz/Model.h"
#include "orv/serialization/BinaryInputSerializer.h"

#include <sstream>

namespace Zan::Orv::Core::Service::Fuzz {

void Run(Input& input)
{
    Tests::GraphGuard const guard;
    Model model;
    std::istringstream stream(input.Rest());
    Reads<BinaryInputSerializer>(stream, model);
}

} // namespace Zan::Orv::Core::Service::Fuzz
