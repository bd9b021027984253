#include "orv/foundation/Exception.h"
#include "tests/serialization/Documents.h"
#include "tests/support/Model.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <typeinfo>

namespace Zan::Orv::Core::Service::Tests {

namespace {

// The ways in which a reading may end: well, with a failure of the document, or with one of a number, an
// enumeration or a time in it. Running out of memory is none of them.
template<class Action>
::testing::AssertionResult EndsWell(Action&& action)
{
    try
    {
        action();
    }
    catch (std::runtime_error const&)
    { // SerializeException and TimeException are among these
    }
    catch (std::out_of_range const&)
    {}
    catch (std::exception const& e)
    {
        if (typeid(e) != typeid(std::exception))
            return ::testing::AssertionFailure() << typeid(e).name() << ": " << e.what();
    }
    return ::testing::AssertionSuccess();
}

// Counts the bytes that a container asked for.
std::size_t asked = 0;

template<class T>
struct CountingAllocator
{
    using value_type = T;
    CountingAllocator() = default;
    template<class U>
    CountingAllocator(CountingAllocator<U> const&)
    {}
    T* allocate(std::size_t count)
    {
        asked += count * sizeof(T);
        return std::allocator<T>().allocate(count);
    }
    void deallocate(T* pointer, std::size_t count) { std::allocator<T>().deallocate(pointer, count); }
    bool operator==(CountingAllocator const&) const { return true; }
};

using Graph = std::vector<std::shared_ptr<Node>>;

// A cycle, a shared node, every class and every kind of field.
Graph Sample()
{
    auto const node = std::make_shared<Node>();
    auto const valve = std::make_shared<Valve>();
    auto const tank = std::make_shared<Tank>();
    node->name = "a<b\nc\\d";
    node->next = valve;
    node->byName = {{"self", node}, {"none", nullptr}};
    valve->serial = -5;
    valve->setting = 0.1;
    valve->links = {node, tank};
    tank->levels = {{"low", {0.5f, 1.5f}}};
    return {node, valve, tank};
}

template<class Form>
::testing::AssertionResult GraphEndsWell(std::string const& document)
{
    Graph read;
    GraphGuard const guard;
    return EndsWell([&] { Form::Read(document, read); });
}

void ExpectRefused(std::string const& document, std::string const& what)
{
    std::string value;
    EXPECT_THROW(XMLForm::Read(document, value), SerializeException) << what;
}

TEST(HostileDocumentsTest, DocumentsCutShortNeverCrash)
{
    GraphGuard const guard;
    Graph graph = Sample();
    std::string const xml = XMLForm::Write(graph);
    for (std::size_t length = 0; length < xml.size(); ++length)
    {
        Graph read;
        EXPECT_THROW(XMLForm::Read(xml.substr(0, length), read), SerializeException) << length;
    }
    std::string const text = TextForm::Write(graph);
    for (std::size_t length = 0; length < text.size(); ++length)
        EXPECT_TRUE(GraphEndsWell<TextForm>(text.substr(0, length))) << length;
}

TEST(HostileDocumentsTest, DocumentsWithChangedBytesNeverCrash)
{
    std::string xml;
    std::string text;
    {
        GraphGuard const guard;
        Graph graph = Sample();
        xml = XMLForm::Write(graph);
        text = TextForm::Write(graph);
    }
    constexpr unsigned int seed = 20240611;
    std::mt19937 random(seed);
    for (int round = 0; round < 3000; ++round)
    {
        std::string changedXML = xml;
        std::string changedText = text;
        for (auto changes = 1 + random() % 4; changes != 0; --changes)
        {
            // Half of the changes swap in a byte of the document, so that more of it still has a meaning.
            char const any = static_cast<char>(random() & 0xFF);
            bool const known = random() % 2 == 0;
            changedText[random() % text.size()] = known ? text[random() % text.size()] : any;
            changedXML[random() % xml.size()] = known ? xml[random() % xml.size()] : any;
        }
        EXPECT_TRUE(GraphEndsWell<TextForm>(changedText)) << "seed " << seed << ", round " << round;
        EXPECT_TRUE(round % 3 != 0 || GraphEndsWell<XMLForm>(changedXML))
            << "seed " << seed << ", round " << round;
    }
    EXPECT_TRUE(Node::Living().empty());
}

TEST(HostileDocumentsTest, ACountCostsNoMoreThanTheElementsBehindIt)
{
    for (std::string const count :
         {"18446744073709551615", "-1", "9223372036854775807", "4294967295", "1000000000"})
    {
        std::string const document = count + "\n1\n2\n3\n";
        std::vector<int, CountingAllocator<int>> numbers;
        std::vector<std::string> texts;
        std::map<int, int> map;
        std::set<std::vector<bool>> nested;
        Graph graph;
        asked = 0;
        EXPECT_THROW(TextForm::Read(document, numbers), SerializeException) << count;
        EXPECT_LT(asked, 1000U) << count;
        EXPECT_THROW(TextForm::Read(document, texts), SerializeException) << count;
        EXPECT_THROW(TextForm::Read(document, map), SerializeException) << count;
        EXPECT_THROW(TextForm::Read(document, nested), SerializeException) << count;
        EXPECT_THROW(TextForm::Read(count + "\n# 0\n", graph), SerializeException) << count;
    }
    for (std::string const count :
         {"", "x", "-", "99999999999999999999", "1e9", "0x5", "# -1", "\n\n\n", "\xFF"})
    {
        std::vector<std::string> texts;
        EXPECT_TRUE(EndsWell([&] { TextForm::Read(count + "\na\nb\n", texts); })) << count;
        EXPECT_LT(texts.size(), 4U) << count;
    }
}

TEST(HostileDocumentsTest, WhatIsNoDocumentIsRefused)
{
    for (std::string const document :
         {"", "text", "<doc/><doc/>", "<doc/>x", "<doc><x></doc></x>", "<doc a='1' a='2'/>",
          "<doc>&none;</doc>", "<doc>&#0;</doc>", "<doc>\x01</doc>", "<doc>\xFF</doc>", "<doc>\xC3</doc>",
          "<doc>\xED\xA0\x80</doc>", "<?xml version='1.0' encoding='none-such'?><doc/>",
          "<?xml version='1.0' encoding='UTF-16'?><doc/>", "<?xml version='9'?><doc/>", "\xFE\xFF<doc/>"})
        ExpectRefused(document, document);
    ExpectRefused(std::string("<doc>\0</doc>", 12), "a null byte");

    std::istringstream failed("<doc/>");
    failed.setstate(std::ios::badbit);
    EXPECT_THROW(XMLInputSerializer(failed, "doc"), SerializeException);
}

TEST(HostileDocumentsTest, DeepAndWideDocumentsAreRead)
{
    std::vector<int> elements;
    std::string value = "kept";
    XMLForm::Read(XML(Repeat(100'000, "<y>") + Repeat(100'000, "</y>") + "<x>1</x>"), value);
    EXPECT_EQ(value, "1");
    XMLForm::Read(XML("<x>" + Repeat(1'000'000, "<item/>") + "</x>"), elements);
    EXPECT_EQ(elements.size(), 1'000'000U);
}

TEST(HostileDocumentsTest, NothingOutsideTheStreamIsRead)
{
    auto const path = std::filesystem::path(::testing::TempDir()) / "orv-hostile-documents-test.dtd";
    std::ofstream(path) << "<!ENTITY e \"outside\">";
    std::string const file = path.generic_string();
    for (std::string const& id : {file, "file://" + file, "file:///" + file, std::string("none-such.dtd")})
        for (std::string const& external : {"SYSTEM '" + id + "'", "PUBLIC '-//N//C' '" + id + "'"})
        {
            ExpectRefused("<!DOCTYPE doc " + external + "><doc><x>1</x></doc>", external);
            ExpectRefused("<!DOCTYPE doc [<!ENTITY e " + external + ">]><doc><x>&e;</x></doc>", external);
            ExpectRefused("<!DOCTYPE doc [<!ENTITY e " + external + ">]><doc a='&e;'/>", external);
            ExpectRefused("<!DOCTYPE doc [<!ENTITY % p " + external + "> %p;]><doc><x>&e;</x></doc>",
                          external);
        }
    // Hints to a schema are plain attributes.
    std::string value;
    XMLForm::Read("<doc xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:noNamespaceSchemaLocation='" +
                      file + "'><x>1</x></doc>",
                  value);
    EXPECT_EQ(value, "1");
    std::filesystem::remove(path);
}

TEST(HostileDocumentsTest, EntitiesDoNotMultiply)
{
    // Each entity is ten of the one before: 10,000 of the first, which is enough to tell and harmless to
    // expand.
    std::string entities = "<!ENTITY e0 'ha'>";
    std::string parameters = "<!ENTITY % e0 '<!ELEMENT y ANY>'>";
    for (char last = '0'; last != '4'; ++last)
    {
        std::string const head = std::string("e") + static_cast<char>(last + 1) + " '";
        entities += "<!ENTITY " + head + Repeat(10, std::string("&e") + last + ";") + "'>";
        parameters += "<!ENTITY % " + head + Repeat(10, std::string("&#37;e") + last + ";") + "'>";
    }
    auto const document = [](std::string const& declarations, std::string const& rest) {
        return "<!DOCTYPE doc [" + declarations + "]><doc " + rest + "</doc>";
    };
    ExpectRefused(document(entities, "><x>&e4;</x>"), "in text");
    ExpectRefused(document(entities, "a='&e4;'>"), "in an attribute");
    ExpectRefused(document(entities + "<!ATTLIST doc a CDATA '&e4;'>", ">"), "in a default");
    ExpectRefused(document(parameters + "%e4;", ">"), "in declarations");
    ExpectRefused(document("<!ENTITY e '&f;'><!ENTITY f '&e;'>", "a='&e;'>"), "in a circle");

    std::string const large(20'000, 'x');
    ExpectRefused(document("<!ENTITY e '" + large + "'>", ">" + Repeat(500, "<x>&e;</x>")), "a large one");
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
