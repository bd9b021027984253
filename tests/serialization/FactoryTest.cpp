#include "orv/serialization/Factory.h"

#include "orv/foundation/Exception.h"
#include "orv/serialization/ISerializable.h"
#include "tests/support/ExpectThrow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <typeinfo>

namespace Zan::Orv::Core::Service::Tests {

struct FactoryAlpha : ISerializable
{
    explicit FactoryAlpha(int m = 1) : mark(m) {}
    void Serialize(Serializer&) override {}
    int mark;
};

struct FactoryBeta : ISerializable
{
    void Serialize(Serializer&) override {}
};

namespace {

template<class T, int... mark>
ISerializable* Make()
{
    return new T(mark...);
}

// What stands before the name of a type differs between run times.
auto Says(std::string const& before, std::string const& typeName, std::string const& after)
{
    using namespace ::testing;
    return ThrowsMessage<SerializeException>(
        AllOf(StartsWith(before), HasSubstr("Zan::Orv::Core::Service::Tests::" + typeName), EndsWith(after)));
}

struct FactoryTest : ::testing::Test
{
    ~FactoryTest() override
    {
        for (char const* name : {"A", "B"})
            factory.Unregister(name);
    }

    int MarkOf(std::string const& className) const
    {
        std::unique_ptr<ISerializable> const object(factory.Construct(className));
        return dynamic_cast<FactoryAlpha&>(*object).mark;
    }

    Factory& factory = Factory::GetFactory();
};

TEST_F(FactoryTest, RefusesAnotherTypeAndAnotherNameAndStaysAsItWas)
{
    FactoryRegistrar<FactoryAlpha> const registrar("A");
    EXPECT_THAT([&] { factory.Register("A", Make<FactoryBeta>, typeid(FactoryBeta)); },
                Says("Failed to register 'A' with factory: Class name 'A' is already registered with type '",
                     "FactoryAlpha", "'."));
    EXPECT_THAT([&] { factory.Register("B", Make<FactoryAlpha, 2>, typeid(FactoryAlpha)); },
                Says("Failed to register 'B' with factory: Type '", "FactoryAlpha",
                     "' is already registered with class name 'A'."));

    // Both refused names and types are still free, and the last creator of the same pair holds.
    EXPECT_EQ(MarkOf("A"), 1);
    factory.Register("A", Make<FactoryAlpha, 3>, typeid(FactoryAlpha));
    EXPECT_EQ(MarkOf("A"), 3);
    EXPECT_THROW(factory.Construct("B"), SerializeException);
    factory.Register("B", Make<FactoryBeta>, typeid(FactoryBeta));
    EXPECT_EQ(factory.GetClassName(typeid(FactoryAlpha)), "A");
    EXPECT_EQ(factory.GetClassName(typeid(FactoryBeta)), "B");
}

TEST_F(FactoryTest, UnregisterFreesNameAndType)
{
    factory.Register("A", Make<FactoryAlpha, 1>, typeid(FactoryAlpha));
    factory.Unregister("never registered");
    factory.Unregister("A");
    EXPECT_TRUE(Throws<SerializeException>(
        [&] { factory.Construct("A"); }, "Failed to construct 'A' in factory: Class name is not registered"));
    EXPECT_THAT([&] { factory.GetClassName(typeid(FactoryAlpha)); },
                Says("Failed to get class name for type '", "FactoryAlpha",
                     "' in factory: Type name is not registered."));
    factory.Register("A", Make<FactoryBeta>, typeid(FactoryBeta));
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
