#include "orv/serialization/StreamOutputSerializer.h"

#include "orv/foundation/internal/NumberText.h"
#include "orv/serialization/internal/StreamText.h"

#include <cstdint>
#include <ostream>

namespace Zan::Orv::Core::Service {

StreamOutputSerializer::StreamOutputSerializer(std::ostream& stream) : stream_(stream)
{}

StreamOutputSerializer::~StreamOutputSerializer() = default;

bool StreamOutputSerializer::IsReading() const
{
    return false;
}

bool StreamOutputSerializer::IsWriting() const
{
    return true;
}

void StreamOutputSerializer::Flush()
{
    text_ += '\n';
    Internal::WriteAndClear(stream_, text_);
}

template<class T>
void StreamOutputSerializer::WriteInteger(T value)
{
    Internal::AppendInteger(text_, stream_, value);
    Flush();
}

void StreamOutputSerializer::WriteNumber(double value)
{
    char buffer[Internal::MaxIEEEText];
    text_.append(buffer, Internal::WriteIEEE(buffer, value));
    Flush();
}

void StreamOutputSerializer::Scalar(char const*, std::size_t, std::string& value)
{
    // A line feed would end the line, and the backslash is what tells one from a real one.
    std::size_t copied = 0;
    for (std::size_t found = value.find_first_of("\n\\"); found != std::string::npos;
         found = value.find_first_of("\n\\", copied))
    {
        text_.append(value, copied, found - copied);
        text_ += '\\';
        text_ += value[found] == '\n' ? 'n' : '\\';
        copied = found + 1;
    }
    text_.append(value, copied, std::string::npos);
    Flush();
}

void StreamOutputSerializer::Scalar(char const*, std::size_t, double& value)
{
    WriteNumber(value);
}

void StreamOutputSerializer::Scalar(char const*, std::size_t, float& value)
{
    WriteNumber(static_cast<double>(value));
}

void StreamOutputSerializer::Scalar(char const*, std::size_t, unsigned long long& value)
{
    WriteInteger(value);
}

void StreamOutputSerializer::Scalar(char const*, std::size_t, long long& value)
{
    WriteInteger(value);
}

void StreamOutputSerializer::Scalar(char const*, std::size_t, unsigned int& value)
{
    WriteInteger(value);
}

void StreamOutputSerializer::Scalar(char const*, std::size_t, int& value)
{
    WriteInteger(value);
}

void StreamOutputSerializer::Scalar(char const*, std::size_t, unsigned short& value)
{
    WriteInteger(value);
}

void StreamOutputSerializer::Scalar(char const*, std::size_t, short& value)
{
    WriteInteger(value);
}

void StreamOutputSerializer::Scalar(char const*, std::size_t, unsigned char& value)
{
    WriteInteger(static_cast<unsigned int>(value));
}

void StreamOutputSerializer::Scalar(char const*, std::size_t, signed char& value)
{
    WriteInteger(static_cast<int>(value));
}

void StreamOutputSerializer::Scalar(char const*, std::size_t, bool& value)
{
    stream_.setf(std::ios::boolalpha);
    text_ = value ? "true" : "false";
    Flush();
}

void StreamOutputSerializer::StartArray(char const*, std::size_t, std::size_t& count)
{
    WriteInteger(static_cast<unsigned int>(static_cast<std::uint32_t>(count)));
}

void StreamOutputSerializer::EndArray(char const*)
{}

void StreamOutputSerializer::StartObject(char const*, std::size_t, std::string& className, int& id)
{
    text_ = className.empty() ? "#" : className;
    text_ += ' ';
    WriteInteger(id);
}

void StreamOutputSerializer::EndObject(char const*)
{}

} // namespace Zan::Orv::Core::Service
