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
    explicit FactoryAlpha(int mark = 1) : mark_(mark) {}
    void Serialize(Serializer&) override {}
    int mark_;
};

struct FactoryBeta : ISerializable
{
    void Serialize(Serializer&) override {}
};

namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::ThrowsMessage;

template<class T, int... mark>
ISerializable* Make()
{
    return new T(mark...);
}

// What stands before the name of a type differs between run times.
auto Says(std::string const& before, std::string const& typeName, std::string const& after)
{
    return ThrowsMessage<SerializeException>(
        AllOf(StartsWith(before), HasSubstr("Zan::Orv::Core::Service::Tests::" + typeName), EndsWith(after)));
}

class FactoryTest : public ::testing::Test
{
protected:
    ~FactoryTest() override
    {
        for (char const* name : {"A", "B"})
            factory_.Unregister(name);
    }

    int MarkOf(std::string const& className) const
    {
        std::unique_ptr<ISerializable> const object(factory_.Construct(className));
        return dynamic_cast<FactoryAlpha&>(*object).mark_;
    }

    Factory& factory_ = Factory::GetFactory();
};

TEST_F(FactoryTest, TheLastCreatorOfTheSamePairHolds)
{
    FactoryRegistrar<FactoryAlpha> const registrar("A");
    EXPECT_EQ(MarkOf("A"), 1);
    factory_.Register("A", Make<FactoryAlpha, 2>, typeid(FactoryAlpha));
    EXPECT_EQ(MarkOf("A"), 2);
    EXPECT_EQ(factory_.GetClassName(typeid(FactoryAlpha)), "A");
}

TEST_F(FactoryTest, RefusesAnotherTypeAndAnotherNameAndStaysAsItWas)
{
    factory_.Register("A", Make<FactoryAlpha, 1>, typeid(FactoryAlpha));
    EXPECT_THAT([&] { factory_.Register("A", Make<FactoryBeta>, typeid(FactoryBeta)); },
                Says("Failed to register 'A' with factory: Class name 'A' is already registered with type '",
                     "FactoryAlpha", "'."));
    EXPECT_THAT([&] { factory_.Register("B", Make<FactoryAlpha, 2>, typeid(FactoryAlpha)); },
                Says("Failed to register 'B' with factory: Type '", "FactoryAlpha",
                     "' is already registered with class name 'A'."));

    EXPECT_EQ(MarkOf("A"), 1);
    EXPECT_EQ(factory_.GetClassName(typeid(FactoryAlpha)), "A");
    EXPECT_THROW(factory_.Construct("B"), SerializeException);
    EXPECT_THROW(factory_.GetClassName(typeid(FactoryBeta)), SerializeException);

    // Both refused names and types are still free.
    factory_.Register("B", Make<FactoryBeta>, typeid(FactoryBeta));
    EXPECT_EQ(factory_.GetClassName(typeid(FactoryBeta)), "B");
}

TEST_F(FactoryTest, UnregisterFreesNameAndType)
{
    factory_.Register("A", Make<FactoryAlpha, 1>, typeid(FactoryAlpha));
    factory_.Unregister("never registered");
    factory_.Unregister("A");
    EXPECT_TRUE(
        Throws<SerializeException>([&] { factory_.Construct("A"); },
                                   "Failed to construct 'A' in factory: Class name is not registered"));
    EXPECT_THAT([&] { factory_.GetClassName(typeid(FactoryAlpha)); },
                Says("Failed to get class name for type '", "FactoryAlpha",
                     "' in factory: Type name is not registered."));
    factory_.Register("A", Make<FactoryBeta>, typeid(FactoryBeta));
    factory_.Register("B", Make<FactoryAlpha, 1>, typeid(FactoryAlpha));
    EXPECT_EQ(MarkOf("B"), 1);
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
