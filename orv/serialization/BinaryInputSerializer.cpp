#include "orv/serialization/BinaryInputSerializer.h"

#include "orv/serialization/internal/BigEndian.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>

namespace Zan::Orv::Core::Service {

using Internal::AsUnsigned;

namespace {

// A string that does not lie in the stream's buffer is read in blocks: its length is only a promise.
void ReadInBlocks(std::istream& stream, std::size_t length, std::string& value)
{
    constexpr std::size_t blockSize = 1 << 16;
    std::string text;
    while (text.size() < length)
    {
        std::size_t const before = text.size();
        std::size_t const step = std::min(length - before, blockSize);
        text.resize(before + step);
        if (!Internal::ReadBytes(stream, text.data() + before, step))
            return;
    }
    value = std::move(text);
}

} // namespace

BinaryInputSerializer::BinaryInputSerializer(std::istream& stream) : stream_(stream)
{}

BinaryInputSerializer::~BinaryInputSerializer() = default;

bool BinaryInputSerializer::IsReading() const
{
    return true;
}

bool BinaryInputSerializer::IsWriting() const
{
    return false;
}

bool BinaryInputSerializer::IsExhausted() const
{
    return stream_.fail();
}

std::size_t BinaryInputSerializer::BytesAhead() const
{
    return Internal::BytesAhead(stream_);
}

template<class Unsigned, class T>
void BinaryInputSerializer::Read(T& value)
{
    Unsigned bits;
    if (Internal::ReadBigEndian(stream_, bits))
        value = std::bit_cast<T>(bits);
}

void BinaryInputSerializer::Scalar(char const*, std::size_t, std::string& value)
{
    unsigned int length = 0;
    Scalar(nullptr, 0, length);
    if (char const* const text = Internal::TakeBytes(stream_, length))
        value.assign(text, length);
    else if (!stream_.fail())
        ReadInBlocks(stream_, length, value);
}

void BinaryInputSerializer::Scalar(char const*, std::size_t, double& value)
{
    Read<std::uint64_t>(value);
}

void BinaryInputSerializer::Scalar(char const*, std::size_t, float& value)
{
    Read<std::uint32_t>(value);
}

void BinaryInputSerializer::Scalar(char const*, std::size_t, unsigned long long& value)
{
    Read<unsigned long long>(value);
}

void BinaryInputSerializer::Scalar(char const*, std::size_t, long long& value)
{
    Scalar(nullptr, 0, AsUnsigned(value));
}

void BinaryInputSerializer::Scalar(char const*, std::size_t, unsigned int& value)
{
    Read<unsigned int>(value);
}

void BinaryInputSerializer::Scalar(char const*, std::size_t, int& value)
{
    Scalar(nullptr, 0, AsUnsigned(value));
}

void BinaryInputSerializer::Scalar(char const*, std::size_t, unsigned short& value)
{
    Read<unsigned short>(value);
}

void BinaryInputSerializer::Scalar(char const*, std::size_t, short& value)
{
    Scalar(nullptr, 0, AsUnsigned(value));
}

void BinaryInputSerializer::Scalar(char const*, std::size_t, unsigned char& value)
{
    Read<unsigned char>(value);
}

void BinaryInputSerializer::Scalar(char const*, std::size_t, signed char& value)
{
    Scalar(nullptr, 0, AsUnsigned(value));
}

void BinaryInputSerializer::Scalar(char const*, std::size_t, bool& value)
{
    int number = value ? 1 : 0;
    Scalar(nullptr, 0, number);
    value = number != 0;
}

void BinaryInputSerializer::StartArray(char const*, std::size_t, std::size_t& count)
{
    unsigned int number = 0;
    Scalar(nullptr, 0, number);
    count = number;
}

void BinaryInputSerializer::EndArray(char const*)
{}

void BinaryInputSerializer::StartObject(char const*, std::size_t, std::string& className, int& id)
{
    Scalar(nullptr, 0, className);
    Scalar(nullptr, 0, id);
}

void BinaryInputSerializer::EndObject(char const*)
{}

} // namespace Zan::Orv::Core::Service
