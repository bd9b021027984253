#include "orv/datafiles/BinaryFileIO.h"

#include "orv/datafiles/BufferedBinaryFileReader.h"

#include <boost/endian/conversion.hpp>

#include <cstdint>
#include <cstring>
#include <limits>
#include <ostream>
#include <type_traits>
#include <typeinfo>

namespace Zan::Orv::Core::Service {

namespace {

static_assert(sizeof(int) == 4 && sizeof(float) == 4 && sizeof(double) == 8);
static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559);

// By way of integers: a float with its bytes reversed may be a NaN, whose bits do not survive every move.
template<class T>
void ReverseBytes(T& value)
{
    std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t> bits;
    std::memcpy(&bits, &value, sizeof value);
    bits = boost::endian::endian_reverse(bits);
    std::memcpy(&value, &bits, sizeof value);
}

template<class T>
void ReverseEach(T* values, int count)
{
    if constexpr (sizeof(T) > 1)
        for (int i = 0; i < count; ++i)
            ReverseBytes(values[i]);
}

// The reader over a file, and none derived from it, is called directly, with its short way compiled in: for
// one number, virtual calls take longer than all the rest.
bool ReadBytes(BinaryFileReader& reader, char* to, int count)
{
    if (&typeid(reader) == &typeid(BufferedBinaryFileReader)) [[likely]]
    {
        auto& file = static_cast<BufferedBinaryFileReader&>(reader);
        file.BufferedBinaryFileReader::read(to, count);
        return file.BufferedBinaryFileReader::good();
    }
    reader.read(to, count);
    return reader.good();
}

template<class T>
bool ReadOne(BinaryFileReader& reader, T& value)
{
    if (!ReadBytes(reader, reinterpret_cast<char*>(&value), sizeof value))
        return false;
    ReverseBytes(value);
    return true;
}

template<class T>
bool ReadMany(BinaryFileReader& reader, T* values, int count)
{
    if (count > std::numeric_limits<int>::max() / static_cast<int>(sizeof(T)))
        return false;
    // A negative count stays one, for the reader to refuse.
    int const bytes = count < 0 ? -1 : count * static_cast<int>(sizeof(T));
    if (!ReadBytes(reader, reinterpret_cast<char*>(values), bytes))
        return false;
    ReverseEach(values, count);
    return true;
}

template<class T>
bool Write(std::ostream& out, T* values, int count)
{
    if (count < 0)
        return false;
    out.write(reinterpret_cast<char const*>(values), static_cast<std::streamsize>(sizeof(T)) * count);
    return out.good();
}

template<class T>
bool WriteReversed(std::ostream& out, T* values, int count)
{
    ReverseEach(values, count);
    return Write(out, values, count);
}

} // namespace

bool BinaryFileIO::readChars(BinaryFileReader& reader, char* values, int count)
{
    return ReadMany(reader, values, count);
}

bool BinaryFileIO::readInt32(BinaryFileReader& reader, int& value)
{
    return ReadOne(reader, value);
}

bool BinaryFileIO::readFloat32(BinaryFileReader& reader, float& value)
{
    return ReadOne(reader, value);
}

bool BinaryFileIO::readFloat64(BinaryFileReader& reader, double& value)
{
    return ReadOne(reader, value);
}

bool BinaryFileIO::readInt32s(BinaryFileReader& reader, int* values, int count)
{
    return ReadMany(reader, values, count);
}

bool BinaryFileIO::readFloat32s(BinaryFileReader& reader, float* values, int count)
{
    return ReadMany(reader, values, count);
}

bool BinaryFileIO::readFloat64s(BinaryFileReader& reader, double* values, int count)
{
    return ReadMany(reader, values, count);
}

bool BinaryFileIO::writeChars(std::ostream& out, char const* values, int count)
{
    return Write(out, values, count);
}

bool BinaryFileIO::writeInt32(std::ostream& out, int value)
{
    return WriteReversed(out, &value, 1);
}

bool BinaryFileIO::writeFloat32(std::ostream& out, float value)
{
    return WriteReversed(out, &value, 1);
}

bool BinaryFileIO::writeFloat64(std::ostream& out, double value)
{
    return WriteReversed(out, &value, 1);
}

bool BinaryFileIO::writeInt32s(std::ostream& out, int* values, int count)
{
    return WriteReversed(out, values, count);
}

bool BinaryFileIO::writeFloat32s(std::ostream& out, float* values, int count)
{
    return WriteReversed(out, values, count);
}

bool BinaryFileIO::writeFloat64s(std::ostream& out, double* values, int count)
{
    return WriteReversed(out, values, count);
}

} // namespace Zan::Orv::Core::Service
