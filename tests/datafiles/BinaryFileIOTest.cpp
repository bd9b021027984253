#include "orv/datafiles/BinaryFileIO.h"
#include "orv/datafiles/BufferedBinaryFileReader.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

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
    std::ostringstream one, all;
    for (T const& value : values)
        EXPECT_TRUE(writeOne(one, value));
    EXPECT_EQ(one.str(), bytes);
    std::vector<T> array = values;
    EXPECT_TRUE(writeAll(all, array.data(), count));
    EXPECT_EQ(all.str(), bytes);
    EXPECT_EQ(std::memcmp(array.data(), bytes.data(), bytes.size()), 0) << "The array stays reversed.";

    TemporaryDirectory const folder;
    BufferedBinaryFileReader reader(folder.Write("file", bytes + bytes).c_str());
    for (T& value : array)
        EXPECT_TRUE(readOne(reader, value));
    EXPECT_EQ(std::memcmp(array.data(), values.data(), bytes.size()), 0);
    array.assign(values.size(), T());
    EXPECT_TRUE(readAll(reader, array.data(), count));
    EXPECT_EQ(std::memcmp(array.data(), values.data(), bytes.size()), 0);
    EXPECT_TRUE(reader.eof());
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

// A reader of somebody's own is asked once for all the bytes, and then whether it is good.
struct Counting : BufferedBinaryFileReader
{
    using BufferedBinaryFileReader::BufferedBinaryFileReader;

    void read(char* buffer, int count) override
    {
        calls += " read " + std::to_string(count);
        BufferedBinaryFileReader::read(buffer, count);
    }
    bool good() const override
    {
        calls += " good";
        return BufferedBinaryFileReader::good();
    }

    std::string mutable calls;
};

TEST(BinaryFileIO, AsksAnyReaderOnce)
{
    TemporaryDirectory const folder;
    Counting reader(folder.Write("file", std::string(64, '\1')).c_str());
    double values[3] = {};
    float value = 0;
    EXPECT_TRUE(BinaryFileIO::readFloat64s(reader, values, 3));
    EXPECT_TRUE(BinaryFileIO::readFloat32(reader, value));
    EXPECT_EQ(reader.calls, " read 24 good read 4 good");
}

TEST(BinaryFileIO, TellsOfFailures)
{
    TemporaryDirectory const folder;
    BufferedBinaryFileReader reader(folder.Write("short", "\0\0\0\1\0\0"s).c_str());
    int values[2] = {7, 7};
    EXPECT_TRUE(BinaryFileIO::readInt32s(reader, nullptr, 0));
    EXPECT_FALSE(BinaryFileIO::readInt32s(reader, values, 2));
    EXPECT_FALSE(BinaryFileIO::readInt32s(reader, nullptr, 0)) << "The reader is not good.";

    // A count of bytes that is no int must not become a small one.
    for (int const count : {std::numeric_limits<int>::max() / 4 + 1, std::numeric_limits<int>::min(), -1})
    {
        reader.seekg(0);
        EXPECT_FALSE(BinaryFileIO::readInt32s(reader, values, count)) << count;
        EXPECT_EQ(reader.tellg(), 0) << count;
    }

    std::ostringstream out;
    EXPECT_FALSE(BinaryFileIO::writeInt32s(out, values, -1));
    EXPECT_FALSE(BinaryFileIO::writeChars(out, "x", -1));
    EXPECT_EQ(out.str(), "");
    EXPECT_TRUE(values[0] == 7 && values[1] == 7);
    out.setstate(std::ios::eofbit); // any flag counts
    EXPECT_FALSE(BinaryFileIO::writeInt32(out, 1));
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
