#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializerImpl.h"

#include <iosfwd>

namespace Zan::Orv::Core::Service {

/// Writes a document as plain text, one value to a line. No tags are stored: a reader repeats the writer's
/// calls. Made to be read by people and compared by `diff`. One thread at a time, stream included.
class ORV_API StreamOutputSerializer : public ISerializerImpl
{
public:
    /// `stream` is borrowed and must outlive this object. Its flags and its locale apply to integers;
    /// `boolalpha` is set at the first `bool` and stays. A failed stream swallows the rest.
    explicit StreamOutputSerializer(std::ostream& stream);
    ~StreamOutputSerializer() override;

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
    void WriteInteger(T value);
    void WriteNumber(double value);
    void Flush();

    std::ostream& stream_;
    std::string text_; // of one call, put on the stream in one piece
};

} // namespace Zan::Orv::Core::Service
