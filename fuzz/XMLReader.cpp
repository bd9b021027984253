#include "fuzz/Model.h"
#include "orv/serialization/XMLInputSerializer.h"

#include <sstream>

namespace Zan::Orv::Core::Service::Fuzz {

void Run(Input& input)
{
    Tests::GraphGuard const guard;
    Model model;
    std::istringstream stream(input.Rest());
    Reads<XMLInputSerializer>(stream, model, "doc");
}

} // namespace Zan::Orv::Core::Service::Fuzz
