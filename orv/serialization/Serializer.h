#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializable.h"
#include "orv/serialization/SerializeKind.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace Zan::Orv::Core::Service {

namespace Internal {
template<class Pointer>
class ObjectTable;
}

class IExhaustible;
class ISerializerImpl;

/// The front end of a document: what an object sees while it is stored or read. It keeps the identity of
/// objects and hands everything else to a back end.
///
///     std::ostringstream stream;
///     {
///         XMLOutputSerializer xml(stream, "model");
///         Serializer serializer(xml);
///         serializer.Serialize(field, "field");
///     }
///
/// One serializer is one document, read or written front to back on one thread, and its back end must outlive
/// it.
///
/// Pointers. The first sight of an object stores it whole under the name of its class (see `Factory`), every
/// further one stores a reference, so that cycles end and shared objects stay shared. What was read by raw
/// pointers belongs to the caller, each object once. A raw and a shared pointer to one object store it twice:
/// use one kind in a graph. Shared objects live at least as long as the serializer. A document can say that they
/// own each other in a circle: who reads one from a stranger breaks such circles, or they are never freed.
///
/// Depth. Objects nest on the stack, 340 to 390 bytes for each level of a chain in an optimised program: more
/// than 20,000 levels on a stack of 8 MiB, 2,000 on one of 1 MiB. A graph too deep for the thread's stack ends
/// in a `SerializeException`, not in a crash. So does one that is more than 32 KiB deep on a stack that is not
/// the thread's own: nobody knows where that of a coroutine ends. (Windows knows those of its fibers.)
///
/// Failures are exceptions. Nothing is rolled back: a failed read leaves its targets partly filled, and an
/// object made before the failure stays with the pointer that received it.
class ORV_API Serializer
{
public:
    /// `impl` is borrowed.
    explicit Serializer(ISerializerImpl& impl);
    Serializer(Serializer const&) = delete;
    Serializer& operator=(Serializer const&) = delete;
    virtual ~Serializer();

    /// \{
    /// Which of the two the back end does. For a class that has to prepare or to check what it stores.
    bool IsReading() const { return reading_; }
    bool IsWriting() const { return !reading_; }
    /// \}

    /// Reads or writes one field. `T` may be
    ///
    /// - `bool`, a character or integer type, `float`, `double`, `std::string`. `long` is stored as `long
    ///   long`, so that documents are the same on every host;
    /// - a class derived from `ISerializable`, as a value;
    /// - a raw or shared pointer to such a class. A stored class that is not one of the pointer's is a
    ///   failure;
    /// - a container of these, nested at will: `std::vector`, `list`, `deque`, `array`, `set`, `map`, `pair`,
    ///   `optional`, and others with their interface. Reading replaces its contents;
    /// - an enumeration by way of `EnumWrapper`.
    ///
    /// `tag` names the field. Pass literals: XML is read on from the field before where the address is the same,
    /// so that a buffer which holds another tag each time may miss fields.
    /// `index` tells siblings with the same tag apart.
    /// \throws SerializeException for an unknown class or identity, a stored class of the wrong type, an
    ///     array of the wrong length, a map or set with two equal keys, a graph too deep for the stack, or what
    ///     the back end finds wrong.
    /// \throws std::exception what values say of a text that is none: numbers (`XMLInputSerializer`,
    ///     `StreamInputSerializer`), times (`Time`), enumerations (`EnumWrapper`).
    template<class T>
    void Serialize(T& value, char const* tag, std::size_t index = 0);

private:
    // Puts an object into the caller's pointer, of whatever type that is. False when the object is not of
    // that type.
    using AssignRaw = bool (*)(void* pointer, ISerializable* object);
    using AssignShared = bool (*)(void* pointer, std::shared_ptr<ISerializable> const& object);

    struct Tables;
    class Nesting;

    void SerializeImpl(bool& value, char const* tag, std::size_t index);
    void SerializeImpl(signed char& value, char const* tag, std::size_t index);
    void SerializeImpl(unsigned char& value, char const* tag, std::size_t index);
    void SerializeImpl(short& value, char const* tag, std::size_t index);
    void SerializeImpl(unsigned short& value, char const* tag, std::size_t index);
    void SerializeImpl(int& value, char const* tag, std::size_t index);
    void SerializeImpl(unsigned int& value, char const* tag, std::size_t index);
    void SerializeImpl(long long& value, char const* tag, std::size_t index);
    void SerializeImpl(unsigned long long& value, char const* tag, std::size_t index);
    void SerializeImpl(float& value, char const* tag, std::size_t index);
    void SerializeImpl(double& value, char const* tag, std::size_t index);
    void SerializeImpl(std::string& value, char const* tag, std::size_t index);
    void SerializeImpl(ISerializable& value, char const* tag, std::size_t index);

    void WriteObject(ISerializable* object, char const* tag, std::size_t index);
    void WriteObject(std::shared_ptr<ISerializable> const& object, char const* tag, std::size_t index);
    void ReadObject(void* pointer, AssignRaw assign, char const* tag, std::size_t index);
    void ReadObject(void* pointer, AssignShared assign, char const* tag, std::size_t index);

    template<class Ids, class Keep>
    void Write(Ids& ids, ISerializable* object, char const* tag, std::size_t index, Keep keep);
    template<class Pointer, class Assign, class Dispose>
    void Read(Internal::ObjectTable<Pointer>& objects, void* pointer, Assign assign, Dispose dispose,
              char const* tag, std::size_t index);

    void StartArray(char const* tag, std::size_t index, std::size_t& count);
    void EndArray(char const* tag);
    std::size_t TakeRoom(std::size_t count, std::size_t elementSize);
    void CheckElement(char const* tag, std::size_t position, std::size_t count) const;
    [[noreturn]] void RefuseKnownKey(char const* tag, std::size_t position, std::size_t count) const;
    [[noreturn]] static void ThrowWrongLength(char const* tag, std::size_t expected, std::size_t found);

    Tables& GetTables();

    template<class T>
    void SerializeAs(T& value, char const* tag, std::size_t index);
    template<class T>
    void SerializeRaw(T*& pointer, char const* tag, std::size_t index);
    template<class T>
    void SerializeShared(std::shared_ptr<T>& pointer, char const* tag, std::size_t index);
    template<class T>
    void WriteElements(T& elements, char const* tag, std::size_t index);
    template<class T>
    void ReadElements(T& elements, char const* tag, std::size_t index);
    template<class T, class CheckFirst>
    void SerializePair(T& pair, char const* tag, std::size_t index, CheckFirst checkFirst);
    template<class T>
    void SerializeOptional(T& optional, char const* tag, std::size_t index);

    ISerializerImpl& impl_;
    bool const reading_;
    IExhaustible const* const exhaustible_;
    std::size_t depth_ = 0;
    std::uintptr_t outermost_ = 0; // where on the stack the outermost object is served
    std::size_t room_ = 0;         // bytes, taken for the elements of the arrays that are being read
    std::unique_ptr<Tables> tables_;
};

template<class T>
void Serializer::Serialize(T& value, char const* tag, std::size_t index)
{
    using Detail::SerializeKind;
    constexpr SerializeKind kind = Detail::KindOf<T>();

    if constexpr (kind == SerializeKind::Direct)
        SerializeImpl(value, tag, index);
    else if constexpr (kind == SerializeKind::Scalar)
        SerializeAs(value, tag, index);
    else if constexpr (kind == SerializeKind::RawPointer)
        SerializeRaw(value, tag, index);
    else if constexpr (kind == SerializeKind::SharedPointer)
        SerializeShared(value, tag, index);
    else if constexpr (kind == SerializeKind::Pair)
        SerializePair(value, tag, index, [] {});
    else if constexpr (kind == SerializeKind::Optional)
        SerializeOptional(value, tag, index);
    else
    {
        static_assert(kind != SerializeKind::None,
                      "This type can not be serialized: derive it from ISerializable, or wrap an enumeration "
                      "into EnumWrapper.");
        if (reading_)
            ReadElements(value, tag, index);
        else
            WriteElements(value, tag, index);
    }
}

// Types that travel as another: `char` as `signed char`, `long` as `long long`, whatever the host takes them
// for.
template<class T>
void Serializer::SerializeAs(T& value, char const* tag, std::size_t index)
{
    auto stored = static_cast<Detail::StoredType<T>>(value);
    SerializeImpl(stored, tag, index);
    value = static_cast<T>(stored);
}

template<class T>
void Serializer::SerializeRaw(T*& pointer, char const* tag, std::size_t index)
{
    if (!reading_)
        return WriteObject(static_cast<ISerializable*>(pointer), tag, index);

    ReadObject(
        &pointer,
        [](void* target, ISerializable* object) {
            T* const typed = dynamic_cast<T*>(object);
            if (typed == nullptr && object != nullptr)
                return false;
            *static_cast<T**>(target) = typed;
            return true;
        },
        tag, index);
}

template<class T>
void Serializer::SerializeShared(std::shared_ptr<T>& pointer, char const* tag, std::size_t index)
{
    if (!reading_)
        return WriteObject(std::static_pointer_cast<ISerializable>(pointer), tag, index);

    ReadObject(
        &pointer,
        [](void* target, std::shared_ptr<ISerializable> const& object) {
            auto typed = std::dynamic_pointer_cast<T>(object);
            if (typed == nullptr && object != nullptr)
                return false;
            *static_cast<std::shared_ptr<T>*>(target) = std::move(typed);
            return true;
        },
        tag, index);
}

template<class T>
void Serializer::WriteElements(T& elements, char const* tag, std::size_t index)
{
    std::size_t count = elements.size();
    StartArray(tag, index, count);
    std::size_t position = 0;
    for (auto&& element : elements)
    {
        if constexpr (std::is_same_v<typename T::value_type, bool>)
        {
            bool value = element;
            Serialize(value, Detail::ElementTag, position++);
        }
        else
        {
            // Keys are constant; writing changes nothing.
            using Element = std::remove_const_t<std::remove_reference_t<decltype(element)>>;
            Serialize(const_cast<Element&>(element), Detail::ElementTag, position++);
        }
    }
    EndArray(tag);
}

// Elements arrive one after another. There is room for them beforehand as far as the input is known to be long
// enough, and the container grows with the others: a count that the input can not honour costs no memory and
// ends in a failure.
template<class T>
void Serializer::ReadElements(T& elements, char const* tag, std::size_t index)
{
    using Detail::SerializeKind;
    constexpr SerializeKind kind = Detail::KindOf<T>();

    std::size_t count = 0;
    std::size_t const roomAround = room_;
    StartArray(tag, index, count);
    if constexpr (kind == SerializeKind::FixedArray)
    {
        // A field that a document lacks reads as an empty array and leaves its target alone.
        if (count != 0 && count != elements.size())
            ThrowWrongLength(tag, elements.size(), count);
    }
    else
        elements.clear();
    if constexpr (Detail::HasReserve<T>::value)
        elements.reserve(TakeRoom(count, sizeof(typename T::value_type)));

    for (std::size_t position = 0; position < count; ++position)
    {
        if constexpr (kind == SerializeKind::FixedArray)
            Serialize(elements[position], Detail::ElementTag, position);
        else if constexpr (kind == SerializeKind::Sequence && !std::is_same_v<typename T::value_type, bool>)
        {
            elements.emplace_back();
            Serialize(elements.back(), Detail::ElementTag, position);
        }
        else
        {
            Detail::ElementType<T> element{};
            // An object that was read before a failure stays with the container too.
            try
            {
                if constexpr (Detail::IsUniqueMap<T>::value)
                    SerializePair(element, Detail::ElementTag, position, [&] {
                        if (elements.count(element.first) != 0)
                            RefuseKnownKey(tag, position, count);
                    });
                else
                    Serialize(element, Detail::ElementTag, position);
            }
            catch (...)
            {
                elements.insert(elements.end(), std::move(element));
                throw;
            }
            std::size_t const before = elements.size();
            elements.insert(elements.end(), std::move(element));
            if (elements.size() == before)
                RefuseKnownKey(tag, position, count);
        }
        CheckElement(tag, position, count);
    }
    room_ = roomAround;
    EndArray(tag);
}

// A key is looked at before its value is read: an object that belongs to a raw pointer must not come to a map that has no
// place for it.
template<class T, class CheckFirst>
void Serializer::SerializePair(T& pair, char const* tag, std::size_t index, CheckFirst checkFirst)
{
    std::size_t count = reading_ ? 0 : 2;
    StartArray(tag, index, count);
    if (count != 0 && count != 2)
        ThrowWrongLength(tag, 2, count);
    if (count == 2)
    {
        // The key of a map's element is constant; it is only written then.
        using First = std::remove_const_t<typename T::first_type>;
        Serialize(const_cast<First&>(pair.first), Detail::ElementTag, 0);
        checkFirst();
        Serialize(pair.second, Detail::ElementTag, 1);
    }
    EndArray(tag);
}

template<class T>
void Serializer::SerializeOptional(T& optional, char const* tag, std::size_t index)
{
    std::size_t count = !reading_ && optional.has_value() ? 1 : 0;
    StartArray(tag, index, count);
    if (count > 1)
        ThrowWrongLength(tag, 1, count);
    if (reading_)
    {
        optional.reset();
        if (count == 1)
            optional.emplace();
    }
    if (count == 1)
        Serialize(*optional, Detail::ElementTag, 0);
    EndArray(tag);
}

} // namespace Zan::Orv::Core::Service
