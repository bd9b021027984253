#include "fuzz/Input.h"
#include "orv/datafiles/BufferedBinaryFileReader.h"
#include "tests/datafiles/MadeUpHost.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace Zan::Orv::Core::Service::Fuzz {

using Tests::host;

constexpr long long block = 0x80000;
constexpr long long last = std::numeric_limits<long long>::max();

// Seeks and reads, beside the rules without any blocks. Sizes and positions lie where blocks meet or shrink.
void Run(Input& input)
{
    long long const sizes[] = {0, 1, 2, 3, 100, 2 * block - 1, 2 * block + 1, 4 * block + 3, last};
    host = Tests::Host();
    host.size = sizes[input.Below(9)];
    {
        BufferedBinaryFileReader reader("any");
        long long position = 0;
        bool refused = false;
        for (int step = 0; step < 32 && !input.IsEmpty(); ++step) // more would take time and show nothing new
        {
            if (input.Below(3) == 0)
            {
                long long const near[] = {0,     host.size, host.size / 2, host.size - host.size % block,
                                          block, 2 * block};
                position = near[input.Below(6)];
                position += std::min<long long>(input.Below(9), last - position) - 4;
                reader.seekg(position);
                refused = position < 0 || position >= host.size;
            }
            bool const isLarge = input.Below(20) == 19;
            int const count =
                static_cast<int>(isLarge ? input.Number<std::uint32_t>() % (2 * block + 8) : input.Below(9)) -
                1;
            refused = refused || count < 0 || position > host.size - count;
            std::string bytes(static_cast<std::size_t>(std::max(count, 0)), '#');
            std::string wanted = bytes;
            reader.read(bytes.data(), count);
            if (!refused)
            {
                Tests::CopyBytes(wanted.data(), position, count);
                position += count;
            }
            Require(bytes == wanted, "the bytes of the file come, or none");
            Require(reader.tellg() == position, "the position is behind what came");
            Require(reader.good() != refused, "a read that is refused is told");
            Require(reader.eof() == (position < 0 || position >= host.size),
                    "the end is where the file ends");
        }
    }
    Require(host.openFiles == 0, "the file is closed");
}

} // namespace Zan::Orv::Core::Service::Fuzz
