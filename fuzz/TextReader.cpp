#include "fuzz/Model.h"
#include "orv/serialization/StreamInputSerializer.h"

#include <sstream>

namespace Zan::Orv::Core::Service::Fuzz {

void Run(Input& input)
{
    Tests::GraphGuard const guard;
    Model model;
    std::istringstream stream(input.Rest());
    Reads<StreamInputSerializer>(stream, model);
}

} // namespace Zan::Orv::Core::Service::Fuzz
