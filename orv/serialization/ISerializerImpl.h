#pragma once

#include "orv/Export.h"

#include <cstddef>
#include <string>

namespace Zan::Orv::Core::Service {

/// A back end: the form in which a document is stored. It either reads or writes, never both.
///
/// - `tag` is the field's name, kept alive by the caller for the call. Pass literals: the XML reader
///   recognises a tag by its address.
/// - `index` is the position among siblings of the same tag, 0 for a plain field.
/// - `value`, `count`, `className` and `id` are input for a writer and output for a reader.
/// - `className` is the factory name of an object, empty for a value and for a reference to an object before.
/// - `id` is an object's identity, from 1 up; 0 stands for the null pointer and -1 for a value without
///   identity.
///
/// One thread at a time.
class ORV_API ISerializerImpl
{
public:
    ISerializerImpl() = default;
    ISerializerImpl(ISerializerImpl const&) = default;
    ISerializerImpl& operator=(ISerializerImpl const&) = default;
    virtual ~ISerializerImpl();

    /// \{
    /// Which of the two it does. The answer never changes.
    virtual bool IsReading() const = 0;
    virtual bool IsWriting() const = 0;
    /// \}

    /// One value.
    virtual void Scalar(char const* tag, std::size_t index, std::string& value) = 0;
    virtual void Scalar(char const* tag, std::size_t index, double& value) = 0;
    virtual void Scalar(char const* tag, std::size_t index, float& value) = 0;
    virtual void Scalar(char const* tag, std::size_t index, unsigned long long& value) = 0;
    virtual void Scalar(char const* tag, std::size_t index, long long& value) = 0;
    virtual void Scalar(char const* tag, std::size_t index, unsigned int& value) = 0;
    virtual void Scalar(char const* tag, std::size_t index, int& value) = 0;
    virtual void Scalar(char const* tag, std::size_t index, unsigned short& value) = 0;
    virtual void Scalar(char const* tag, std::size_t index, short& value) = 0;
    virtual void Scalar(char const* tag, std::size_t index, unsigned char& value) = 0;
    virtual void Scalar(char const* tag, std::size_t index, signed char& value) = 0;
    virtual void Scalar(char const* tag, std::size_t index, bool& value) = 0;

    /// \{
    /// The elements of the array stand between the two.
    virtual void StartArray(char const* tag, std::size_t index, std::size_t& count) = 0;
    virtual void EndArray(char const* tag) = 0;
    /// \}

    /// \{
    /// The fields of the object stand between the two; a reference and the null pointer have none.
    virtual void StartObject(char const* tag, std::size_t index, std::string& className, int& id) = 0;
    virtual void EndObject(char const* tag) = 0;
    /// \}
};

/// What a reading back end over a stream can also tell. Its scalars leave their targets unread where the
/// stream ends, without an error; a container that was promised more elements than that has to notice.
class ORV_API IExhaustible
{
public:
    virtual ~IExhaustible();

    /// True once the input has failed: nothing more will be read from it.
    virtual bool IsExhausted() const = 0;

    /// How many bytes the input is known to have left, without reading on; 0 when nothing is known.
    virtual std::size_t BytesAhead() const = 0;
};

} // namespace Zan::Orv::Core::Service
