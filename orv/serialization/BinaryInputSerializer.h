#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializerImpl.h"

#include <iosfwd>

namespace Zan::Orv::Core::Service {

/// Reads a document of `BinaryOutputSerializer` by the same calls that wrote it. Values are made of simpler ones
/// through the virtual functions, in the same way.
///
/// Nothing here reports an error: a value that the stream can not give is left unread, an array is empty then,
/// and the stream's state tells. Memory grows with what the stream delivers and not with what a length
/// promises. One thread at a time, stream included.
class ORV_API BinaryInputSerializer : public ISerializerImpl, public IExhaustible
{
public:
    /// `stream` is borrowed and must outlive this object. Open files in binary mode. Its `gcount` tells nothing
    /// of what is read here.
    explicit BinaryInputSerializer(std::istream& stream);
    ~BinaryInputSerializer() override;

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

    bool IsExhausted() const override;
    std::size_t BytesAhead() const override;

private:
    template<class Unsigned, class T>
    void Read(T& value);

    std::istream& stream_;
};

} // namespace Zan::Orv::Core::Service
