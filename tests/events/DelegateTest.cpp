#include "orv/events/Delegate.h"

#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <tuple>

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

// A handler that equals every other one with its number, and keeps count of those not yet deleted.
struct Numbered : DelegateHandler<Trail>
{
    explicit Numbered(int n, std::function<void(std::string const&)> a = {}) : number(n), action(a)
    {
        ++alive;
    }
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
    std::function<void(std::string const&)> action;
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

// True when a handler for `T` receives `expected` where the event carries `args`.
template<class T>
bool Receives(DelegateArgs* args, T* expected)
{
    Catcher<T> catcher;
    DelegateBase delegate;
    delegate.AddDelegateHandler(catcher.Handler());
    delegate.Invoke(args);
    return catcher.calls == 1 && catcher.caught == expected;
}

} // namespace

TEST(DelegateTest, KnowsASubscriptionByItsObjectAndFunction)
{
    Catcher<Trail> a, b;
    DelegateBase delegate;
    for (int round = 0; round < 2; ++round)
        for (IDelegateHandler* const handler : {a.Handler(), a.Handler(&Catcher<Trail>::Count), b.Handler()})
            delegate.AddDelegateHandler(handler);
    TrailOf(delegate);
    delegate.RemoveDelegateHandler(a.Handler());
    TrailOf(delegate);
    EXPECT_EQ(std::tuple(a.calls, b.calls), std::tuple(21, 2));
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
    EXPECT_TRUE(Receives<Trail>(&shifted, &shifted));
    EXPECT_TRUE(Receives<ShiftedTrail>(&trail, nullptr));
    EXPECT_TRUE(Receives<void>(&shifted, &shifted)) << "the whole object, and not the part that the event is";
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
    delegate.AddDelegateHandler(new Numbered(4, [fails = false](std::string const&) mutable {
        fails = !fails;
        if (!fails)
            throw std::runtime_error("four");
    }));
    EXPECT_EQ(TrailOf(delegate), "1245");
    EXPECT_TRUE(Throws<std::runtime_error>([&] { TrailOf(delegate); }, "four"));
    EXPECT_EQ(TrailOf(delegate), "245") << "the list survives an exception";
}

} // namespace Zan::Orv::Core::Service::Tests
