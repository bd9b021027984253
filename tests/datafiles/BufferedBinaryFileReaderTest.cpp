#include "orv/datafiles/BufferedBinaryFileReader.h"
#include "orv/datafiles/BinaryFileIO.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

// The reader on the host's own files.

namespace Zan::Orv::Core::Service::Tests {
namespace {

using namespace std::string_literals;

std::string ReadAt(BufferedBinaryFileReader& reader, long long position, int count)
{
    std::string bytes(static_cast<std::size_t>(count), '#');
    reader.seekg(position);
    reader.read(bytes.data(), count);
    return bytes;
}

TEST(HostFiles, AreReadAcrossBlocks)
{
    std::string bytes;
    for (int i = 0; bytes.size() < 2 << 20; ++i)
        bytes += std::to_string(i) + "\r\n\x1A"; // text mode would stumble
    TemporaryDirectory const folder;
    BufferedBinaryFileReader reader(folder.Write("two", bytes).c_str());
    EXPECT_TRUE(ReadAt(reader, 0x80000 - 3, 1 << 20) == bytes.substr(0x80000 - 3, 1 << 20));
    EXPECT_TRUE(reader.good());
    EXPECT_FALSE(reader.eof());
}

TEST(HostFiles, ThatCanNotBeRead)
{
    TemporaryDirectory const folder;
    for (std::string const& name : {folder / "absent", folder.Make("folder"), std::string()})
    {
        BufferedBinaryFileReader reader(name.c_str());
        EXPECT_FALSE(reader.good()) << name;
        EXPECT_TRUE(reader.eof()) << name;
        EXPECT_EQ(ReadAt(reader, 0, 1), "#") << name;
        EXPECT_EQ(reader.tellg(), 0) << name;
        int value = 7;
        EXPECT_FALSE(BinaryFileIO::readInt32(reader, value)) << name;
        EXPECT_EQ(value, 7) << name;
    }
    EXPECT_FALSE(BufferedBinaryFileReader(nullptr).good());
}

TEST(HostFiles, AreSharedWithTheirWriter)
{
    TemporaryDirectory const folder;
    std::string const name = folder / "growing";
    std::ofstream writer(name, std::ios::binary);
    writer << "0123456789" << std::flush;

    BufferedBinaryFileReader reader(name.c_str());
    EXPECT_EQ(ReadAt(reader, 0, 1), "0");
    writer << "more" << std::flush;
    writer.seekp(7) << "x" << std::flush;
    ASSERT_TRUE(writer.good());
    EXPECT_EQ(ReadAt(reader, 6, 4), "6x89") << "This block was not in memory yet.";
    ReadAt(reader, 10, 1);
    EXPECT_FALSE(reader.good()) << "The size is that of the opening.";
    BufferedBinaryFileReader later(name.c_str());
    EXPECT_EQ(ReadAt(later, 9, 5), "9more");

    writer.close();
    std::filesystem::resize_file(name, 8);
    EXPECT_EQ(ReadAt(reader, 6, 4), "6x89") << "This block is in memory.";
    BufferedBinaryFileReader cut(name.c_str());
    std::filesystem::resize_file(name, 5);
    EXPECT_EQ(ReadAt(cut, 5, 2), "##");
    EXPECT_FALSE(cut.good());
    std::filesystem::resize_file(name, 8);
    EXPECT_EQ(ReadAt(cut, 5, 2), "\0\0"s);
    EXPECT_TRUE(cut.good());
}

TEST(HostFiles, ReachBeyondFourGigabytes)
{
    TemporaryDirectory const folder;
    std::string const name = folder / "large"; // a hole, but for a few bytes
    long long const far = 5'000'000'000;
    std::ofstream writer(name, std::ios::binary);
    writer << "near";
    writer.seekp(far) << "far away";
    writer.close();
    ASSERT_TRUE(writer.good());

    BufferedBinaryFileReader reader(name.c_str());
    EXPECT_EQ(ReadAt(reader, far + 4, 4), "away");
    EXPECT_TRUE(reader.eof() && reader.good());
    EXPECT_EQ(ReadAt(reader, 0, 4), "near");
    EXPECT_EQ(ReadAt(reader, far, 3), "far");
    ReadAt(reader, far, 9);
    EXPECT_FALSE(reader.good());
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
