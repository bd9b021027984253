#include "orv/datafiles/BufferedBinaryFileReader.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace Zan::Orv::Core::Service::Tests {
namespace {

// A pipe has no positions. Opening one must not wait for somebody to write.
TEST(HostFiles, ThatArePipes)
{
    TemporaryDirectory const folder;
    std::string const name = folder / "pipe";
    ASSERT_EQ(::mkfifo(name.c_str(), 0600), 0);
    BufferedBinaryFileReader const reader(name.c_str());
    EXPECT_FALSE(reader.good());
    EXPECT_TRUE(reader.eof());
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
