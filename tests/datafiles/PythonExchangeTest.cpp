#include "orv/datafiles/BinaryFileIO.h"
#include "orv/datafiles/BufferedBinaryFileReader.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace Zan::Orv::Core::Service::Tests {
namespace {

// exchange.py reads the file by its own means, and writes one with each value negated.
TEST(BinaryFileIO, ExchangesFilesWithPython)
{
    TemporaryDirectory const folder;
    {
        std::ofstream file(folder / "ours", std::ios::binary);
        int whole[] = {1, -2, 2147483647};
        double real[] = {0.1, -1e300, 5e-324};
        EXPECT_TRUE(BinaryFileIO::writeChars(file, "DATA", 4));
        EXPECT_TRUE(BinaryFileIO::writeInt32s(file, whole, 3));
        EXPECT_TRUE(BinaryFileIO::writeFloat32(file, 0.1f));
        EXPECT_TRUE(BinaryFileIO::writeFloat64s(file, real, 3));
    }
    std::string const command =
        ORV_EXCHANGE_COMMAND " \"" + folder / "ours" + "\" \"" + folder / "theirs" + "\"";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;

    BufferedBinaryFileReader reader((folder / "theirs").c_str());
    char text[4] = {};
    int whole[3] = {};
    float single = 0;
    double real[3] = {};
    EXPECT_TRUE(BinaryFileIO::readChars(reader, text, 4));
    EXPECT_TRUE(BinaryFileIO::readInt32s(reader, whole, 3));
    EXPECT_TRUE(BinaryFileIO::readFloat32(reader, single));
    EXPECT_TRUE(BinaryFileIO::readFloat64s(reader, real, 3));
    EXPECT_TRUE(reader.eof());
    EXPECT_EQ(std::string(text, 4), "ATAD");
    EXPECT_TRUE(whole[0] == -1 && whole[1] == 2 && whole[2] == -2147483647);
    EXPECT_EQ(single, -0.1f);
    EXPECT_TRUE(real[0] == -0.1 && real[1] == 1e300 && real[2] == -5e-324);
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
