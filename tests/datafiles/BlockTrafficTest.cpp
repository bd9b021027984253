#include "orv/datafiles/BufferedBinaryFileReader.h"
#include "orv/platform/SharedFile.h"
#include "tests/robustness/FailingAllocation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <string>
#include <utility>
#include <vector>

// The reader on a host that is made up: a file of any size, every call of it noted, and failures to order.
// This program has the reader compiled in, with what is here in the place of the platform.

namespace Zan::Orv::Core::Service {

namespace {

constexpr long long Block = 0x80000;

struct Host
{
    long long size = 0;
    long long position = 0;
    int failingSeeks = 0; // how many of the next ones fail
    int failingReads = 0;
    int openFiles = 0;
    std::string calls;
} host;

std::string Bytes(long long position, long long count)
{
    std::string bytes(static_cast<std::size_t>(count), ' ');
    for (char& byte : bytes)
        byte = static_cast<char>((static_cast<unsigned long long>(position++) * 0x9E3779B97F4A7C15u) >> 56);
    return bytes;
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
    host.calls += " seek " + (fromEnd ? "end" : std::to_string(position));
    host.position = fromEnd ? host.size : position;
    return host.failingSeeks-- <= 0;
}

long long TellSharedFile(std::FILE*)
{
    return host.position;
}

bool ReadSharedFile(std::FILE*, char* to, std::size_t count)
{
    host.calls += " read " + std::to_string(count);
    auto const wanted = static_cast<long long>(count);
    long long const came = std::min(wanted, host.size - host.position);
    Bytes(host.position, came).copy(to, count);
    host.position += came;
    return came == wanted && host.failingReads-- <= 0;
}

} // namespace Platform

namespace Tests {
namespace {

// The name of a file of `size` bytes, on a host that works again.
char const* MakeFile(long long size)
{
    host = Host();
    host.size = size;
    return "any";
}

// The calls of the host that it takes to read at `position`, and what of it fails.
std::string Traffic(BufferedBinaryFileReader& reader, long long position, int count)
{
    host.calls.clear();
    if (reader.tellg() != position)
        reader.seekg(position);
    auto const size = static_cast<std::size_t>(std::max(count, 0));
    std::string bytes(size, '#');
    reader.read(bytes.data(), count);
    std::string wanted = Bytes(position, reader.tellg() - position);
    std::string const came = wanted.size() == size ? "" : ", " + std::to_string(wanted.size()) + " came";
    wanted.resize(size, '#');
    EXPECT_TRUE(bytes == wanted) << count << " at " << position;
    return host.calls + came + (reader.good() ? "" : ", bad");
}

// Those from the opening of a file to the last of some reads.
std::string Traffic(long long fileSize, std::vector<std::pair<long long, int>> const& reads)
{
    BufferedBinaryFileReader reader(MakeFile(fileSize));
    std::string calls = host.calls;
    for (auto const& [position, count] : reads)
        calls += Traffic(reader, position, count);
    return calls;
}

TEST(BufferedBinaryFileReader, LoadsNoBlockThatIsInMemory)
{
    // Going forward, piece by piece.
    EXPECT_EQ(Traffic(2 * Block + 5, {{0, 1}, {1, Block - 1}, {Block, Block + 1}, {2 * Block + 1, 4}}),
              " seek end seek 0 read 524288 read 524288 read 5");
    // Hopping between two regions. A third one takes the place of the one that was left before the last.
    std::vector<std::pair<long long, int>> const hops = {{0, 4}, {Block, 9},     {4, 4}, {Block + 9, 9},
                                                         {0, 1}, {3 * Block, 1}, {0, 1}, {Block, 1}};
    EXPECT_EQ(Traffic(8 * Block, hops),
              " seek end seek 0 read 524288 read 524288 seek 1572864 read 524288 seek 524288 read 524288");
    // A small file stays in memory.
    EXPECT_EQ(Traffic(101, {{0, 101}, {60, 2}, {3, 2}, {99, 2}, {0, 2}}), " seek end seek 0 read 51 read 50");
}

TEST(BufferedBinaryFileReader, RecoversFromADeviceThatFails)
{
    BufferedBinaryFileReader reader(MakeFile(3 * Block));
    Traffic(reader, 2 * Block, 1);
    Traffic(reader, 0, 1);

    // The front of a read is delivered up to the block that fails.
    host.failingReads = 1;
    EXPECT_EQ(Traffic(reader, Block - 2, 4), " read 524288, 2 came, bad");

    // A seek makes nothing good; what is in memory is still served.
    EXPECT_EQ(Traffic(reader, 5, 3), ", bad");

    // Nobody knows where the stream stands, so that each block is sought, and the one that made room is gone.
    host.failingSeeks = 1;
    EXPECT_EQ(Traffic(reader, Block, 2), " seek 524288, 0 came, bad");
    EXPECT_EQ(Traffic(reader, 2 * Block, 2), " seek 1048576 read 524288");
}

TEST(BufferedBinaryFileReader, ClosesTheFileWhenMemoryFails)
{
    for (std::size_t const block : {1U, 2U})
    {
        char const* const name = MakeFile(3 * Block);
        host.calls.reserve(100); // so that the blocks are all that is allocated
        long long const before = LiveBlocks();
        FailingAllocation const failing(block, Shortage::Once);
        EXPECT_THROW(BufferedBinaryFileReader{name}, std::bad_alloc) << block;
        EXPECT_EQ(host.openFiles, 0) << block;
        EXPECT_EQ(LiveBlocks(), before) << block;
    }
}

// As pointers do: one of the two is not destroyed.
TEST(BufferedBinaryFileReader, SharesAllWithItsCopy)
{
    {
        BufferedBinaryFileReader reader(MakeFile(100));
        Traffic(reader, 40, 2);
        alignas(BufferedBinaryFileReader) unsigned char place[sizeof reader];
        auto* const copy = new (place) BufferedBinaryFileReader(reader);
        EXPECT_EQ(Traffic(*copy, 42, 2), "");
    }
    EXPECT_EQ(host.openFiles, 0);
}

} // namespace
} // namespace Tests
} // namespace Zan::Orv::Core::Service
