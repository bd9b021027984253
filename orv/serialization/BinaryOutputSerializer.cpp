#include "orv/serialization/BinaryOutputSerializer.h"

#include "orv/serialization/internal/BigEndian.h"

#include <bit>
#include <cstdint>

namespace Zan::Orv::Core::Service {

using Internal::AsUnsigned;
using Internal::WriteBigEndian;

BinaryOutputSerializer::BinaryOutputSerializer(std::ostream& stream) : stream_(stream)
{}

BinaryOutputSerializer::~BinaryOutputSerializer() = default;

bool BinaryOutputSerializer::IsReading() const
{
    return false;
}

bool BinaryOutputSerializer::IsWriting() const
{
    return true;
}

void BinaryOutputSerializer::Scalar(char const*, std::size_t, std::string& value)
{
    auto length = static_cast<std::uint32_t>(value.size());
    Scalar(nullptr, 0, length);
    Internal::WriteBytes(stream_, value.data(), length);
}

void BinaryOutputSerializer::Scalar(char const*, std::size_t, double& value)
{
    WriteBigEndian(stream_, std::bit_cast<std::uint64_t>(value));
}

void BinaryOutputSerializer::Scalar(char const*, std::size_t, float& value)
{
    WriteBigEndian(stream_, std::bit_cast<std::uint32_t>(value));
}

void BinaryOutputSerializer::Scalar(char const*, std::size_t, unsigned long long& value)
{
    WriteBigEndian(stream_, value);
}

void BinaryOutputSerializer::Scalar(char const*, std::size_t, long long& value)
{
    Scalar(nullptr, 0, AsUnsigned(value));
}

void BinaryOutputSerializer::Scalar(char const*, std::size_t, unsigned int& value)
{
    WriteBigEndian(stream_, value);
}

void BinaryOutputSerializer::Scalar(char const*, std::size_t, int& value)
{
    Scalar(nullptr, 0, AsUnsigned(value));
}

void BinaryOutputSerializer::Scalar(char const*, std::size_t, unsigned short& value)
{
    WriteBigEndian(stream_, value);
}

void BinaryOutputSerializer::Scalar(char const*, std::size_t, short& value)
{
    Scalar(nullptr, 0, AsUnsigned(value));
}

void BinaryOutputSerializer::Scalar(char const*, std::size_t, unsigned char& value)
{
    WriteBigEndian(stream_, value);
}

void BinaryOutputSerializer::Scalar(char const*, std::size_t, signed char& value)
{
    Scalar(nullptr, 0, AsUnsigned(value));
}

void BinaryOutputSerializer::Scalar(char const*, std::size_t, bool& value)
{
    int number = value ? 1 : 0;
    Scalar(nullptr, 0, number);
}

void BinaryOutputSerializer::StartArray(char const*, std::size_t, std::size_t& count)
{
    auto number = static_cast<std::uint32_t>(count);
    Scalar(nullptr, 0, number);
}

void BinaryOutputSerializer::EndArray(char const*)
{}

void BinaryOutputSerializer::StartObject(char const*, std::size_t, std::string& className, int& id)
{
    Scalar(nullptr, 0, className);
    Scalar(nullptr, 0, id);
}

void BinaryOutputSerializer::EndObject(char const*)
{}

} // namespace Zan::Orv::Core::Service
