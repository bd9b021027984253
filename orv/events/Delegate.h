#pragma once

#include "orv/Export.h"

#include <list>
#include <type_traits>
#include <typeinfo>

/// \file
/// The multicast event: one source holds an ordered list of handlers and calls each with one argument object.
///
///     struct Progress : DelegateArgs { int percent = 0; };
///     class Display {
///     public:
///         void OnProgress(Progress* args);
///     };
///
///     DelegateBase progress;
///     progress.AddDelegateHandler(
///         new MemberFuncPtrDelegateHandler<Display, Progress>(&display, &Display::OnProgress));
///     progress.Invoke(&args);
///     progress.RemoveDelegateHandler(
///         new MemberFuncPtrDelegateHandler<Display, Progress>(&display, &Display::OnProgress));
///
/// There is no token: a subscription is known by being equal, the same object and the same member function. A
/// delegate belongs to one thread at a time; nothing here is locked.

namespace Zan::Orv::Core::Service {

/// Base of all event arguments. Handlers narrow it to the class that they know.
class ORV_API DelegateArgs
{
public:
    DelegateArgs() = default;
    DelegateArgs(DelegateArgs const&) = default;
    DelegateArgs& operator=(DelegateArgs const&) = default;
    virtual ~DelegateArgs();
};

/// One subscriber of a delegate.
class ORV_API IDelegateHandler
{
public:
    IDelegateHandler() = default;
    IDelegateHandler(IDelegateHandler const&) = default;
    IDelegateHandler& operator=(IDelegateHandler const&) = default;
    virtual ~IDelegateHandler();

    /// Delivers one event.
    virtual void Invoke(DelegateArgs* args) = 0;

    /// True when `other` denotes the same target as this handler.
    virtual bool Equals(IDelegateHandler* other) = 0;
};

/// A handler of one event type, so that an interface can ask for the type that it sends. `T` may be `void`.
template<class T>
class DelegateHandler : public IDelegateHandler
{
};

/// Calls a member function of an object that it does not own.
///
/// Arguments of another class than `T` reach the function as a null pointer. With `T` = `void` it gets the
/// address of the whole argument object, or null for an event without arguments.
template<class C, class T>
class MemberFuncPtrDelegateHandler : public DelegateHandler<T>
{
public:
    /// What is called.
    using Function = void (C::*)(T*);

    /// `target` is borrowed, and neither may be null.
    MemberFuncPtrDelegateHandler(C* target, Function function) : target_(target), function_(function) {}

    void Invoke(DelegateArgs* args) override
    {
        T* const narrowed = Narrow(args);
        (target_->*function_)(narrowed);
    }

    bool Equals(IDelegateHandler* other) override
    {
        auto const* same = dynamic_cast<MemberFuncPtrDelegateHandler*>(other);
        return same != nullptr && same->target_ == target_ && same->function_ == function_;
    }

private:
    static T* Narrow(DelegateArgs* args);

    C* target_;
    Function function_;
};

/// The source of an event: an ordered list of handlers, which it owns.
///
/// Copies are shallow: they hold the same handlers, and the destructor of each deletes them. All but one of
/// the delegates that share handlers must be emptied before they are destroyed.
class ORV_API DelegateBase
{
public:
    DelegateBase() = default;
    DelegateBase(DelegateBase const&) = default;
    DelegateBase& operator=(DelegateBase const&) = default;

    /// Deletes every handler.
    virtual ~DelegateBase();

    /// Takes ownership of `handler` and appends it. When an equal one is there already, the list stays as it
    /// is and `handler` is deleted.
    virtual void AddDelegateHandler(IDelegateHandler* handler);

    /// Removes and deletes the first handler that equals `handler`. Takes ownership of `handler`, which is
    /// only a probe, and deletes it in every case.
    virtual void RemoveDelegateHandler(IDelegateHandler* handler);

    /// Raises an event without arguments: `args` is null.
    virtual void Invoke(void* args) const;

    /// Calls every handler in the order in which they were added. All see the same `args`, and what one
    /// changes the next ones see.
    ///
    /// Handlers may add and remove handlers meanwhile: one added is called in this round, one removed from
    /// behind is not. A handler must not remove itself. An exception from a handler ends the round and
    /// reaches the caller.
    virtual void Invoke(DelegateArgs* args) const;

private:
    bool FindHandler(IDelegateHandler* handler, bool remove);

    std::list<IDelegateHandler*> handlers_;
};

namespace Detail {

template<class T, class = void>
struct IsPlainArgs : std::false_type
{
};

/// True for argument classes that a `static_cast` reaches, which it does unless the base is virtual or
/// ambiguous.
template<class T>
struct IsPlainArgs<T, std::void_t<decltype(static_cast<T*>(static_cast<DelegateArgs*>(nullptr)))>>
    : std::is_base_of<DelegateArgs, T>
{
};

} // namespace Detail

template<class C, class T>
T* MemberFuncPtrDelegateHandler<C, T>::Narrow(DelegateArgs* args)
{
    // Nearly always the arguments are of the very class that the handler names. Asking for that first costs
    // one comparison, where the cast searches the class tree; a false "no" only leaves it to the cast.
    if constexpr (Detail::IsPlainArgs<T>::value)
    {
        if (args != nullptr && &typeid(*args) == &typeid(T))
            return static_cast<T*>(args);
    }
    return dynamic_cast<T*>(args);
}

} // namespace Zan::Orv::Core::Service
