#include "orv/datafiles/BufferedBinaryFileReader.h"
#include "tests/datafiles/MadeUpHost.h"
#include "tests/robustness/FailingAllocation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

constexpr long long Block = 0x80000;

std::string Bytes(long long position, long long count)
{
    std::string bytes(static_cast<std::size_t>(count), ' ');
    CopyBytes(bytes.data(), position, count);
    return bytes;
}

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
} // namespace Zan::Orv::Core::Service::Tests
