#include "orv/events/Delegate.h"

#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>

namespace Zan::Orv::Core::Service::Tests {

namespace {

struct Trail : DelegateArgs
{
    std::string text;
};

struct Padding
{
    virtual ~Padding() = default;
};

struct ShiftedTrail : Padding, Trail
{
};
struct VirtualArgs : virtual DelegateArgs
{
};

// A handler that equals every other one with its number, and keeps count of those not yet deleted.
struct Numbered : DelegateHandler<Trail>
{
    using Action = std::function<void(std::string const&)>;

    explicit Numbered(int n, Action a = {}) : number(n), action(std::move(a)) { ++alive; }
    ~Numbered() override { --alive; }
    void Invoke(DelegateArgs* args) override
    {
        std::string& text = dynamic_cast<Trail&>(*args).text;
        text += std::to_string(number);
        if (action)
            action(text);
    }
    bool Equals(IDelegateHandler* other) override
    {
        auto const* const same = dynamic_cast<Numbered*>(other);
        return same != nullptr && same->number == number;
    }

    inline static int alive = 0;
    int number;
    Action action;
};

std::string TrailOf(DelegateBase const& delegate)
{
    Trail trail;
    delegate.Invoke(static_cast<void*>(static_cast<DelegateArgs*>(&trail))); // ends in the typed one
    return trail.text;
}

template<class T>
struct Catcher
{
    T* caught = nullptr;
    int calls = 0;

    void Catch(T* args)
    {
        caught = args;
        ++calls;
    }
    void Count(T*) { calls += 10; }

    IDelegateHandler* Handler(void (Catcher::*function)(T*) = &Catcher::Catch)
    {
        return new MemberFuncPtrDelegateHandler<Catcher, T>(this, function);
    }
};

// What a handler for `T` receives when the event carries `args`.
template<class T>
T* Received(DelegateArgs* args)
{
    Catcher<T> catcher;
    DelegateBase delegate;
    delegate.AddDelegateHandler(catcher.Handler());
    delegate.Invoke(args);
    EXPECT_EQ(catcher.calls, 1);
    return catcher.caught;
}

} // namespace

TEST(DelegateTest, KnowsASubscriptionByItsObjectAndFunction)
{
    Catcher<Trail> a;
    Catcher<Trail> b;
    Catcher<Padding> other;
    DelegateBase delegate;
    for (int round = 0; round < 2; ++round)
    {
        delegate.AddDelegateHandler(a.Handler());
        delegate.AddDelegateHandler(a.Handler(&Catcher<Trail>::Count));
        delegate.AddDelegateHandler(b.Handler());
        delegate.AddDelegateHandler(other.Handler());
    }
    TrailOf(delegate);
    delegate.RemoveDelegateHandler(a.Handler());
    delegate.RemoveDelegateHandler(other.Handler());
    TrailOf(delegate);
    EXPECT_EQ(std::tuple(a.calls, b.calls, other.calls), std::tuple(21, 2, 1));
}

TEST(DelegateTest, OwnsWhatItIsGiven)
{
    {
        DelegateBase delegate;
        for (int const number : {2, 1, 2, 3})
            delegate.AddDelegateHandler(new Numbered(number));
        EXPECT_EQ(Numbered::alive, 3) << "the second of two equal ones is deleted";
        delegate.RemoveDelegateHandler(new Numbered(4));
        delegate.RemoveDelegateHandler(nullptr);
        EXPECT_EQ(TrailOf(delegate), "213");
        delegate.RemoveDelegateHandler(new Numbered(2));
        EXPECT_EQ(TrailOf(delegate), "13");

        // A null handler cannot be called, but everything else copes with it.
        delegate.AddDelegateHandler(nullptr);
        delegate.AddDelegateHandler(new Numbered(5));
        delegate.RemoveDelegateHandler(new Numbered(5));
        EXPECT_EQ(Numbered::alive, 2);
    }
    EXPECT_EQ(Numbered::alive, 0);
}

TEST(DelegateTest, NarrowsTheArgumentsToTheHandlersClass)
{
    Trail trail;
    ShiftedTrail shifted;
    VirtualArgs viaVirtual;
    EXPECT_EQ(Received<Trail>(&trail), &trail);
    EXPECT_EQ(Received<Trail>(&shifted), &shifted);
    EXPECT_EQ(Received<Trail>(&viaVirtual), nullptr);
    EXPECT_EQ(Received<ShiftedTrail>(&shifted), &shifted);
    EXPECT_EQ(Received<ShiftedTrail>(&trail), nullptr);
    EXPECT_EQ(Received<VirtualArgs>(&viaVirtual), &viaVirtual);
    EXPECT_EQ(Received<void>(&shifted), &shifted) << "the whole object, and not the part that the event is";
    EXPECT_EQ(Received<void>(nullptr), nullptr);
}

TEST(DelegateTest, HandlersMayAddAndRemoveOthersAndThrow)
{
    DelegateBase delegate;
    delegate.AddDelegateHandler(new Numbered(1));
    delegate.AddDelegateHandler(new Numbered(2, [&](std::string const&) {
        delegate.RemoveDelegateHandler(new Numbered(1)); // has had its turn
        delegate.RemoveDelegateHandler(new Numbered(3)); // would be next
        delegate.AddDelegateHandler(new Numbered(5));
    }));
    delegate.AddDelegateHandler(new Numbered(3));
    delegate.AddDelegateHandler(new Numbered(4, [](std::string const& trail) {
        if (trail == "24")
            throw std::runtime_error("four");
    }));

    EXPECT_EQ(TrailOf(delegate), "1245");
    Trail trail;
    EXPECT_TRUE(Throws<std::runtime_error>([&] { delegate.Invoke(&trail); }, "four"));
    delegate.Invoke(&trail);
    EXPECT_EQ(trail.text, "24245") << "the list survives an exception";
}

} // namespace Zan::Orv::Core::Service::Tests
