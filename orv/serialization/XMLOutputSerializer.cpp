#include "orv/serialization/XMLOutputSerializer.h"

#include "orv/foundation/internal/NumberText.h"
#include "orv/serialization/internal/StreamBytes.h"
#include "orv/serialization/internal/StreamText.h"
#include "orv/serialization/internal/XMLText.h"

#include <ostream>

namespace Zan::Orv::Core::Service {

XMLOutputSerializer::XMLOutputSerializer(std::ostream& stream, std::string const& rootTag)
    : stream_(stream), rootTag_(rootTag)
{
    stream_.width(0); // a width that the caller left was not meant for the first integer
    text_ = "<?xml version=\"1.0\"?>\n";
    WriteStartTag(rootTag_.c_str());
    Flush();
}

XMLOutputSerializer::~XMLOutputSerializer()
{
    try
    {
        WriteEndTag(rootTag_.c_str());
        Flush();
    }
    catch (...)
    {
        // A stream that throws is the caller's wish, but not out of a destructor. Its state has kept the
        // failure.
    }
}

bool XMLOutputSerializer::IsReading() const
{
    return false;
}

bool XMLOutputSerializer::IsWriting() const
{
    return true;
}

void XMLOutputSerializer::WriteStartTag(char const* tag)
{
    text_ += '<';
    text_ += tag;
    text_ += '>';
}

void XMLOutputSerializer::WriteEndTag(char const* tag)
{
    text_ += "</";
    text_ += tag;
    text_ += '>';
}

void XMLOutputSerializer::Flush()
{
    Internal::WriteAndClear(stream_, text_);
}

template<class T>
void XMLOutputSerializer::WriteInteger(char const* tag, T value)
{
    WriteStartTag(tag);
    Internal::AppendInteger(text_, stream_, value);
    WriteEndTag(tag);
    Flush();
}

void XMLOutputSerializer::WriteNumber(char const* tag, double value)
{
    char number[Internal::MaxIEEEText];
    WriteStartTag(tag);
    text_.append(number, Internal::WriteIEEE(number, value));
    text_ += '\n';
    WriteEndTag(tag);
    Flush();
}

void XMLOutputSerializer::Scalar(char const* tag, std::size_t, std::string& value)
{
    WriteStartTag(tag);
    if (Internal::HasMarkup(value))
        Internal::AppendEscaped(text_, value);
    else // as it stands, without a copy
    {
        Flush();
        Internal::WriteBytes(stream_, value.data(), value.size());
    }
    WriteEndTag(tag);
    Flush();
}

void XMLOutputSerializer::Scalar(char const* tag, std::size_t, double& value)
{
    WriteNumber(tag, value);
}

void XMLOutputSerializer::Scalar(char const* tag, std::size_t, float& value)
{
    WriteNumber(tag, static_cast<double>(value));
}

void XMLOutputSerializer::Scalar(char const* tag, std::size_t, unsigned long long& value)
{
    WriteInteger(tag, value);
}

void XMLOutputSerializer::Scalar(char const* tag, std::size_t, long long& value)
{
    WriteInteger(tag, value);
}

void XMLOutputSerializer::Scalar(char const* tag, std::size_t, unsigned int& value)
{
    WriteInteger(tag, value);
}

void XMLOutputSerializer::Scalar(char const* tag, std::size_t, int& value)
{
    WriteInteger(tag, value);
}

void XMLOutputSerializer::Scalar(char const* tag, std::size_t, unsigned short& value)
{
    WriteInteger(tag, value);
}

void XMLOutputSerializer::Scalar(char const* tag, std::size_t, short& value)
{
    WriteInteger(tag, value);
}

void XMLOutputSerializer::Scalar(char const* tag, std::size_t, unsigned char& value)
{
    WriteInteger(tag, static_cast<unsigned int>(value));
}

void XMLOutputSerializer::Scalar(char const* tag, std::size_t, signed char& value)
{
    WriteInteger(tag, static_cast<int>(value));
}

void XMLOutputSerializer::Scalar(char const* tag, std::size_t, bool& value)
{
    stream_.setf(std::ios::boolalpha);
    WriteStartTag(tag);
    text_ += value ? "true" : "false";
    WriteEndTag(tag);
    Flush();
}

void XMLOutputSerializer::StartArray(char const* tag, std::size_t, std::size_t&)
{
    WriteStartTag(tag);
    Flush();
}

void XMLOutputSerializer::EndArray(char const* tag)
{
    WriteEndTag(tag);
    Flush();
}

void XMLOutputSerializer::StartObject(char const* tag, std::size_t, std::string& className, int& id)
{
    text_ += '<';
    text_ += tag;
    text_ += ' ';
    if (!className.empty())
        text_.append("class=\"").append(className).append("\" ");
    if (id != -1)
    {
        text_ += "id=\"";
        Internal::AppendInteger(text_, stream_, id);
        text_ += "\" ";
    }
    text_ += '>';
    Flush();
}

void XMLOutputSerializer::EndObject(char const* tag)
{
    EndArray(tag);
}

} // namespace Zan::Orv::Core::Service
