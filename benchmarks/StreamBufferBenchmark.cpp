#include "Batch.h"

#include "orv/serialization/BZip2Buf.h"
#include "orv/serialization/Base64Buf.h"

#include <Poco/Base64Decoder.h>
#include <Poco/Base64Encoder.h>
#include <boost/archive/iterators/base64_from_binary.hpp>
#include <boost/archive/iterators/insert_linebreaks.hpp>
#include <boost/archive/iterators/transform_width.hpp>
#include <bzlib.h>
#include <openssl/evp.h>

#include <algorithm>
#include <cstdio>
#include <istream>
#include <iterator>
#include <ostream>
#include <string>

// Large data through the stream buffers, from memory to memory.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

// Reads and writes `memory`, which is large enough and stays where it is.
class Memory : public std::streambuf
{
public:
    explicit Memory(std::string& memory)
    {
        char* const begin = memory.data();
        setp(begin, begin + memory.size());
        setg(begin, begin, begin + memory.size());
    }

    std::size_t Written() const { return static_cast<std::size_t>(pptr() - pbase()); }
};

void CountBytes(benchmark::State& state, std::string const& bytes)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * std::ssize(bytes));
}

// ---- base64 of 64 MiB ----

// Full lines, so that text with and without padding and line ends differs in nothing but line ends.
constexpr std::size_t LineBytes = 48;

std::string const& Bytes()
{
    static std::string const bytes = [] {
        Random random(1);
        std::string made(64u * 1024 * 1024 / LineBytes * LineBytes, '\0');
        for (char& byte : made)
            byte = static_cast<char>(random.Engine()());
        return made;
    }();
    return bytes;
}

std::size_t EncodeOurs(std::string const& bytes, std::string& text)
{
    Memory target(text);
    Base64Buf buffer(&target);
    buffer.sputn(bytes.data(), std::ssize(bytes));
    buffer.pubsync();
    return target.Written();
}

// As its documentation shows it.
std::size_t EncodeBoost(std::string const& bytes, std::string& text)
{
    namespace Iterators = boost::archive::iterators;
    using Encoder = Iterators::insert_linebreaks<
        Iterators::base64_from_binary<Iterators::transform_width<char const*, 6, 8>>, 64>;
    Memory target(text);
    std::ostream stream(&target);
    char const* const begin = bytes.data();
    std::copy(Encoder(begin), Encoder(begin + bytes.size()), std::ostream_iterator<char>(stream));
    return target.Written();
}

std::size_t EncodePoco(std::string const& bytes, std::string& text)
{
    Memory target(text);
    std::ostream stream(&target);
    Poco::Base64Encoder encoder(stream);
    encoder.write(bytes.data(), std::ssize(bytes));
    encoder.close();
    return target.Written();
}

std::size_t EncodeOpenSSL(std::string const& bytes, std::string& text)
{
    auto* const to = reinterpret_cast<unsigned char*>(text.data());
    auto const* const from = reinterpret_cast<unsigned char const*>(bytes.data());
    return static_cast<std::size_t>(EVP_EncodeBlock(to, from, static_cast<int>(bytes.size())));
}

std::size_t DecodeOurs(std::string& text, std::string& bytes)
{
    Memory source(text);
    Base64Buf buffer(&source);
    return static_cast<std::size_t>(buffer.sgetn(bytes.data(), std::ssize(bytes)));
}

std::size_t DecodePoco(std::string& text, std::string& bytes)
{
    Memory source(text);
    std::istream stream(&source);
    Poco::Base64Decoder decoder(stream);
    decoder.read(bytes.data(), std::ssize(bytes));
    return static_cast<std::size_t>(decoder.gcount());
}

std::size_t DecodeOpenSSL(std::string& text, std::string& bytes)
{
    EVP_ENCODE_CTX* const context = EVP_ENCODE_CTX_new();
    EVP_DecodeInit(context);
    auto* const to = reinterpret_cast<unsigned char*>(bytes.data());
    int size = 0, rest = 0;
    EVP_DecodeUpdate(context, to, &size, reinterpret_cast<unsigned char*>(text.data()),
                     static_cast<int>(text.size()));
    EVP_DecodeFinal(context, to + size, &rest);
    EVP_ENCODE_CTX_free(context);
    return static_cast<std::size_t>(size + rest);
}

template<class Encode>
void MeasureEncode(benchmark::State& state, Encode encode)
{
    std::string const& bytes = Bytes();
    std::string text(bytes.size() / 2 * 3, '\0');
    std::string read(bytes.size(), '\0');
    std::string encoded(text.data(), encode(bytes, text));
    if (!Holds(state, DecodeOurs(encoded, read) == bytes.size() && read == bytes))
        return;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(encode(bytes, text));
    CountBytes(state, bytes);
}
BENCHMARK_CAPTURE(MeasureEncode, , EncodeOurs)->Name("base64.encode/ours");
BENCHMARK_CAPTURE(MeasureEncode, , EncodeBoost)->Name("base64.encode/boost");
BENCHMARK_CAPTURE(MeasureEncode, , EncodePoco)->Name("base64.encode/poco");
BENCHMARK_CAPTURE(MeasureEncode, , EncodeOpenSSL)->Name("base64.encode/openssl");

template<class Decode>
void MeasureDecode(benchmark::State& state, Decode decode)
{
    std::string const& bytes = Bytes();
    std::string text(bytes.size() / 2 * 3, '\0');
    text.resize(EncodeOurs(bytes, text));
    std::string read(bytes.size(), '\0');
    if (!Holds(state, decode(text, read) == bytes.size() && read == bytes))
        return;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(decode(text, read));
    CountBytes(state, bytes);
}
BENCHMARK_CAPTURE(MeasureDecode, , DecodeOurs)->Name("base64.decode/ours");
BENCHMARK_CAPTURE(MeasureDecode, , DecodePoco)->Name("base64.decode/poco");
BENCHMARK_CAPTURE(MeasureDecode, , DecodeOpenSSL)->Name("base64.decode/openssl");

// ---- bzip2 of 16 MiB of numbers ----

constexpr int BlockSize100k = 9;

std::string const& Numbers()
{
    static std::string const numbers = [] {
        constexpr std::size_t size = 16u * 1024 * 1024;
        Random random(2);
        std::string made;
        double value = 1000.0;
        char number[32];
        while (made.size() < size)
        {
            value += random.Between(-1.0, 1.0);
            std::snprintf(number, sizeof number, "%.1f%c", value,
                          random.Between(std::int64_t(0), 9) == 0 ? '\n' : ' ');
            made += number;
        }
        made.resize(size);
        return made;
    }();
    return numbers;
}

void WriteBlocks(std::streambuf& buffer, std::string const& bytes)
{
    buffer.sputn(bytes.data(), std::ssize(bytes));
}

void WriteBytes(std::streambuf& buffer, std::string const& bytes)
{
    for (char const byte : bytes)
        buffer.sputc(byte);
}

void ReadBlocks(std::streambuf& buffer, std::string& bytes)
{
    buffer.sgetn(bytes.data(), std::ssize(bytes));
}

void ReadBytes(std::streambuf& buffer, std::string& bytes)
{
    for (char& byte : bytes)
        byte = static_cast<char>(buffer.sbumpc());
}

template<auto Write>
std::size_t CompressOurs(std::string const& bytes, std::string& stored)
{
    Memory target(stored);
    BZip2Buf buffer(&target, BlockSize100k, false);
    Write(buffer, bytes);
    buffer.close();
    return target.Written();
}

std::size_t CompressDirectly(std::string const& bytes, std::string& stored)
{
    auto size = static_cast<unsigned>(stored.size());
    BZ2_bzBuffToBuffCompress(stored.data(), &size, const_cast<char*>(bytes.data()),
                             static_cast<unsigned>(bytes.size()), BlockSize100k, 0, 0);
    return size;
}

template<auto Read>
void DecompressOurs(std::string& stored, std::string& bytes)
{
    Memory source(stored);
    BZip2Buf buffer(&source, BlockSize100k, false);
    Read(buffer, bytes);
    buffer.sgetc(); // the end, and the checksum before it
}

void DecompressDirectly(std::string& stored, std::string& bytes)
{
    auto size = static_cast<unsigned>(bytes.size());
    BZ2_bzBuffToBuffDecompress(bytes.data(), &size, stored.data(), static_cast<unsigned>(stored.size()), 0,
                               0);
}

template<class Compress>
void MeasureCompress(benchmark::State& state, Compress compress)
{
    std::string const& bytes = Numbers();
    std::string stored(bytes.size(), '\0'), expected(bytes.size(), '\0');
    stored.resize(compress(bytes, stored));
    expected.resize(CompressDirectly(bytes, expected));
    if (!Holds(state, stored == expected))
        return;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(compress(bytes, stored));
    CountBytes(state, bytes);
}
BENCHMARK_CAPTURE(MeasureCompress, , CompressOurs<WriteBlocks>)->Name("bzip2.write.blocks/ours");
BENCHMARK_CAPTURE(MeasureCompress, , CompressDirectly)->Name("bzip2.write.blocks/libbz2");
BENCHMARK_CAPTURE(MeasureCompress, , CompressOurs<WriteBytes>)->Name("bzip2.write.bytes/ours");
BENCHMARK_CAPTURE(MeasureCompress, , CompressDirectly)->Name("bzip2.write.bytes/libbz2");

template<class Decompress>
void MeasureDecompress(benchmark::State& state, Decompress decompress)
{
    std::string const& bytes = Numbers();
    std::string stored(bytes.size(), '\0'), read(bytes.size(), '\0');
    stored.resize(CompressDirectly(bytes, stored));
    decompress(stored, read);
    if (!Holds(state, read == bytes))
        return;
    for ([[maybe_unused]] auto _ : state)
        decompress(stored, read);
    CountBytes(state, bytes);
}
BENCHMARK_CAPTURE(MeasureDecompress, , DecompressOurs<ReadBlocks>)->Name("bzip2.read.blocks/ours");
BENCHMARK_CAPTURE(MeasureDecompress, , DecompressDirectly)->Name("bzip2.read.blocks/libbz2");
BENCHMARK_CAPTURE(MeasureDecompress, , DecompressOurs<ReadBytes>)->Name("bzip2.read.bytes/ours");
BENCHMARK_CAPTURE(MeasureDecompress, , DecompressDirectly)->Name("bzip2.read.bytes/libbz2");

} // namespace
