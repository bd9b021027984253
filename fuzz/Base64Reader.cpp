#include "fuzz/Input.h"
#include "orv/serialization/Base64Buf.h"

#include <sstream>
#include <stdexcept>

namespace Zan::Orv::Core::Service::Fuzz {

namespace {

std::string Decode(std::string const& text)
{
    std::stringbuf source(text);
    Base64Buf buffer(&source);
    std::ostringstream bytes;
    bytes << &buffer;
    return bytes.str();
}

std::string Encode(std::string const& bytes)
{
    std::stringbuf target;
    {
        Base64Buf buffer(&target);
        buffer.sputn(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    return target.str();
}

} // namespace

void Run(Input& input)
{
    std::string const text = input.Rest();
    Succeeds<std::runtime_error>([&] { Decode(text); });
    Require(Decode(Encode(text)) == text, "what is encoded is decoded");
}

} // namespace Zan::Orv::Core::Service::Fuzz
