#include "orv/serialization/Factory.h"

#include "orv/foundation/Exception.h"
#include "orv/platform/TypeName.h"
#include "orv/serialization/ISerializable.h"

#include <typeindex>
#include <unordered_map>
#include <utility>

namespace Zan::Orv::Core::Service {

// Types are looked up by identity: their readable names, which a host takes long to compose, are for
// messages.
struct Factory::Tables
{
    struct Class
    {
        Creator create;
        std::type_index type;
        std::string typeName;
    };

    std::unordered_map<std::string, Class> classes;
    std::unordered_map<std::type_index, std::string> classNames;
};

Factory::Factory() : tables_(std::make_unique<Tables>())
{}

Factory::~Factory() = default;

Factory& Factory::GetFactory()
{
    static Factory factory;
    return factory;
}

void Factory::Register(std::string className, Creator create, std::type_info const& type)
{
    auto& [classes, classNames] = *tables_;
    auto const failure = [&className](std::string const& why) {
        return SerializeException("Failed to register '" + className + "' with factory: " + why);
    };

    auto const known = classes.find(className);
    if (known != classes.end() && known->second.type != type)
        throw failure("Class name '" + className + "' is already registered with type '" +
                      known->second.typeName + "'.");

    auto const knownType = classNames.find(type);
    if (knownType != classNames.end() && knownType->second != className)
        throw failure("Type '" + Platform::TypeName(type) + "' is already registered with class name '" +
                      knownType->second + "'.");

    // The first of the two is taken back when the second fails: the tables mirror each other at any time.
    auto const added = classNames.emplace(type, className);
    try
    {
        classes.insert_or_assign(className, Tables::Class{create, type, Platform::TypeName(type)});
    }
    catch (...)
    {
        if (added.second)
            classNames.erase(added.first);
        throw;
    }
}

// The name may be one that stands in the tables, and is a copy for that reason.
// cppcheck-suppress passedByValue ; NOLINTNEXTLINE(performance-unnecessary-value-param)
void Factory::Unregister(std::string className)
{
    auto const known = tables_->classes.find(className);
    if (known == tables_->classes.end())
        return;
    tables_->classNames.erase(known->second.type);
    tables_->classes.erase(known);
}

ISerializable* Factory::Construct(std::string const& className) const
{
    auto const known = tables_->classes.find(className);
    if (known == tables_->classes.end())
        throw SerializeException("Failed to construct '" + className +
                                 "' in factory: Class name is not registered");
    return known->second.create();
}

std::string Factory::GetClassName(std::type_info const& type)
{
    auto const known = tables_->classNames.find(type);
    if (known == tables_->classNames.end())
        throw SerializeException("Failed to get class name for type '" + Platform::TypeName(type) +
                                 "' in factory: Type name is not registered.");
    return known->second;
}

} // namespace Zan::Orv::Core::Service
