#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializable.h"

#include <cstdint>
#include <map>
#include <string>
#include <typeinfo>

namespace Zan::Orv::Core::Service {

/// The part of `EnumWrapper` that does not depend on the enumeration.
namespace EnumWrapperPrivate {

ORV_API bool IsReading(Serializer& serializer);
ORV_API void Serialize(Serializer& serializer, std::string& text);
[[noreturn]] ORV_API void ThrowFromStringError(std::type_info const& type, std::string const& text);
[[noreturn]] ORV_API void ThrowToStringError(std::type_info const& type, int value);

} // namespace EnumWrapperPrivate

/// Converts an enumeration to its names and back, exactly and with regard to case. `Map` names the values:
///
///     struct Phase
///     {
///         enum Enum { Oil, Water };
///
///         struct EnumMap
///         {
///             using EnumType = Enum;
///             static void Fill(std::map<Enum, std::string>& names) { names = {{Oil, "Oil"}, {Water,
///             "Water"}}; }
///         };
///     };
///
/// Both tables are made at first use and are safe on any thread.
template<class Map>
class DefaultEnumConverter : public Map
{
public:
    /// The enumeration.
    using EnumType = typename Map::EnumType;

    /// \throws std::runtime_error for a value without a name.
    static std::string const& ToString(EnumType value)
    {
        auto const found = Names().find(value);
        if (found == Names().end())
            EnumWrapperPrivate::ThrowToStringError(typeid(EnumType), static_cast<int>(value));
        return found->second;
    }

    /// \throws std::runtime_error for a text that names no value.
    static EnumType FromString(std::string const& text)
    {
        auto const found = Values().find(text);
        if (found == Values().end())
            EnumWrapperPrivate::ThrowFromStringError(typeid(EnumType), text);
        return found->second;
    }

private:
    static std::map<EnumType, std::string> const& Names()
    {
        static std::map<EnumType, std::string> const names = [] {
            std::map<EnumType, std::string> filled;
            Map::Fill(filled);
            return filled;
        }();
        return names;
    }

    static std::map<std::string, EnumType> const& Values()
    {
        static std::map<std::string, EnumType> const values = [] {
            std::map<std::string, EnumType> inverse;
            for (auto const& [value, name] : Names())
                inverse.emplace(name, value);
            return inverse;
        }();
        return values;
    }
};

/// Makes an enumeration serializable by name, as a value object with the one field "value".
///
///     EnumWrapper<DefaultEnumConverter<Phase::EnumMap>> wrapper(phase_);
///     serializer.Serialize(wrapper, "phase");
///     phase_ = wrapper.Get();
///
/// The wrapper holds a copy: take the value back after a read. A plain value.
template<class Converter>
class EnumWrapper : public ISerializable, public Converter
{
public:
    /// The enumeration.
    using EnumType = typename Converter::EnumType;

    /// Holds a copy of `value`.
    explicit EnumWrapper(EnumType value = EnumType()) : value_(static_cast<std::int32_t>(value)) {}

    /// The value that is held.
    EnumType Get() const { return static_cast<EnumType>(value_); }
    /// Any value may be set; one without a name cannot be stored.
    void Set(EnumType value) { value_ = static_cast<std::int32_t>(value); }

    /// \throws std::runtime_error for a value without a name and for a text that names no value.
    void Serialize(Serializer& serializer) override
    {
        if (EnumWrapperPrivate::IsReading(serializer))
        {
            std::string text;
            EnumWrapperPrivate::Serialize(serializer, text);
            Set(Converter::FromString(text));
        }
        else
        {
            std::string text = Converter::ToString(Get());
            EnumWrapperPrivate::Serialize(serializer, text);
        }
    }

private:
    std::int32_t value_;
};

} // namespace Zan::Orv::Core::Service
