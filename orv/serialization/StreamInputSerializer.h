#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializerImpl.h"

#include <iosfwd>

namespace Zan::Orv::Core::Service {

/// Reads a document of `StreamOutputSerializer` by the same calls that wrote it. Text behind a number on its
/// line is skipped.
///
/// Nothing here reports an error by itself: a value that the stream can not give is left unread or zero, and
/// the stream's state tells. A line that is no floating-point number is the failure of `IEEEFromString`. One
/// thread at a time, stream included.
class ORV_API StreamInputSerializer : public ISerializerImpl, public IExhaustible
{
public:
    /// `stream` is borrowed and must outlive this object. `boolalpha` is set at the first `bool` and stays.
    explicit StreamInputSerializer(std::istream& stream);
    ~StreamInputSerializer() override;

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
    template<class T>
    void ReadLine(T& value);
    template<class Number, class T>
    void ReadLineAs(T& value);
    template<class T>
    void ReadNumber(T& value);

    std::istream& stream_;
    std::string line_;
    bool failed_ = false; // the last item could not be read
};

} // namespace Zan::Orv::Core::Service
