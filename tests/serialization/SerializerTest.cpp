#include "orv/serialization/Serializer.h"

#include "orv/foundation/Exception.h"
#include "tests/serialization/Documents.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/Model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <set>
#include <stdexcept>
#include <thread>
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

TEST(SerializerTest, IdentitiesRiseWithFirstSightAcrossBothKinds)
{
    GraphGuard const guard;
    std::ostringstream stream;
    StreamOutputSerializer writer(stream);
    Serializer serializer(writer);
    auto const write = [&](auto& value) {
        stream.str("");
        serializer.Serialize(value, "x");
        return stream.str();
    };

    RawNode* raw = new RawLeaf;
    raw->left = raw;
    auto shared = std::make_shared<Node>();
    std::pair pair(raw, shared);
    std::string const nodeLines = "\n# -1\nOil\n0\n0\n";
    EXPECT_EQ(write(pair),
              "2\nTests::RawLeaf 1\n0.00000000000000000000e+00\n# 1\n# 0\nTests::Node 2\n" + nodeLines);
    Node* alias = shared.get(); // another object to the serializer, being held in another way
    EXPECT_EQ(write(shared), "# 2\n");
    EXPECT_EQ(write(alias), "Tests::Node 3\n" + nodeLines);
    EXPECT_EQ(write(raw), "# 1\n");

    // An object that dies before its document does not lend its identity to the next at its place.
    for (std::string const id : {"4", "5", "6"})
    {
        auto mortal = std::make_shared<Node>();
        EXPECT_EQ(write(mortal), "Tests::Node " + id + "\n" + nodeLines);
    }
}

TEST(SerializerTest, EnumerationsAreTheirExactNames)
{
    auto const fails = [](auto action, std::string const& conversion, std::string const& value) {
        EXPECT_TRUE(Throws<std::runtime_error>(
            action, "Failed to convert " + conversion +
                        " [type='enum Zan::Orv::Core::Service::Tests::Phase::Enum' value='" + value + "']"));
    };
    PhaseWrapper wrapper(Phase::Gas);
    EXPECT_EQ(TextForm::Write(wrapper), "# -1\nGas & condensate\n");
    for (std::string const name : {"", "oil", "Oil ", "0"})
        fails([&] { TextForm::Read("# -1\n" + name + "\n", wrapper); }, "string to enum", name);
    fails([&] { XMLForm::Read(XML(""), wrapper); }, "string to enum", "");
    EXPECT_EQ(wrapper.Get(), Phase::Gas);
    PhaseWrapper nameless(static_cast<Phase::Enum>(3));
    fails([&] { TextForm::Write(nameless); }, "enum to string", "3");
    EXPECT_EQ(PhaseWrapper().Get(), Phase::Oil);
}

template<class Form>
struct SerializerFormTest : ::testing::Test
{
    GraphGuard guard;
};
TYPED_TEST_SUITE(SerializerFormTest, Forms);

TYPED_TEST(SerializerFormTest, ContainersComeBackAndReplaceWhatWasThere)
{
    auto const same = [](auto value, auto target) {
        TypeParam::Read(TypeParam::Write(value), target);
        EXPECT_EQ(target, value);
    };
    same(std::vector<bool>{true, false, true}, std::vector<bool>{false});
    same(std::list<std::optional<long>>{3L, std::nullopt}, std::list<std::optional<long>>{4, 5});
    same(std::set<std::string>{"b", "a", "<&>\\"}, std::set<std::string>{"old"});
    same(std::multimap<int, double>{{1, 0.1}, {1, 1e-300}}, std::multimap<int, double>{{1, 2.0}});
    using Nested = std::map<std::pair<int, bool>, std::array<std::deque<char>, 2>>;
    same(Nested{{{1, true}, {}}, {{0, false}, {std::deque{'a', '\n'}, {}}}}, Nested{});

    auto const refused = [document = XML("<x><item>1</item><item>2</item><item>3</item></x>")](auto target) {
        EXPECT_THROW(XMLForm::Read(document, target), SerializeException);
        EXPECT_THROW(TextForm::Read("3\n1\n2\n3\n", target), SerializeException);
    };
    refused(std::array<int, 2>());
    refused(std::pair<int, int>());
    refused(std::optional<int>());
}

TYPED_TEST(SerializerFormTest, AClassThatThePointerCannotHoldIsRefusedAndFreed)
{
    auto const node = std::make_shared<Node>();
    std::pair both(node, node); // the second is a reference
    std::pair<std::shared_ptr<Node>, std::shared_ptr<Valve>> read;
    EXPECT_THROW(TypeParam::Read(TypeParam::Write(both), read), SerializeException);
    EXPECT_TRUE(read.first != nullptr && read.second == nullptr);
    std::pair<std::shared_ptr<Valve>, int> first;
    EXPECT_THROW(TypeParam::Read(TypeParam::Write(both), first), SerializeException);
    EXPECT_EQ(Node::Living().size(), 2U);

    RawNode* raw = new RawNode;
    RawLeaf* leaf = nullptr;
    EXPECT_THROW(TypeParam::Read(TypeParam::Write(raw), leaf), SerializeException);
    EXPECT_EQ(RawNode::Living().size(), 1U);
}

TYPED_TEST(SerializerFormTest, AnObjectMadeBeforeAFailureStaysWithItsPointer)
{
    std::vector<std::shared_ptr<Node>> nodes{std::make_shared<Node>(), std::make_shared<Node>()};
    nodes[1]->phase = Phase::Water;
    std::set<RawNode*> raw{new RawNode};
    (*raw.begin())->left = new RawLeaf;
    std::string document = TypeParam::Write(nodes);
    std::string rawDocument = TypeParam::Write(raw);
    document.replace(document.find("Water"), 5, "Steam");
    rawDocument.replace(rawDocument.find("RawLeaf"), 7, "NoClass");
    nodes.clear();
    raw.clear();
    EXPECT_THROW(TypeParam::Read(document, nodes), std::runtime_error);
    EXPECT_THROW(TypeParam::Read(rawDocument, raw), SerializeException);
    EXPECT_TRUE(nodes.size() == 2 && raw.size() == 1);
}

TEST(SerializerTest, ReferencesNeedAnObjectOfTheSameKind)
{
    GraphGuard const guard;
    auto const missing = [](auto action, std::string const& id) {
        std::string const head = "Failed to deserialize object with tag 'x': Referenced object with id '";
        EXPECT_TRUE(Throws<SerializeException>(action, head + id + "' does not exist."));
    };
    RawNode* raw = nullptr;
    std::shared_ptr<Node> shared;
    missing([&] { TextForm::Read("# 7\n", raw); }, "7");
    missing([&] { TextForm::Read("# -2147483648\n", shared); }, "-2147483648");
    missing([&] { XMLForm::Read(XML("<x ></x>"), shared); }, "-1");

    std::pair<RawNode*, std::shared_ptr<Node>> kinds;
    EXPECT_THROW(TextForm::Read("2\nTests::RawNode 1\n0\n# 0\n# 0\n# 1\n", kinds), SerializeException);

    // An identity that comes again is the later object's, and may be any number.
    for (std::string const id : {" 1\n", " -5\n"})
    {
        std::string const object = "Tests::RawNode" + id + "1\n# 0\n# 0\n";
        std::array<RawNode*, 3> three{};
        TextForm::Read("3\n" + object + object + "#" + id, three);
        EXPECT_TRUE(three[0] != three[1] && three[2] == three[1]) << id;
    }
}

TEST(SerializerTest, EqualKeysAreAFailureAndLoseNothing)
{
    GraphGuard const guard;
    std::string const element = "2\n7\nTests::RawNode 1\n1\n# 0\n# 0\n";
    std::map<int, RawNode*> nodes;
    EXPECT_TRUE(Throws<SerializeException>(
        [&] { TextForm::Read("2\n" + element + element, nodes); },
        "Failed to deserialize array with tag 'x': Element 2 has the key of an earlier one."));
    EXPECT_EQ(nodes.size(), 1U);
    EXPECT_EQ(RawNode::Living().size(), 1U);

    std::set<std::string> names;
    EXPECT_THROW(XMLForm::Read(XML("<x><item>a</item><item>a</item></x>"), names), SerializeException);
    EXPECT_TRUE(Throws<SerializeException>(
        [&] { BinaryForm::Read(std::string("\0\0\0\2\0\0\0\0", 8), names); },
        "Failed to deserialize array with tag 'x': The input ended at element 2 of 2."));
}

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

TEST_F(FactoryTest, ACreatorThatMakesNothingIsAFailure)
{
    std::shared_ptr<ISerializable> any;
    auto const none = []() -> ISerializable* { return nullptr; };
    factory.Register("A", none, typeid(none));
    EXPECT_THROW(TextForm::Read("A 1\n", any), SerializeException);
}

struct Nest : ISerializable
{
    std::vector<Nest> nests;
    void Serialize(Serializer& serializer) override { serializer.Serialize(nests, "x"); }
};

// Chains of objects are a test of load.
TEST(SerializerTest, ContainersTooDeepForTheStackAreAFailureAndNoCrash)
{
    std::string const document = "# -1\n" + Repeat(1'000'000, "1\n# -1\n") + "0\n";
    std::thread([&] {
        Nest nest;
        EXPECT_THROW(TextForm::Read(document, nest), SerializeException);
    }).join();
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
