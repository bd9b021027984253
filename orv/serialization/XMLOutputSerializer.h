#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializerImpl.h"

#include <iosfwd>

namespace Zan::Orv::Core::Service {

/// Writes a document as XML, straight to a stream. Construction writes the declaration and the root's start
/// tag, destruction the root's end tag, so the document is complete only after that. Nothing else is kept or
/// checked.
///
/// Tags and class names must be XML names. Strings are written as bytes, with the five markup characters
/// escaped; the document is UTF-8 when they are. Control characters that XML does not allow are not changed:
/// such a document can be written but not read back. A carriage return is read back as a line feed, or as
/// nothing before one, as in every XML document. One thread at a time, stream included.
class ORV_API XMLOutputSerializer : public ISerializerImpl
{
public:
    /// `stream` is borrowed and must outlive this object. Its flags and its locale apply to integers, and
    /// what is not decimal or is grouped does not come back as it was;
    /// `boolalpha` is set at the first `bool` and stays. A failed stream swallows the rest.
    XMLOutputSerializer(std::ostream& stream, std::string const& rootTag);
    XMLOutputSerializer(XMLOutputSerializer const&) = delete;
    XMLOutputSerializer& operator=(XMLOutputSerializer const&) = delete;
    ~XMLOutputSerializer() override;

    bool IsReading() const override;
    bool IsWriting() const override;

    void Scalar(char const* tag, std::size_t index, std::string& value) override;
    void Scalar(char const* tag, std::size_t index, double& value) override;
    void Scalar(char const* tag, std::size_t index, float& value) override;
    void Scalar(char const* tag, std::size_t index, unsigned long long& value) override;
    void Scalar(char const* tag, std::size_t index, long long& value) override;
    void Scalar(char const* tag, std::size_t index, unsigned int& value) override;
    void Scalar(char const* tag, std::size_t index, int& value) override;
    void Scalar(char const* tag, std::size_t index, unsigned short& value) override;
    void Scalar(char const* tag, std::size_t index, short& value) override;
    void Scalar(char const* tag, std::size_t index, unsigned char& value) override;
    void Scalar(char const* tag, std::size_t index, signed char& value) override;
    void Scalar(char const* tag, std::size_t index, bool& value) override;

    void StartArray(char const* tag, std::size_t index, std::size_t& count) override;
    void EndArray(char const* tag) override;
    void StartObject(char const* tag, std::size_t index, std::string& className, int& id) override;
    void EndObject(char const* tag) override;

private:
    template<class T>
    void WriteInteger(char const* tag, T value);
    void WriteNumber(char const* tag, double value);
    void WriteStartTag(char const* tag);
    void WriteEndTag(char const* tag);
    void Flush();

    std::ostream& stream_;
    std::string rootTag_;
    std::string text_; // of one call, put on the stream in one piece
};

} // namespace Zan::Orv::Core::Service
