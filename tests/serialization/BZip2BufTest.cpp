#include "orv/serialization/BZip2Buf.h"
#include "orv/serialization/BZip2Utility.h"

#include "tests/serialization/StreamBuffers.h"
#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>

namespace Zan::Orv::Core::Service::Tests {

namespace {

std::string const emptyStream("BZh1\x17\x72\x45\x38\x50\x90\0\0\0\0", 14);
std::string const
    helloStream("BZh11AY&SY\x19\x31\x65\x3D\0\0\0\x81\0\x02\x44\xA0\0\x21\x9A\x68\x33\x4D\x07\x33"
                "\x8B\xB9\x22\x9C\x28\x48\x0C\x98\xB2\x9E\x80",
                41);

TEST(BZip2Buf, StoredForm)
{
    EXPECT_EQ(Wrap("", "z"), emptyStream);
    EXPECT_EQ(Wrap("hello", "z"), helloStream);
    // One stream and nothing behind it.
    EXPECT_EQ(Unwrap(helloStream + helloStream, "z"), "hello");
    EXPECT_EQ(Unwrap(helloStream + "BZh9 is no stream", "z"), "hello");
}

TEST(BZip2Buf, EverySizeComesBack)
{
    for (std::size_t const size : {1u, 4096u, 4097u, 300'000u})
    {
        std::string const bytes = RandomBytes(size);
        std::stringbuf target;
        {
            BZip2Buf writer(&target, 9, false);
            for (char const byte : bytes)
                writer.sputc(byte);
        }
        EXPECT_EQ(target.str()[3], '9');
        BZip2Buf reader(&target, 1, true);
        EXPECT_TRUE(std::string(std::istreambuf_iterator<char>(&reader), {}) == bytes) << size;
        EXPECT_TRUE(Unwrap(Wrap(bytes, "z"), "z") == bytes) << size;
    }
}

TEST(BZip2Buf, RefusesWhatIsNoBZip2)
{
    auto const refuses = [](std::string const& stored, std::string const& what) {
        return Throws<std::runtime_error>([&] { Unwrap(stored, "z"); }, what);
    };
    EXPECT_TRUE(refuses("BZh0", "BZip2: Not a bzip2 data stream"));
    std::string const stored = Wrap(RandomBytes(10'000), "z");
    for (std::size_t size = 0; size < stored.size(); size += 97)
        EXPECT_TRUE(refuses(stored.substr(0, size), "BZip2: Unexpected end of input")) << size;

    std::stringbuf target("BZh9 plain text" + helloStream);
    BZip2Buf buffer(&target, 1, false);
    for (int i = 0; i < 3; ++i) // a failure stays
        EXPECT_TRUE(Throws<std::runtime_error>([&] { buffer.sgetc(); }, "BZip2: Corrupt bzip2 data stream"));
    for (int const blockSize : {0, 10})
        EXPECT_TRUE(Throws<std::runtime_error>([&] { BZip2Buf(&target, blockSize, false); },
                                               "BZip2: Failed to initialize compression system"))
            << blockSize;
}

TEST(BZip2Buf, Closing)
{
    LimitedTarget target;
    BZip2Buf writer(&target, 1, false);
    writer.sputn("hel", 3);
    EXPECT_EQ(writer.pubsync(), 0);
    EXPECT_EQ(target.syncs, 1);
    EXPECT_EQ(target.text, ""); // it rests in the compressor
    writer.sputn("lo", 2);
    writer.close();
    writer.close();
    EXPECT_EQ(target.text, helloStream);
    EXPECT_EQ(target.syncs, 2);
    EXPECT_EQ(writer.sputn(RandomBytes(5000).data(), 5000), 4096);
    EXPECT_EQ(writer.pubsync(), -1);
    EXPECT_EQ(writer.sgetc(), std::char_traits<char>::eof());
    EXPECT_TRUE(writer.good()); // the target has refused nothing

    // Whoever stops in the middle has what was decompressed, and leaves an empty stream on the target.
    std::string const stored = Wrap(RandomBytes(5000), "z");
    std::stringbuf source(stored, std::ios::in | std::ios::out | std::ios::ate);
    BZip2Buf reader(&source, 1, false);
    reader.sbumpc();
    reader.close();
    EXPECT_EQ(source.str(), stored + emptyStream);
    std::string bytes(5000, '\0');
    EXPECT_EQ(reader.sgetn(bytes.data(), 5000), 4095);
}

TEST(BZip2Buf, ClosingOnATargetThatFails)
{
    // Fails at the stream's end, and before it at a full block.
    for (auto const& [size, throws] : {std::pair(0u, false), {0u, true}, {101'000u, false}, {101'000u, true}})
    {
        LimitedTarget target(10, throws);
        EXPECT_NO_THROW(BZip2Buf(&target, 1, false)); // which keeps it to itself at its end
        target.text.clear();
        BZip2Buf buffer(&target, 1, false);
        buffer.sputn(RandomBytes(size).data(), size);
        EXPECT_EQ(static_cast<bool>(Throws<std::runtime_error>([&] { buffer.close(); }, "full")), throws);
        target.limit = 100;
        buffer.close();
        EXPECT_EQ(target.text.size(), 10u);
        EXPECT_FALSE(buffer.good());
    }
}

TEST(BZip2Utility, FromMemoryToMemory)
{
    enum Result // of bzlib.h
    {
        Ok = 0,
        ParameterError = -2,
        Full = -8
    };
    std::string memory(205'000, '\0');
    unsigned size = 0;
    auto const pass = [&](auto function, std::string const& from, unsigned capacity, auto... options) {
        size = capacity;
        return function(memory.data(), &size, from.data(), static_cast<unsigned>(from.size()), options...);
    };
    auto const compress = BZip2Utility::BuffToBuffCompress;
    auto const decompress = BZip2Utility::BuffToBuffDecompress;

    std::string const bytes = RandomBytes(5000) + std::string(200'000, 'x');
    EXPECT_EQ(pass(compress, bytes, 10'000, 1, 0, 0), Ok);
    std::string const stored = memory.substr(0, size);
    EXPECT_EQ(stored, Wrap(bytes, "z"));
    EXPECT_EQ(pass(compress, bytes, size - 1, 1, 0, 250), Full);
    EXPECT_EQ(pass(decompress, stored + "behind", 205'000, 0, 0), Ok);
    EXPECT_TRUE(memory == bytes);
    EXPECT_EQ(pass(decompress, helloStream, 4, 1, 0), Full);
    EXPECT_EQ(size, 4u);
    // Cut short, without the head of a stream, and damaged.
    for (auto const& [damaged, result] :
         {std::pair(helloStream.substr(0, 40), -7), {"hello", -5}, {"BZh9 plain text", -4}})
        EXPECT_EQ(pass(decompress, damaged, 100, 1, 0), result) << damaged;

    for (auto const& [blockSize, verbosity, workFactor] :
         {std::array{0, 0, 0}, {10, 0, 0}, {1, 5, 0}, {1, 0, -1}, {1, 0, 251}})
        EXPECT_EQ(pass(compress, bytes, 100, blockSize, verbosity, workFactor), ParameterError);
    EXPECT_EQ(pass(decompress, helloStream, 100, 2, 0), ParameterError);
    EXPECT_EQ(pass(decompress, helloStream, 100, 0, 5), ParameterError);
    EXPECT_EQ(compress(nullptr, &size, "", 0, 9, 0, 0), ParameterError);
    EXPECT_EQ(decompress(memory.data(), nullptr, "", 0, 0, 0), ParameterError);
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
