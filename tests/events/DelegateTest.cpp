#include "orv/events/Delegate.h"

#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
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
    int unused = 0;
};

struct ShiftedTrail : Padding, Trail
{
};
struct VirtualArgs : virtual DelegateArgs
{
};

// A handler that equals every other one with its number, and keeps count of those not yet deleted.
class Numbered : public DelegateHandler<Trail>
{
public:
    inline static int alive = 0;

    explicit Numbered(int number, std::function<void(std::string const&)> action = {})
        : number_(number), action_(std::move(action))
    {
        ++alive;
    }
    ~Numbered() override { --alive; }

    void Invoke(DelegateArgs* args) override
    {
        auto& trail = dynamic_cast<Trail&>(*args);
        trail.text += std::to_string(number_);
        if (action_)
            action_(trail.text);
    }

    bool Equals(IDelegateHandler* other) override
    {
        auto const* const same = dynamic_cast<Numbered*>(other);
        return same != nullptr && same->number_ == number_;
    }

private:
    int number_;
    std::function<void(std::string const&)> action_;
};

std::string TrailOf(DelegateBase const& delegate)
{
    Trail trail;
    delegate.Invoke(
        static_cast<void*>(static_cast<DelegateArgs*>(&trail))); // the untyped way, which ends in the other
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
    EXPECT_EQ(TrailOf(delegate), "");
    delegate.RemoveDelegateHandler(a.Handler());
    delegate.RemoveDelegateHandler(other.Handler());
    EXPECT_EQ(TrailOf(delegate), "");
    EXPECT_EQ(a.calls, 21);
    EXPECT_EQ(b.calls, 2);
    EXPECT_EQ(other.calls, 1);
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
        EXPECT_EQ(Numbered::alive, 2);
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
    EXPECT_EQ(Received<Trail const>(&trail), &trail);
    EXPECT_EQ(Received<Trail>(&shifted), &shifted);
    EXPECT_EQ(Received<Trail>(&viaVirtual), nullptr);
    EXPECT_EQ(Received<Trail>(nullptr), nullptr);
    EXPECT_EQ(Received<ShiftedTrail>(&shifted), &shifted);
    EXPECT_EQ(Received<ShiftedTrail>(&trail), nullptr);
    EXPECT_EQ(Received<Padding>(&shifted), &shifted);
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

TEST(DelegateTest, CopiesShareTheHandlers)
{
    DelegateBase source;
    source.AddDelegateHandler(new Numbered(1));
    source.AddDelegateHandler(new Numbered(2));
    {
        DelegateBase copy(source);
        EXPECT_EQ(TrailOf(copy), "12");
        copy = DelegateBase(); // drops the handlers without deleting them
    }
    DelegateBase const& self = source;
    source = self;
    EXPECT_EQ(TrailOf(source), "12");
    EXPECT_EQ(Numbered::alive, 2);
}

} // namespace Zan::Orv::Core::Service::Tests
