#include "fuzz/Input.h"
#include "orv/serialization/BZip2Buf.h"
#include "orv/serialization/BZip2Utility.h"

#include <istream>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace Zan::Orv::Core::Service::Fuzz {

// A few bytes can stand for hundreds of megabytes, honestly: nobody has to read them all.
void Run(Input& input)
{
    constexpr std::size_t enough = 1 << 20;
    bool const small = input.Flag();
    std::string const bytes = input.Rest();
    std::vector<char> found(enough);
    Succeeds<std::runtime_error>([&] {
        std::stringbuf source(bytes);
        BZip2Buf buffer(&source, 1, small);
        buffer.sgetn(found.data(), static_cast<std::streamsize>(found.size()));
    });
    auto size = static_cast<unsigned>(found.size());
    BZip2Utility::BuffToBuffDecompress(found.data(), &size, bytes.data(), static_cast<unsigned>(bytes.size()),
                                       small ? 1 : 0, 0);
    Require(size <= found.size(), "the result is within its buffer");
}

} // namespace Zan::Orv::Core::Service::Fuzz
