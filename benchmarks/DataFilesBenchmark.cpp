#include "Batch.h"

#include "orv/datafiles/BinaryFileIO.h"
#include "orv/datafiles/BufferedBinaryFileReader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

// A file of 256 MiB of doubles, most significant byte first, in the page cache: in blocks, value by value,
// and as two streams of records that take turns. And such doubles written.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

constexpr std::size_t ValueCount = std::size_t{32} << 20;
constexpr std::size_t BlockCount = 8192; // values in one block of 64 KiB

double ValueAt(std::size_t index)
{
    return static_cast<double>(index) + 0.25;
}

// What a program without the library would do.
double Reversed(double value)
{
    return std::bit_cast<double>(__builtin_bswap64(std::bit_cast<std::uint64_t>(value)));
}

// The file, made when it is first wanted and removed at the end.
class ResultFile
{
public:
    static std::string const& Path()
    {
        static ResultFile const file;
        return file.path_;
    }

private:
    ResultFile()
    {
        int number = 0;
        std::filesystem::path folder;
        do
            folder = std::filesystem::temp_directory_path() / ("orv-benchmark-" + std::to_string(number++));
        while (!std::filesystem::create_directory(folder));
        path_ = (folder / "values").string();
        std::ofstream file(path_, std::ios::binary);
        std::vector<double> block(BlockCount);
        for (std::size_t i = 0; i < ValueCount; i += BlockCount)
        {
            for (std::size_t k = 0; k < BlockCount; ++k)
                block[k] = Reversed(ValueAt(i + k));
            file.write(reinterpret_cast<char const*>(block.data()), BlockCount * sizeof(double));
        }
    }
    ~ResultFile() { std::filesystem::remove_all(std::filesystem::path(path_).parent_path()); }

    std::string path_;
};

// `read(values, count)` is asked for the whole file, `count` values at a time. Each value is looked at.
template<class Source, class Read>
void MeasureForward(benchmark::State& state, std::size_t count, Read read)
{
    std::vector<double> values(count);
    auto const pass = [&] {
        Source source(ResultFile::Path().c_str());
        bool good = true;
        for (std::size_t i = 0; i < ValueCount; i += count)
        {
            good = read(source, values.data()) && good;
            benchmark::DoNotOptimize(values.data());
            benchmark::ClobberMemory();
        }
        return good && values[count - 1] == ValueAt(ValueCount - 1);
    };
    if (!Holds(state, pass()))
        return;
    for ([[maybe_unused]] auto _ : state)
        pass();
}

struct BinaryStream : std::ifstream
{
    explicit BinaryStream(char const* path) : std::ifstream(path, std::ios::binary) {}

    bool Read(double* values, std::size_t count)
    {
        read(reinterpret_cast<char*>(values), static_cast<std::streamsize>(count * sizeof(double)));
        for (std::size_t i = 0; i < count; ++i)
            values[i] = Reversed(values[i]);
        return good();
    }
};

void BlocksOurs(benchmark::State& state)
{
    MeasureForward<BufferedBinaryFileReader>(state, BlockCount, [](auto& reader, double* values) {
        return BinaryFileIO::readFloat64s(reader, values, BlockCount);
    });
}
BENCHMARK(BlocksOurs)->Name("binaryfile.blocks/ours")->Unit(benchmark::kMillisecond);

void BlocksStream(benchmark::State& state)
{
    MeasureForward<BinaryStream>(
        state, BlockCount, [](auto& stream, double* values) { return stream.Read(values, BlockCount); });
}
BENCHMARK(BlocksStream)->Name("binaryfile.blocks/ifstream")->Unit(benchmark::kMillisecond);

void ValuesOurs(benchmark::State& state)
{
    MeasureForward<BufferedBinaryFileReader>(
        state, 1, [](auto& reader, double* value) { return BinaryFileIO::readFloat64(reader, *value); });
}
BENCHMARK(ValuesOurs)->Name("binaryfile.values/ours")->Unit(benchmark::kMillisecond);

void ValuesStream(benchmark::State& state)
{
    MeasureForward<BinaryStream>(state, 1, [](auto& stream, double* value) { return stream.Read(value, 1); });
}
BENCHMARK(ValuesStream)->Name("binaryfile.values/ifstream")->Unit(benchmark::kMillisecond);

// Records of 64 bytes, in turn from the front and from the middle of the file.
template<class Source, class Read>
void MeasureRecords(benchmark::State& state, Read read)
{
    using Record = std::array<double, 8>;
    constexpr std::size_t recordCount = ValueCount / std::tuple_size_v<Record> / 2;
    constexpr std::int64_t measured = 100'000;
    Source source(ResultFile::Path().c_str());
    Record record;
    std::size_t next = 0;
    auto const both = [&] {
        bool good = true;
        for (std::size_t const first : {std::size_t{0}, recordCount})
        {
            source.seekg(static_cast<long long>((first + next) * sizeof(Record)));
            good = read(source, record.data(), record.size()) && good;
            good = good && record[7] == ValueAt(8 * (first + next) + 7);
        }
        next = (next + 1) % recordCount;
        return good;
    };
    for ([[maybe_unused]] auto _ : state)
    {
        bool good = true;
        for (std::int64_t i = 0; i < measured; i += 2)
            good = both() && good;
        if (!Holds(state, good))
            return;
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * measured);
}

void RecordsOurs(benchmark::State& state)
{
    MeasureRecords<BufferedBinaryFileReader>(state, [](auto& reader, double* values, std::size_t count) {
        return BinaryFileIO::readFloat64s(reader, values, static_cast<int>(count));
    });
}
BENCHMARK(RecordsOurs)->Name("binaryfile.records/ours")->Unit(benchmark::kMillisecond);

void RecordsStream(benchmark::State& state)
{
    MeasureRecords<BinaryStream>(
        state, [](auto& stream, double* values, std::size_t count) { return stream.Read(values, count); });
}
BENCHMARK(RecordsStream)->Name("binaryfile.records/ifstream")->Unit(benchmark::kMillisecond);

// Keeps the last block that was written, at the cost of one copy.
class Sink : public std::streambuf
{
public:
    double Last() const
    {
        double value = 0.0;
        std::memcpy(&value, block_.data() + block_.size() - sizeof value, sizeof value);
        return value;
    }

private:
    std::streamsize xsputn(char const* bytes, std::streamsize count) override
    {
        std::memcpy(block_.data(), bytes, static_cast<std::size_t>(count));
        return count;
    }

    std::vector<char> block_ = std::vector<char>(BlockCount * sizeof(double));
};

// A block is computed, here by a fill, and written.
template<class Write>
void MeasureWrite(benchmark::State& state, Write write)
{
    Sink sink;
    std::ostream out(&sink);
    std::vector<double> values(BlockCount);
    auto const block = [&] {
        std::fill(values.begin(), values.end(), ValueAt(7));
        benchmark::DoNotOptimize(values.data());
        return write(out, values);
    };
    if (!Holds(state, block() && sink.Last() == Reversed(ValueAt(7))))
        return;
    for ([[maybe_unused]] auto _ : state)
        block();
}

void WriteOurs(benchmark::State& state)
{
    MeasureWrite(state, [](std::ostream& out, std::vector<double>& values) {
        return BinaryFileIO::writeFloat64s(out, values.data(), BlockCount);
    });
}
BENCHMARK(WriteOurs)->Name("binaryfile.write/ours")->Unit(benchmark::kMicrosecond);

void WriteStream(benchmark::State& state)
{
    std::vector<double> copy(BlockCount);
    MeasureWrite(state, [&](std::ostream& out, std::vector<double> const& values) {
        std::memcpy(copy.data(), values.data(), BlockCount * sizeof(double));
        for (double& value : copy)
            value = Reversed(value);
        out.write(reinterpret_cast<char const*>(copy.data()), BlockCount * sizeof(double));
        return out.good();
    });
}
BENCHMARK(WriteStream)->Name("binaryfile.write/ostream")->Unit(benchmark::kMicrosecond);

} // namespace
