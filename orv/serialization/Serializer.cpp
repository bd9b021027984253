#include "orv/serialization/Serializer.h"

#include "orv/foundation/Exception.h"
#include "orv/platform/ThreadStack.h"
#include "orv/platform/TypeName.h"
#include "orv/serialization/Factory.h"
#include "orv/serialization/ISerializerImpl.h"
#include "orv/serialization/internal/IdentityTables.h"
#include "orv/serialization/internal/StackLimit.h"

#include <algorithm>
#include <typeinfo>
#include <vector>

namespace Zan::Orv::Core::Service {

namespace {

SerializeException ReadFailure(char const* tag, std::string const& why)
{
    return SerializeException(std::string("Failed to deserialize object with tag '") + tag + "': " + why);
}

SerializeException WrongType(char const* tag, std::type_info const& type)
{
    return ReadFailure(tag, "Stored object of type '" + Platform::TypeName(type) +
                                "' is not of the type of the pointer that reads it.");
}

} // namespace

// Made at the first pointer: most documents hold none.
struct Serializer::Tables
{
    Internal::ObjectTable<ISerializable*> objectsById;
    Internal::IdentityTable idsByObject;
    Internal::ObjectTable<std::shared_ptr<ISerializable>> sharedObjectsById;
    Internal::IdentityTable idsBySharedObject;
    // Shared objects that were written live on, so that no address is used twice while the document lasts.
    std::vector<std::shared_ptr<ISerializable>> writtenObjects;
    int nextId = 1;
};

// One level of objects within objects.
class Serializer::Nesting
{
public:
    Nesting(Serializer& serializer, char const* tag) : depth_(serializer.depth_)
    {
        if (depth_ == 0)
            serializer.outermost_ = Platform::StackPosition();
        if (Internal::StackIsLow(serializer.outermost_))
            throw SerializeException(std::string("Failed to serialize object with tag '") + tag +
                                     "': Objects are nested " + std::to_string(depth_) +
                                     " deep, which is as deep as the stack allows.");
        ++depth_;
    }
    Nesting(Nesting const&) = delete;
    Nesting& operator=(Nesting const&) = delete;
    ~Nesting() { --depth_; }

private:
    std::size_t& depth_;
};

Serializer::Serializer(ISerializerImpl& impl)
    : impl_(impl), reading_(impl.IsReading()),
      exhaustible_(reading_ ? dynamic_cast<IExhaustible const*>(&impl) : nullptr)
{}

Serializer::~Serializer() = default;

Serializer::Tables& Serializer::GetTables()
{
    if (tables_ == nullptr)
        tables_ = std::make_unique<Tables>();
    return *tables_;
}

void Serializer::SerializeImpl(bool& value, char const* tag, std::size_t index)
{
    impl_.Scalar(tag, index, value);
}

void Serializer::SerializeImpl(signed char& value, char const* tag, std::size_t index)
{
    impl_.Scalar(tag, index, value);
}

void Serializer::SerializeImpl(unsigned char& value, char const* tag, std::size_t index)
{
    impl_.Scalar(tag, index, value);
}

void Serializer::SerializeImpl(short& value, char const* tag, std::size_t index)
{
    impl_.Scalar(tag, index, value);
}

void Serializer::SerializeImpl(unsigned short& value, char const* tag, std::size_t index)
{
    impl_.Scalar(tag, index, value);
}

void Serializer::SerializeImpl(int& value, char const* tag, std::size_t index)
{
    impl_.Scalar(tag, index, value);
}

void Serializer::SerializeImpl(unsigned int& value, char const* tag, std::size_t index)
{
    impl_.Scalar(tag, index, value);
}

void Serializer::SerializeImpl(long long& value, char const* tag, std::size_t index)
{
    impl_.Scalar(tag, index, value);
}

void Serializer::SerializeImpl(unsigned long long& value, char const* tag, std::size_t index)
{
    impl_.Scalar(tag, index, value);
}

void Serializer::SerializeImpl(float& value, char const* tag, std::size_t index)
{
    impl_.Scalar(tag, index, value);
}

void Serializer::SerializeImpl(double& value, char const* tag, std::size_t index)
{
    impl_.Scalar(tag, index, value);
}

void Serializer::SerializeImpl(std::string& value, char const* tag, std::size_t index)
{
    impl_.Scalar(tag, index, value);
}

void Serializer::SerializeImpl(ISerializable& value, char const* tag, std::size_t index)
{
    Nesting const nesting(*this, tag);
    std::string className;
    int id = -1;
    impl_.StartObject(tag, index, className, id);
    value.Serialize(*this);
    impl_.EndObject(tag);
}

void Serializer::WriteObject(ISerializable* object, char const* tag, std::size_t index)
{
    Tables& tables = GetTables();
    Write(tables.idsByObject, object, tag, index, [] {});
}

void Serializer::WriteObject(std::shared_ptr<ISerializable> const& object, char const* tag, std::size_t index)
{
    Tables& tables = GetTables();
    Write(tables.idsBySharedObject, object.get(), tag, index,
          [&] { tables.writtenObjects.push_back(object); });
}

template<class Ids, class Keep>
void Serializer::Write(Ids& ids, ISerializable* object, char const* tag, std::size_t index, Keep keep)
{
    std::string className;
    int id = object != nullptr ? ids.Find(object) : 0;
    bool const firstSight = object != nullptr && id == 0;
    if (firstSight)
    {
        className = Factory::GetFactory().GetClassName(typeid(*object));
        // Entered before its fields are written: a cycle ends in a reference.
        keep();
        id = tables_->nextId;
        ids.Add(object, id);
        ++tables_->nextId;
    }

    impl_.StartObject(tag, index, className, id);
    if (firstSight)
    {
        Nesting const nesting(*this, tag);
        object->Serialize(*this);
    }
    impl_.EndObject(tag);
}

void Serializer::ReadObject(void* pointer, AssignRaw assign, char const* tag, std::size_t index)
{
    auto const dispose = [](ISerializable* object) { delete object; };
    Read(GetTables().objectsById, pointer, assign, dispose, tag, index);
}

void Serializer::ReadObject(void* pointer, AssignShared assign, char const* tag, std::size_t index)
{
    auto const dispose = [](std::shared_ptr<ISerializable> const&) {};
    Read(GetTables().sharedObjectsById, pointer, assign, dispose, tag, index);
}

template<class Pointer, class Assign, class Dispose>
void Serializer::Read(Internal::ObjectTable<Pointer>& objects, void* pointer, Assign assign, Dispose dispose,
                      char const* tag, std::size_t index)
{
    std::string className;
    int id = 0;
    impl_.StartObject(tag, index, className, id);
    if (!className.empty())
    {
        Nesting const nesting(*this, tag);
        Pointer const object(Factory::GetFactory().Construct(className));
        if (object == nullptr)
            throw ReadFailure(tag, "The creator of class '" + className + "' made no object.");
        if (!assign(pointer, object))
        {
            std::type_info const& type = typeid(*object);
            dispose(object);
            throw WrongType(tag, type);
        }
        // Known before its fields are read: they may refer back to it.
        objects.Set(id, object);
        object->Serialize(*this);
    }
    else if (id != 0)
    {
        Pointer const known = objects.Find(id);
        if (known == nullptr)
            throw ReadFailure(tag, "Referenced object with id '" + std::to_string(id) + "' does not exist.");
        if (!assign(pointer, known))
            throw WrongType(tag, typeid(*known));
    }
    else
        assign(pointer, Pointer());
    impl_.EndObject(tag);
}

void Serializer::StartArray(char const* tag, std::size_t index, std::size_t& count)
{
    impl_.StartArray(tag, index, count);
}

void Serializer::EndArray(char const* tag)
{
    impl_.EndArray(tag);
}

// How many elements to make room for at once. An honest document holds about as many bytes for an element as the
// element has in memory; a lie about the count gets no more than a few times the document, however arrays nest.
std::size_t Serializer::TakeRoom(std::size_t count, std::size_t elementSize)
{
    constexpr std::size_t freeRoom = 512; // bytes, about what one level of the traversal takes of the stack
    constexpr std::size_t factor = 4;

    if (exhaustible_ == nullptr)
        return 0;
    if (count <= freeRoom / elementSize)
        return count;
    std::size_t const most = factor * exhaustible_->BytesAhead();
    std::size_t const left = most > room_ ? most - room_ : 0;
    std::size_t const taken = std::min(count, left / elementSize);
    room_ += taken * elementSize;
    return taken;
}

void Serializer::CheckElement(char const* tag, std::size_t position, std::size_t count) const
{
    if (exhaustible_ != nullptr && exhaustible_->IsExhausted())
        throw SerializeException(std::string("Failed to deserialize array with tag '") + tag +
                                 "': The input ended at element " + std::to_string(position + 1) + " of " +
                                 std::to_string(count) + ".");
}

// What is read behind the end of the input is all the same: then the end is the reason.
void Serializer::RefuseKnownKey(char const* tag, std::size_t position, std::size_t count) const
{
    CheckElement(tag, position, count);
    throw SerializeException(std::string("Failed to deserialize array with tag '") + tag + "': Element " +
                             std::to_string(position + 1) + " has the key of an earlier one.");
}

void Serializer::ThrowWrongLength(char const* tag, std::size_t expected, std::size_t found)
{
    throw SerializeException(std::string("Failed to deserialize array with tag '") + tag + "': Expected " +
                             std::to_string(expected) + " elements but found " + std::to_string(found) + ".");
}

} // namespace Zan::Orv::Core::Service
