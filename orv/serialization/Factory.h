#pragma once

#include "orv/Export.h"

#include <memory>
#include <string>
#include <typeinfo>

namespace Zan::Orv::Core::Service {

class ISerializable;

/// Connects the portable name of a class, which stands in documents, with its type and a way to make an
/// object.
///
/// There is one factory in the process. It is filled while programs load, by a registrar for each class:
///
///     static FactoryRegistrar<Well> const registrar("Acme::Model::Well");
///
/// Registering and unregistering belong to one thread; `Construct` and `GetClassName` are safe on several
/// threads while nobody registers.
class ORV_API Factory
{
public:
    /// Makes an object, which the caller owns.
    using Creator = ISerializable* (*)();

    /// The process's factory, made at the first call.
    static Factory& GetFactory();

    Factory(Factory const&) = delete;
    Factory& operator=(Factory const&) = delete;
    ~Factory();

    /// Adds a class. The same pair of name and type may come again; the last creator holds.
    /// \throws SerializeException when the name is another type's, or the type has another name.
    void Register(std::string className, Creator create, std::type_info const& type);

    /// Removes a class. An unknown name is no error.
    void Unregister(std::string className);

    /// Makes an object of the class, which the caller owns.
    /// \throws SerializeException for an unknown name.
    ISerializable* Construct(std::string const& className) const;

    /// The name under which `type` is registered.
    /// \throws SerializeException for an unknown type.
    std::string GetClassName(std::type_info const& type);

private:
    Factory();

    struct Tables;
    std::unique_ptr<Tables> tables_;
};

/// Registers the class `T`, which has a default constructor, for the lifetime of the registrar.
template<class T>
class FactoryRegistrar
{
public:
    /// Registers under this name, which stands in documents.
    /// \throws SerializeException as `Factory::Register`.
    explicit FactoryRegistrar(std::string const& className) : className_(className)
    {
        Factory::GetFactory().Register(
            className_, [] { return static_cast<ISerializable*>(new T); }, typeid(T));
    }

    FactoryRegistrar(FactoryRegistrar const&) = delete;
    FactoryRegistrar& operator=(FactoryRegistrar const&) = delete;

    ~FactoryRegistrar() { Factory::GetFactory().Unregister(className_); }

private:
    std::string className_;
};

} // namespace Zan::Orv::Core::Service
