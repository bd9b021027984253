#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializerImpl.h"

#include <iosfwd>
#include <memory>

namespace Zan::Orv::Core::Service {

/// Reads a document of `XMLOutputSerializer`, or one that a person wrote. The constructor parses the whole
/// document; fields are then found by tag and index, in any order.
///
/// It is forgiving: a field that the document lacks leaves its target unchanged, a missing pointer reads as
/// null and a missing array as empty. An empty element leaves a string unchanged too. Strings arrive as
/// UTF-8. Only a value that is stored as a text, and has none then, may refuse that: a `Time` throws its
/// `TimeException` and an `EnumWrapper` its `std::runtime_error`. Let a class that got such a field later look
/// at a number of its version first.
///
/// An integer that is none reads as 0. A `double` or `float` that is none throws the `std::exception` or
/// `std::runtime_error` of `IEEEFromString`, a `bool` a `SerializeException`.
///
/// 64-bit integers are read as 32-bit ones and saturate at those limits.
///
/// Nothing outside the stream is ever read: an external entity is refused. Internal entities may expand a
/// thousand times and be 10,000 characters long; more is refused, as are parameter entities and declarations
/// of attributes. Memory grows with the document, to a few times its size.
///
/// A reader belongs to one thread; several may exist at once.
class ORV_API XMLInputSerializer : public ISerializerImpl
{
public:
    /// Reads `stream` to its end. The parser takes a zero byte behind the root element for that end.
    /// \throws SerializeException for a document that is not well-formed, with the parser's words, and for a
    ///     root element other than `rootTag`.
    XMLInputSerializer(std::istream& stream, std::string const& rootTag);
    XMLInputSerializer(XMLInputSerializer const&) = delete;
    XMLInputSerializer& operator=(XMLInputSerializer const&) = delete;
    ~XMLInputSerializer() override;

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
    void ReadInteger(char const* tag, std::size_t index, T& value);
    template<class T>
    void ReadNumber(char const* tag, std::size_t index, T& value);

    class Cursor;
    std::unique_ptr<Cursor> cursor_;
};

} // namespace Zan::Orv::Core::Service
