#include "fuzz/Input.h"
#include "orv/datafiles/BufferedBinaryFileReader.h"
#include "orv/platform/SharedFile.h"

#include <algorithm>
#include <cstdint>
#include <limits>

// The reader on a host that is made up, with a file of any size. This program has the reader compiled in, with what is
// here in the place of the platform.

namespace Zan::Orv::Core::Service {

namespace {

constexpr long long block = 0x80000;
constexpr long long last = std::numeric_limits<long long>::max();

struct Host
{
    long long size = 0;
    long long position = 0;
    int openFiles = 0;
} host;

char ByteAt(long long position)
{
    return static_cast<char>((static_cast<unsigned long long>(position) * 0x9E3779B97F4A7C15u) >> 56);
}

} // namespace

namespace Platform {

std::FILE* OpenSharedFile(char const*)
{
    ++host.openFiles;
    return reinterpret_cast<std::FILE*>(&host);
}

void CloseSharedFile(std::FILE*)
{
    --host.openFiles;
}

bool SeekSharedFile(std::FILE*, long long position, bool fromEnd)
{
    host.position = fromEnd ? host.size : position;
    return true;
}

long long TellSharedFile(std::FILE*)
{
    return host.position;
}

bool ReadSharedFile(std::FILE*, char* to, std::size_t count)
{
    Fuzz::Require(static_cast<long long>(count) <= host.size - host.position, "no block goes beyond the end");
    std::generate_n(to, count, [] { return ByteAt(host.position++); });
    return true;
}

} // namespace Platform

namespace Fuzz {

// Seeks and reads, beside the rules without any blocks. Sizes and positions lie where blocks meet or shrink.
void Run(Input& input)
{
    long long const sizes[] = {0, 1, 2, 3, 100, 2 * block - 1, 2 * block + 1, 4 * block + 3, last};
    host = Host();
    host.size = sizes[input.Below(9)];
    {
        BufferedBinaryFileReader reader("any");
        long long position = 0;
        bool refused = false;
        while (!input.IsEmpty())
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
            bool const isLarge = input.Below(20) == 0;
            int const count =
                static_cast<int>(isLarge ? input.Number<std::uint32_t>() % (2 * block + 8) : input.Below(9)) -
                1;
            refused = refused || count < 0 || position > host.size - count;
            std::string bytes(static_cast<std::size_t>(std::max(count, 0)), '#');
            std::string wanted = bytes;
            reader.read(bytes.data(), count);
            if (!refused)
                std::generate(wanted.begin(), wanted.end(), [&] { return ByteAt(position++); });
            Require(bytes == wanted, "the bytes of the file come, or none");
            Require(reader.tellg() == position, "the position is behind what came");
            Require(reader.good() != refused, "a read that is refused is told");
            Require(reader.eof() == (position < 0 || position >= host.size),
                    "the end is where the file ends");
        }
    }
    Require(host.openFiles == 0, "the file is closed");
}

} // namespace Fuzz
} // namespace Zan::Orv::Core::Service
