#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializerImpl.h"

#include <iosfwd>

namespace Zan::Orv::Core::Service {

/// Writes a document as bytes, big-endian on every host: the smallest form, and the fastest. It holds values
/// alone, no tags, no version and no length of the whole: a reader repeats the writer's calls.
/// `docs/formats.md` tells every byte.
///
///     std::ofstream stream("model.bin", std::ios::binary);
///     BinaryOutputSerializer binary(stream);
///     Serializer(binary).Serialize(model, "model");
///
/// Forwarding. Each value is made of simpler ones, which go through the virtual functions again: a signed integer
/// through its unsigned sibling, a string's length and an array's count through `unsigned int`, `bool` and an
/// object's identity through `int`, the name of an object's class through `string`. A class derived from this one can
/// so change one primitive and with it all that is made of it. The tag is null and the index 0 on the way.
///
/// Nothing here reports an error: the stream's state tells. Lengths and counts beyond 32 bits lose their upper
/// bits. One thread at a time, stream included.
class ORV_API BinaryOutputSerializer : public ISerializerImpl
{
public:
    /// `stream` is borrowed and must outlive this object. Open files in binary mode.
    explicit BinaryOutputSerializer(std::ostream& stream);
    ~BinaryOutputSerializer() override;

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
    std::ostream& stream_;
};

} // namespace Zan::Orv::Core::Service
