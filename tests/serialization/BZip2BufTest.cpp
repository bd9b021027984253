#include "orv/serialization/BZip2Buf.h"
#include "orv/serialization/BZip2Utility.h"

#include "tests/serialization/StreamBuffers.h"
#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(Unwrap(emptyStream, "z"), "");
    // One stream and nothing behind it.
    EXPECT_EQ(Unwrap(helloStream + helloStream, "z"), "hello");
    EXPECT_EQ(Unwrap(helloStream + "BZh9 is no stream", "z"), "hello");
}

TEST(BZip2Buf, EverySizeComesBack)
{
    for (std::size_t const size : {1u, 4095u, 4096u, 4097u, 99'981u, 300'000u})
    {
        for (std::string const& bytes : {RandomBytes(size), std::string(size, 'x')})
        {
            EXPECT_TRUE(Unwrap(Wrap(bytes, "z"), "z") == bytes) << size;

            std::stringbuf target;
            {
                BZip2Buf writer(&target, 9, false);
                for (char const byte : bytes)
                    writer.sputc(byte);
            }
            EXPECT_EQ(target.str()[3], '9');
            BZip2Buf reader(&target, 1, true);
            EXPECT_TRUE(std::string(std::istreambuf_iterator<char>(&reader), {}) == bytes) << size;
        }
    }
}

TEST(BZip2Buf, RefusesWhatIsNoBZip2)
{
    auto const refuses = [](std::string const& stored, std::string const& what) {
        return Throws<std::runtime_error>([&] { Unwrap(stored, "z"); }, what);
    };
    for (std::string const stored : {"plain text", "BZ0", "BZh0", "BZhx"})
        EXPECT_TRUE(refuses(stored, "BZip2: Not a bzip2 data stream")) << stored;
    EXPECT_TRUE(refuses("BZh9 plain text", "BZip2: Corrupt bzip2 data stream"));

    std::string const stored = Wrap(RandomBytes(10'000), "z");
    for (std::size_t size = 0; size < stored.size(); size += size < 100 ? 1 : 97)
        EXPECT_TRUE(refuses(stored.substr(0, size), "BZip2: Unexpected end of input")) << size;

    // A flipped bit is refused, or it is one that does not matter.
    for (std::size_t bit = 0; bit < 8 * helloStream.size(); ++bit)
    {
        std::string damaged = helloStream;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
        try
        {
            EXPECT_EQ(Unwrap(damaged, "z"), "hello") << bit;
        }
        catch (std::runtime_error const&)
        {}
    }

    std::stringbuf target("BZh9 plain text" + helloStream);
    BZip2Buf buffer(&target, 1, false);
    for (int i = 0; i < 3; ++i) // a failure stays
        EXPECT_TRUE(Throws<std::runtime_error>([&] { buffer.sgetc(); }, "BZip2: Corrupt bzip2 data stream"));
    for (int const blockSize : {-1, 0, 10})
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

    // Whoever stops in the middle has what was decompressed, and leaves an empty stream on the target.
    std::string const stored = Wrap(RandomBytes(5000), "z");
    for (std::streamsize const size : {0, 1, 5000})
    {
        std::stringbuf source(stored, std::ios::in | std::ios::out | std::ios::ate);
        BZip2Buf reader(&source, 1, false);
        std::string bytes(5000, '\0');
        EXPECT_EQ(reader.sgetn(bytes.data(), size), size);
        reader.close();
        EXPECT_EQ(source.str(), size == 5000 ? stored : stored + emptyStream) << size;
        EXPECT_EQ(reader.sgetn(bytes.data(), 5000), size == 1 ? 4095 : 0);
    }
}

TEST(BZip2Buf, ClosingOnATargetThatThrows)
{
    for (std::size_t const size : {0u, 101'000u}) // throws at the stream's end, and before it at a full block
    {
        LimitedTarget target(10, true);
        BZip2Buf buffer(&target, 1, false);
        buffer.sputn(RandomBytes(size).data(), static_cast<std::streamsize>(size));
        EXPECT_EQ(target.text, "");
        EXPECT_TRUE(Throws<std::runtime_error>([&] { buffer.close(); }, "full"));
        target.limit = 100;
        buffer.close();
        EXPECT_EQ(target.text.size(), 10u);
    }
}

TEST(BZip2Utility, FromMemoryToMemory)
{
    enum Result // of bzlib.h
    {
        Ok = 0,
        ParameterError = -2,
        DataError = -4,
        NoMagic = -5,
        UnexpectedEnd = -7,
        Full = -8
    };
    std::string const bytes = RandomBytes(5000) + std::string(200'000, 'x');
    std::string memory(bytes.size(), '\0');
    unsigned size = 0;
    auto const compress = [&](unsigned capacity, int blockSize = 1, int verbosity = 0, int workFactor = 0) {
        size = capacity;
        return BZip2Utility::BuffToBuffCompress(memory.data(), &size, bytes.data(),
                                                static_cast<unsigned>(bytes.size()), blockSize, verbosity,
                                                workFactor);
    };
    auto const decompress = [&](std::string const& from, unsigned capacity, int small = 1,
                                int verbosity = 0) {
        size = capacity;
        return BZip2Utility::BuffToBuffDecompress(memory.data(), &size, from.data(),
                                                  static_cast<unsigned>(from.size()), small, verbosity);
    };

    EXPECT_EQ(compress(10'000), Ok);
    std::string const stored = memory.substr(0, size);
    EXPECT_EQ(stored, Wrap(bytes, "z"));
    EXPECT_EQ(compress(size - 1, 1, 0, 250), Full);
    EXPECT_EQ(compress(0), Full);
    EXPECT_EQ(decompress(stored + "behind", static_cast<unsigned>(bytes.size()), 0), Ok);
    EXPECT_TRUE(memory == bytes);
    EXPECT_EQ(decompress(helloStream, 100), Ok);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(decompress(helloStream, 4), Full);
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(decompress(helloStream.substr(0, 40), 100), UnexpectedEnd);
    EXPECT_EQ(decompress("", 100), UnexpectedEnd);
    EXPECT_EQ(decompress("hello", 100), NoMagic);
    EXPECT_EQ(decompress("BZh9 plain text", 100), DataError);

    for (int const result :
         {compress(100, 0), compress(100, 10), compress(100, 1, -1), compress(100, 1, 5),
          compress(100, 1, 0, -1), compress(100, 1, 0, 251), decompress(helloStream, 100, 2),
          decompress(helloStream, 100, -1), decompress(helloStream, 100, 0, 5),
          BZip2Utility::BuffToBuffCompress(nullptr, &size, "", 0, 9, 0, 0),
          BZip2Utility::BuffToBuffDecompress(memory.data(), nullptr, "", 0, 0, 0)})
        EXPECT_EQ(result, ParameterError);
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
