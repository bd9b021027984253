#pragma once

#include "orv/Export.h"

namespace Zan::Orv::Core::Service {

class Serializer;

/// Base of everything that can be stored. One operation names the fields, and serves both directions, on the thread of
/// the serializer:
///
///     class Well : public ISerializable
///     {
///     public:
///         void Serialize(Serializer& serializer) override
///         {
///             serializer.Serialize(name_, "name");
///             serializer.Serialize(depth_, "depth");
///             serializer.Serialize(parent_, "parent");    // a shared pointer: identity is kept
///         }
///     ...
///     };
class ORV_API ISerializable
{
public:
    ISerializable() = default;
    ISerializable(ISerializable const&) = default;
    ISerializable& operator=(ISerializable const&) = default;
    virtual ~ISerializable() = default;

    /// Passes every field to `serializer`, which reads or writes it.
    virtual void Serialize(Serializer& serializer) = 0;
};

} // namespace Zan::Orv::Core::Service
