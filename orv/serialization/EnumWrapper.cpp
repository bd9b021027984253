#include "orv/serialization/EnumWrapper.h"

#include "orv/platform/TypeName.h"
#include "orv/serialization/Serializer.h"

#include <stdexcept>

namespace Zan::Orv::Core::Service {

namespace {

// Some run times put the word in front by themselves; the message has it on every host.
std::string EnumTypeName(std::type_info const& type)
{
    std::string const name = Platform::TypeName(type);
    return name.compare(0, 5, "enum ") == 0 ? name : "enum " + name;
}

std::runtime_error ConversionError(char const* what, std::type_info const& type, std::string const& value)
{
    return std::runtime_error(std::string("Failed to convert ") + what + " [type='" + EnumTypeName(type) +
                              "' value='" + value + "']");
}

} // namespace

bool EnumWrapperPrivate::IsReading(Serializer& serializer)
{
    return serializer.IsReading();
}

void EnumWrapperPrivate::Serialize(Serializer& serializer, std::string& text)
{
    serializer.Serialize(text, "value");
}

void EnumWrapperPrivate::ThrowFromStringError(std::type_info const& type, std::string const& text)
{
    throw ConversionError("string to enum", type, text);
}

void EnumWrapperPrivate::ThrowToStringError(std::type_info const& type, int value)
{
    throw ConversionError("enum to string", type, std::to_string(value));
}

} // namespace Zan::Orv::Core::Service
