#include "orv/datafiles/BinaryFileIO.h"
#include "orv/datafiles/BufferedBinaryFileReader.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace Zan::Orv::Core::Service::Tests {
namespace {

using namespace std::string_literals;

// Values and their bytes in the file, one by one and all together. Compared by bits, for NaNs.
template<class T>
void Check(std::vector<T> const& values, std::string const& bytes, bool (*writeOne)(std::ostream&, T),
           bool (*writeAll)(std::ostream&, T*, int), bool (*readOne)(BinaryFileReader&, T&),
           bool (*readAll)(BinaryFileReader&, T*, int))
{
    auto const count = static_cast<int>(values.size());
    std::ostringstream out;
    for (T const& value : values)
        EXPECT_TRUE(writeOne(out, value));
    std::vector<T> array = values;
    EXPECT_TRUE(writeAll(out, array.data(), count));
    EXPECT_EQ(out.str(), bytes + bytes);
    EXPECT_EQ(std::memcmp(array.data(), bytes.data(), bytes.size()), 0) << "The array stays reversed.";

    TemporaryDirectory const folder;
    BufferedBinaryFileReader reader(folder.Write("file", bytes + bytes).c_str());
    for (T& value : array)
        EXPECT_TRUE(readOne(reader, value));
    EXPECT_EQ(std::memcmp(array.data(), values.data(), bytes.size()), 0);
    array.assign(values.size(), T());
    EXPECT_TRUE(readAll(reader, array.data(), count));
    EXPECT_EQ(std::memcmp(array.data(), values.data(), bytes.size()), 0);
}

TEST(BinaryFileIO, KeepsTheMostSignificantByteFirst)
{
    using IO = BinaryFileIO;
    Check<int>({1, -2, 0x01020304, INT32_MIN}, "\0\0\0\1\xFF\xFF\xFF\xFE\1\2\3\4\x80\0\0\0"s, IO::writeInt32,
               IO::writeInt32s, IO::readInt32, IO::readInt32s);
    // The second is a signalling NaN, and the third is one with its bytes reversed.
    Check<float>({1.0f, std::bit_cast<float>(0x7F800001u), std::bit_cast<float>(0x0100A07Fu)},
                 "\x3F\x80\0\0\x7F\x80\0\1\1\0\xA0\x7F"s, IO::writeFloat32, IO::writeFloat32s,
                 IO::readFloat32, IO::readFloat32s);
    Check<double>(
        {1.0, std::bit_cast<double>(0x7FF0000000000001u), std::bit_cast<double>(0x010203040506F47Fu)},
        "\x3F\xF0\0\0\0\0\0\0\x7F\xF0\0\0\0\0\0\1\1\2\3\4\5\6\xF4\x7F"s, IO::writeFloat64, IO::writeFloat64s,
        IO::readFloat64, IO::readFloat64s);
}

// A reader of somebody's own, without a file.
struct Foreign : BufferedBinaryFileReader
{
    Foreign() : BufferedBinaryFileReader(nullptr) {}
    void read(char*, int count) override { reads += " " + std::to_string(count); }
    bool good() const override { return isGood; }

    std::string reads;
    bool isGood = true;
};

TEST(BinaryFileIO, AsksAnyReaderOnceAndWhetherItIsGood)
{
    Foreign reader;
    int values[2] = {7, 7};
    double real = 0;
    EXPECT_TRUE(BinaryFileIO::readFloat64(reader, real));
    // A count of bytes that is no int must not become a small one.
    EXPECT_FALSE(BinaryFileIO::readInt32s(reader, values, std::numeric_limits<int>::max() / 4 + 1));
    BinaryFileIO::readInt32s(reader, values, std::numeric_limits<int>::min());
    reader.isGood = false;
    EXPECT_FALSE(BinaryFileIO::readInt32s(reader, values, 2));
    EXPECT_EQ(reader.reads, " 8 -1 8");

    std::ostringstream out;
    EXPECT_FALSE(BinaryFileIO::writeInt32s(out, values, -1));
    EXPECT_FALSE(BinaryFileIO::writeChars(out, "x", -1));
    EXPECT_EQ(out.str(), "");
    EXPECT_TRUE(values[0] == 7 && values[1] == 7) << "Nothing is reversed after a failure.";
    out.setstate(std::ios::eofbit); // any flag counts
    EXPECT_FALSE(BinaryFileIO::writeInt32(out, 1));
}

#ifdef ORV_EXCHANGE_COMMAND
// exchange.py reads the file by its own means, and writes one with each value negated.
TEST(BinaryFileIO, ExchangesFilesWithPython)
{
    using IO = BinaryFileIO;
    TemporaryDirectory const folder;
    char text[] = "DATA";
    int whole[] = {1, -2, 2147483647};
    float single = 0.1f;
    double real[] = {0.1, -1e300, 5e-324};
    std::ofstream file(folder / "ours", std::ios::binary);
    EXPECT_TRUE(IO::writeChars(file, text, 4) && IO::writeInt32s(file, whole, 3));
    EXPECT_TRUE(IO::writeFloat32(file, single) && IO::writeFloat64s(file, real, 3));
    file.close();
    std::string const command =
        ORV_EXCHANGE_COMMAND " \"" + folder / "ours" + "\" \"" + folder / "theirs" + "\"";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;

    BufferedBinaryFileReader reader((folder / "theirs").c_str());
    EXPECT_TRUE(IO::readChars(reader, text, 4) && IO::readInt32s(reader, whole, 3));
    EXPECT_TRUE(IO::readFloat32(reader, single) && IO::readFloat64s(reader, real, 3));
    EXPECT_TRUE(reader.eof());
    EXPECT_STREQ(text, "ATAD");
    EXPECT_TRUE(whole[0] == -1 && whole[1] == 2 && whole[2] == -2147483647);
    EXPECT_EQ(single, -0.1f);
    EXPECT_TRUE(real[0] == -0.1 && real[1] == 1e300 && real[2] == -5e-324);
}
#endif

// The reader on the host's own files.
std::string ReadAt(BufferedBinaryFileReader& reader, long long position, int count)
{
    std::string bytes(static_cast<std::size_t>(count), '#');
    reader.seekg(position);
    reader.read(bytes.data(), count);
    return bytes;
}

TEST(HostFiles, AreReadAcrossBlocksAndBeyondFourGigabytes)
{
    std::string bytes;
    for (int i = 0; bytes.size() < 2 << 20; ++i)
        bytes += std::to_string(i) + "\r\n\x1A"; // text mode would stumble
    TemporaryDirectory const folder;
    std::string const name = folder.Write("large", bytes); // with a hole behind it
    long long const far = 5'000'000'000;
    std::fstream(name, std::ios::binary | std::ios::in | std::ios::out).seekp(far) << "far away";

    BufferedBinaryFileReader reader(name.c_str());
    EXPECT_EQ(ReadAt(reader, far + 4, 4), "away");
    EXPECT_TRUE(reader.eof() && reader.good());
    EXPECT_TRUE(ReadAt(reader, 0x80000 - 3, 1 << 20) == bytes.substr(0x80000 - 3, 1 << 20));
    ReadAt(reader, far, 9);
    EXPECT_FALSE(reader.good());
}

TEST(HostFiles, ThatCanNotBeRead)
{
    TemporaryDirectory const folder;
    std::vector<std::string> names{folder / "absent", folder.Make("folder"), ""};
#ifndef _WIN32
    // A pipe has no positions. Opening one must not wait for somebody to write.
    names.push_back(folder / "pipe");
    ASSERT_EQ(::mkfifo(names.back().c_str(), 0600), 0);
#endif
    for (std::string const& name : names)
    {
        BufferedBinaryFileReader reader(name.c_str());
        EXPECT_FALSE(reader.good()) << name;
        EXPECT_TRUE(reader.eof()) << name;
        int value = 7;
        EXPECT_FALSE(BinaryFileIO::readInt32(reader, value)) << name;
        EXPECT_EQ(value, 7) << name;
        EXPECT_EQ(reader.tellg(), 0) << name;
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

    writer.close();
    std::filesystem::resize_file(name, 5);
    EXPECT_EQ(ReadAt(reader, 5, 2), "##");
    EXPECT_FALSE(reader.good());
    writer.open(name, std::ios::binary | std::ios::app);
    writer << "56x89" << std::flush;
    EXPECT_EQ(ReadAt(reader, 6, 4), "6x89") << "This block was not in memory yet.";
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
