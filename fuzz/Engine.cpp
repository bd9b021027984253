#include "fuzz/Input.h"

// What the fuzzing engine calls.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Zan::Orv::Core::Service::Fuzz::Input input(data, size);
    Zan::Orv::Core::Service::Fuzz::Run(input);
    return 0;
}
