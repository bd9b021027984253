#pragma once

#include "orv/serialization/ISerializable.h"

#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

/// \file
/// How `Serializer::Serialize` sees a type. Containers are known by their interface and not by their name: no
/// container header is included here, and a caller's own flat map or small vector works as the standard's do.

namespace Zan::Orv::Core::Service::Detail {

/// The tag of every element of every array.
inline constexpr char ElementTag[] = "item";

enum class SerializeKind
{
    None,
    Direct,
    Scalar,
    RawPointer,
    SharedPointer,
    Pair,
    Optional,
    FixedArray,
    Sequence,
    Associative
};

template<class T, class = void>
struct IsPair : std::false_type
{
};
template<class T>
struct IsPair<T, std::void_t<typename T::first_type, typename T::second_type>> : std::true_type
{
};

template<class T, class = void>
struct IsOptional : std::false_type
{
};
template<class T>
struct IsOptional<T,
                  std::void_t<decltype(std::declval<T&>().has_value()),
                              decltype(std::declval<T&>().emplace()), decltype(std::declval<T&>().reset())>>
    : std::true_type
{
};

template<class T, class = void>
struct IsFixedArray : std::false_type
{
};
template<class T>
struct IsFixedArray<T, std::void_t<typename T::value_type, decltype(std::tuple_size<T>::value),
                                   decltype(std::declval<T&>()[0])>> : std::true_type
{
};

template<class T, class = void>
struct IsSequence : std::false_type
{
};
template<class T>
struct IsSequence<
    T, std::void_t<typename T::value_type, decltype(std::declval<T&>().clear()),
                   decltype(std::declval<T&>().emplace_back()), decltype(std::declval<T&>().back())>>
    : std::true_type
{
};

template<class T, class = void>
struct IsAssociative : std::false_type
{
};
template<class T>
struct IsAssociative<T,
                     std::void_t<typename T::key_type, typename T::value_type,
                                 decltype(std::declval<T&>().clear()), decltype(std::declval<T&>().size())>>
    : std::true_type
{
};

template<class T>
struct IsSharedPointer : std::false_type
{
};
template<class T>
struct IsSharedPointer<std::shared_ptr<T>> : std::is_base_of<ISerializable, T>
{
};

template<class T, class... Types>
inline constexpr bool IsOneOf = (std::is_same_v<T, Types> || ...);

template<class T>
constexpr SerializeKind KindOf()
{
    if constexpr (IsOneOf<T, bool, signed char, unsigned char, short, unsigned short, int, unsigned int,
                          long long, unsigned long long, float, double, std::string> ||
                  std::is_base_of_v<ISerializable, T>)
        return SerializeKind::Direct;
    else if constexpr (IsOneOf<T, char, long, unsigned long>)
        return SerializeKind::Scalar;
    else if constexpr (std::is_pointer_v<T>)
        return std::is_base_of_v<ISerializable, std::remove_pointer_t<T>> ? SerializeKind::RawPointer
                                                                          : SerializeKind::None;
    else if constexpr (IsSharedPointer<T>::value)
        return SerializeKind::SharedPointer;
    else if constexpr (IsPair<T>::value)
        return SerializeKind::Pair;
    else if constexpr (IsOptional<T>::value)
        return SerializeKind::Optional;
    else if constexpr (IsFixedArray<T>::value)
        return SerializeKind::FixedArray;
    else if constexpr (IsAssociative<T>::value)
        return SerializeKind::Associative;
    else if constexpr (IsSequence<T>::value)
        return SerializeKind::Sequence;
    else
        return SerializeKind::None;
}

/// True for a container that makes room for as many elements as it is told.
template<class T, class = void>
struct HasReserve : std::false_type
{
};
template<class T>
struct HasReserve<T, std::void_t<decltype(std::declval<T&>().reserve(std::size_t()))>> : std::true_type
{
};

/// True for a map that holds one element for each key, and knows whether it does.
template<class T, class = void>
struct IsUniqueMap : std::false_type
{
};
template<class T>
struct IsUniqueMap<
    T, std::void_t<typename T::mapped_type,
                   decltype(std::declval<T&>().insert(std::declval<typename T::value_type>()).second),
                   decltype(std::declval<T&>().count(std::declval<typename T::key_type const&>()))>>
    : std::true_type
{
};

/// What a scalar travels as that has no overload of its own.
template<class T>
using StoredType =
    std::conditional_t<std::is_same_v<T, char>, signed char,
                       std::conditional_t<std::is_same_v<T, long>, long long, unsigned long long>>;

template<class T>
struct ElementOf
{
    using type = T;
};
template<class First, class Second>
struct ElementOf<std::pair<First const, Second>>
{
    using type = std::pair<First, Second>;
};

/// The type in which an element of a container is read: that of the container, without the constant key of a
/// map.
template<class Container>
using ElementType = typename ElementOf<typename Container::value_type>::type;

} // namespace Zan::Orv::Core::Service::Detail
