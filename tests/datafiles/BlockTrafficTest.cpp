#include "orv/datafiles/BufferedBinaryFileReader.h"
#include "orv/platform/SharedFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>
#include <random>
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

int blockThatFails = 0; // the number of the allocation to refuse, from 1

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
    for (long long i = 0; i < came; ++i)
        to[i] = ByteAt(host.position + i);
    host.position += came;
    return came == wanted && host.failingReads-- <= 0;
}

} // namespace Platform

namespace Tests {
namespace {

void Reset(long long size)
{
    host = Host();
    host.size = size;
}

std::string TakeCalls()
{
    return std::exchange(host.calls, {});
}

std::string Bytes(long long position, int count)
{
    std::string bytes;
    for (int i = 0; i < count; ++i)
        bytes += ByteAt(position + i);
    return bytes;
}

// What a read delivers; the bytes that it leaves alone show as '#'.
std::string Read(BufferedBinaryFileReader& reader, int count)
{
    std::string bytes(static_cast<std::size_t>(std::max(count, 0)), '#');
    reader.read(bytes.data(), count);
    return bytes;
}

std::string ReadAt(BufferedBinaryFileReader& reader, long long position, int count)
{
    reader.seekg(position);
    return Read(reader, count);
}

// Random seeks and reads, beside the rules without any blocks. Sizes on both sides of where blocks shrink.
TEST(BufferedBinaryFileReader, AgreesWithItsRules)
{
    long long const last = std::numeric_limits<long long>::max();
    for (long long const size :
         {0LL, 1LL, 2LL, 3LL, 100LL, 2 * Block - 1, 2 * Block + 1, 4 * Block + 3, last})
    {
        SCOPED_TRACE(testing::Message() << "file of " << size);
        Reset(size);
        BufferedBinaryFileReader reader("any");
        std::mt19937 engine(1);
        auto const below = [&](long long limit) {
            return static_cast<long long>(engine() % static_cast<unsigned long long>(limit));
        };
        long long position = 0;
        bool refused = false;
        for (int step = 0; step < 400; ++step)
        {
            if (below(3) == 0)
            {
                long long const near[] = {0, size, size / 2, size - size % Block, Block, 2 * Block};
                position = near[below(6)];
                position += std::min(below(9), last - position) - 4;
                reader.seekg(position);
                refused = position < 0 || position >= size;
            }
            int const large = below(20) == 0 ? static_cast<int>(2 * Block) + 8 : 9;
            auto const count = static_cast<int>(below(large)) - 1;
            refused = refused || count < 0 || position > size - count;
            std::string const untouched(static_cast<std::size_t>(std::max(count, 0)), '#');
            ASSERT_TRUE(Read(reader, count) == (refused ? untouched : Bytes(position, count)))
                << count << " at " << position << ", step " << step;
            position += refused ? 0 : count;
            ASSERT_EQ(reader.tellg(), position) << step;
            ASSERT_EQ(reader.good(), !refused) << step;
            ASSERT_EQ(reader.eof(), position < 0 || position >= size) << step;
        }
    }
    EXPECT_EQ(host.openFiles, 0);
}

TEST(BufferedBinaryFileReader, ReadsEachBlockOnceGoingForward)
{
    Reset(3 * Block + 5);
    BufferedBinaryFileReader reader("any");
    EXPECT_EQ(TakeCalls(), " seek end seek 0");
    while (!reader.eof())
        Read(reader, 1);
    EXPECT_EQ(TakeCalls(), " read 524288 read 524288 read 524288 read 5");
    EXPECT_TRUE(reader.good());

    // One large read takes the same blocks; what it starts in is still there.
    EXPECT_EQ(ReadAt(reader, 2 * Block - 1, 1), Bytes(2 * Block - 1, 1));
    EXPECT_EQ(TakeCalls(), " seek 524288 read 524288");
    auto const most = static_cast<int>(2 * Block + 6);
    EXPECT_EQ(ReadAt(reader, Block - 1, most), Bytes(Block - 1, most));
    EXPECT_EQ(TakeCalls(), " seek 0 read 524288 seek 1048576 read 524288 read 5");
}

TEST(BufferedBinaryFileReader, HopsBetweenTwoRegionsInMemory)
{
    Reset(10 * Block);
    BufferedBinaryFileReader reader("any");
    TakeCalls();
    for (int record = 0; record < 100; ++record)
    {
        ReadAt(reader, 64 * record, 64);
        ReadAt(reader, 7 * Block + 64 * record, 64);
    }
    EXPECT_EQ(TakeCalls(), " read 524288 seek 3670016 read 524288");

    // A third region takes the place of the one that was left before the last.
    for (long long const block : {0, 3, 0, 7})
        ReadAt(reader, block * Block, 1);
    EXPECT_EQ(TakeCalls(), " seek 1572864 read 524288 seek 3670016 read 524288");
    EXPECT_TRUE(reader.good());
}

TEST(BufferedBinaryFileReader, KeepsASmallFileInMemory)
{
    Reset(101);
    BufferedBinaryFileReader reader("any");
    Read(reader, 101);
    EXPECT_EQ(TakeCalls(), " seek end seek 0 read 51 read 50");
    for (long long position : {60, 3, 99, 0})
        ReadAt(reader, position, 2);
    EXPECT_EQ(TakeCalls(), "");
}

TEST(BufferedBinaryFileReader, RecoversFromADeviceThatFails)
{
    Reset(3 * Block);
    BufferedBinaryFileReader reader("any");
    ReadAt(reader, 2 * Block, 1);
    ReadAt(reader, 0, 1);
    TakeCalls();

    // The front of a read is delivered up to the block that fails.
    host.failingReads = 1;
    EXPECT_EQ(ReadAt(reader, Block - 2, 4), Bytes(Block - 2, 2) + "##");
    EXPECT_EQ(reader.tellg(), Block);
    EXPECT_FALSE(reader.good());
    EXPECT_FALSE(reader.eof());
    EXPECT_EQ(TakeCalls(), " read 524288");

    // A seek makes nothing good; what is in memory is still served.
    EXPECT_EQ(ReadAt(reader, 5, 3), Bytes(5, 3));
    EXPECT_FALSE(reader.good());
    EXPECT_EQ(TakeCalls(), "");

    // Nobody knows where the stream stands, so that each block is sought, and the one that made room is gone.
    host.failingSeeks = 1;
    EXPECT_EQ(ReadAt(reader, Block, 2), "##");
    EXPECT_FALSE(reader.good());
    EXPECT_EQ(ReadAt(reader, 2 * Block, 2), Bytes(2 * Block, 2));
    EXPECT_TRUE(reader.good());
    EXPECT_EQ(TakeCalls(), " seek 524288 seek 1048576 read 524288");
}

TEST(BufferedBinaryFileReader, IsNotGoodWithoutPositions)
{
    for (auto const& [size, failingSeeks] : {std::pair(100, 1), std::pair(-1, 0)})
    {
        Reset(size);
        host.failingSeeks = failingSeeks;
        BufferedBinaryFileReader const reader("any");
        EXPECT_FALSE(reader.good()) << size;
        EXPECT_TRUE(reader.eof()) << size;
        EXPECT_EQ(host.openFiles, 0) << size;
    }
}

TEST(BufferedBinaryFileReader, ClosesTheFileWhenMemoryFails)
{
    for (int const block : {1, 2})
    {
        Reset(3 * Block);
        blockThatFails = block;
        EXPECT_THROW(BufferedBinaryFileReader("any"), std::bad_alloc) << block;
        EXPECT_EQ(host.openFiles, 0) << block;
    }
}

// As pointers do: one of the two is not destroyed.
TEST(BufferedBinaryFileReader, SharesAllWithItsCopy)
{
    Reset(100);
    {
        BufferedBinaryFileReader reader("any");
        ReadAt(reader, 40, 2);
        TakeCalls();
        alignas(BufferedBinaryFileReader) unsigned char place[sizeof reader];
        auto* const copy = new (place) BufferedBinaryFileReader(reader);
        EXPECT_EQ(Read(*copy, 2), Bytes(42, 2));
        EXPECT_EQ(TakeCalls(), "");
    }
    EXPECT_EQ(host.openFiles, 0);
}

} // namespace
} // namespace Tests
} // namespace Zan::Orv::Core::Service

// Blocks are the only large arrays.
void* operator new[](std::size_t size)
{
    using Zan::Orv::Core::Service::blockThatFails;
    void* const memory =
        size == 0x80000 && blockThatFails > 0 && --blockThatFails == 0 ? nullptr : std::malloc(size);
    if (memory == nullptr && size != 0)
        throw std::bad_alloc();
    return memory;
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}
