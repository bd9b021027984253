#include "tests/serialization/Documents.h"
#include "orv/foundation/Exception.h"
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
    catch (std::exception const& e)
    {
        bool const isKnown = dynamic_cast<std::runtime_error const*>(&e) != nullptr ||
                             dynamic_cast<std::out_of_range const*>(&e) != nullptr ||
                             typeid(e) == typeid(std::exception);
        if (!isKnown)
            return ::testing::AssertionFailure() << typeid(e).name() << ": " << e.what();
    }
    return ::testing::AssertionSuccess();
}

// Distributions differ between standard libraries; the engine does not.
using Dice = std::mt19937;

std::string RandomText(Dice& dice)
{
    static char const* const pieces[] = {"a",  "<", "&", "\"", "'",        ">",  "\\",
                                         "\n", "n", " ", "#",  "\xC3\xA9", "]]>"};
    std::string text = "t"; // an empty text leaves its target alone in XML
    for (std::size_t i = dice() % 6; i != 0; --i)
        text += pieces[dice() % std::size(pieces)];
    return text;
}

using Graph = std::vector<std::shared_ptr<Node>>;

std::shared_ptr<Node> RandomNode(Dice& dice)
{
    auto const valve = std::make_shared<Valve>();
    valve->setting = static_cast<double>(dice() % 1'000'000) / 7.0;
    valve->open = dice() % 2 == 0;
    if (dice() % 2 == 0)
        valve->serial = static_cast<long>(dice() % 1'000'000);
    valve->levels = {{RandomText(dice), std::vector<float>(dice() % 3, 0.1f)}};
    auto const node = dice() % 2 == 0 ? std::make_shared<Node>() : valve;
    node->name = RandomText(dice);
    node->phase = static_cast<Phase::Enum>(dice() % 3);
    return node;
}

// Any node may refer to any other, itself and null included.
Graph RandomGraph(Dice& dice, std::size_t size)
{
    Graph nodes(size);
    for (auto& node : nodes)
        node = RandomNode(dice);
    auto const any = [&] { return dice() % 4 == 0 ? nullptr : nodes[dice() % nodes.size()]; };
    for (auto const& node : nodes)
    {
        for (std::size_t i = dice() % 4; i != 0; --i)
            node->links.push_back(any());
        for (std::size_t i = dice() % 3; i != 0; --i)
            node->byName[RandomText(dice)] = any();
    }
    return nodes;
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

// What came back is written in another form, so that no fault of one form hides behind itself.
TEST(DocumentsTest, RandomGraphsComeBackTheSame)
{
    for (unsigned int seed = 1; seed <= 200; ++seed)
    {
        GraphGuard const guard;
        Dice dice(seed);
        Graph graph = RandomGraph(dice, 1 + dice() % 30);
        std::string const xml = XMLForm::Write(graph);
        std::string const text = TextForm::Write(graph);
        std::string const bytes = BinaryForm::Write(graph);
        Graph fromXML;
        Graph fromText;
        Graph fromBytes;
        XMLForm::Read(xml, fromXML);
        TextForm::Read(text, fromText);
        BinaryForm::Read(bytes, fromBytes);
        ASSERT_EQ(TextForm::Write(fromXML), text) << "seed " << seed;
        ASSERT_EQ(BinaryForm::Write(fromText), bytes) << "seed " << seed;
        ASSERT_EQ(XMLForm::Write(fromBytes), xml) << "seed " << seed;
    }
    EXPECT_TRUE(Node::Living().empty());
}

TEST(DocumentsTest, DocumentsCutShortNeverCrash)
{
    GraphGuard const guard;
    Dice dice(7);
    Graph graph = RandomGraph(dice, 4);
    std::string const xml = XMLForm::Write(graph);
    for (std::size_t length = 0; length < xml.size(); ++length)
    {
        Graph read;
        EXPECT_THROW(XMLForm::Read(xml.substr(0, length), read), SerializeException) << length;
    }
    std::string const text = TextForm::Write(graph);
    for (std::size_t length = 0; length < text.size(); ++length)
        EXPECT_TRUE(GraphEndsWell<TextForm>(text.substr(0, length))) << length;
    std::string const bytes = BinaryForm::Write(graph);
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_TRUE(GraphEndsWell<BinaryForm>(bytes.substr(0, length))) << length;
}

TEST(DocumentsTest, DocumentsWithChangedBytesNeverCrash)
{
    GraphGuard const guard;
    constexpr unsigned int seed = 20240611;
    Dice random(seed);
    Graph graph = RandomGraph(random, 4);
    std::string const xml = XMLForm::Write(graph);
    std::string const text = TextForm::Write(graph);
    std::string const bytes = BinaryForm::Write(graph);
    auto const change = [&random](std::string document) {
        for (auto changes = 1 + random() % 4; changes != 0; --changes)
        {
            // Half of the changes swap in a byte of the document, so that more of it still has a meaning.
            char const any = static_cast<char>(random() & 0xFF);
            bool const known = random() % 2 == 0;
            document[random() % document.size()] = known ? document[random() % document.size()] : any;
        }
        return document;
    };
    for (int round = 0; round < 3000; ++round)
    {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
        EXPECT_TRUE(GraphEndsWell<TextForm>(change(text)));
        EXPECT_TRUE(GraphEndsWell<BinaryForm>(change(bytes)));
        EXPECT_TRUE(round % 3 != 0 || GraphEndsWell<XMLForm>(change(xml)));
    }
}

TEST(DocumentsTest, ACountCostsNoMoreThanTheElementsBehindIt)
{
    for (std::string const count :
         {"18446744073709551615", "-1", "9223372036854775807", "4294967295", "1000000000"})
    {
        std::string const document = count + "\n1\n2\n3\n";
        std::vector<int> numbers;
        EXPECT_THROW(TextForm::Read(document, numbers), SerializeException) << count;
        EXPECT_LT(numbers.capacity(), 100U) << count;
        auto const refused = [&](auto target) {
            EXPECT_THROW(TextForm::Read(document, target), SerializeException) << count;
        };
        refused(std::vector<std::string>());
        refused(std::map<int, int>());
        refused(std::set<std::vector<bool>>());
        refused(std::vector<std::vector<int>>());
    }
    for (std::string const count :
         {"", "x", "-", "99999999999999999999", "1e9", "0x5", "# -1", "\n\n\n", "\xFF"})
    {
        std::vector<std::string> texts;
        EXPECT_TRUE(EndsWell([&] { TextForm::Read(count + "\na\nb\n", texts); })) << count;
        EXPECT_LT(texts.size(), 4U) << count;
    }
}

TEST(DocumentsTest, WhatIsNoDocumentIsRefused)
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

TEST(DocumentsTest, DeepAndWideDocumentsAreRead)
{
    std::vector<int> elements;
    std::string value = "kept";
    XMLForm::Read(XML(Repeat(100'000, "<y>") + Repeat(100'000, "</y>") + "<x>1</x>"), value);
    EXPECT_EQ(value, "1");
    XMLForm::Read(XML("<x>" + Repeat(1'000'000, "<item/>") + "</x>"), elements);
    EXPECT_EQ(elements.size(), 1'000'000U);
}

TEST(DocumentsTest, NothingOutsideTheStreamIsRead)
{
    auto const path = std::filesystem::path(::testing::TempDir()) / "orv-hostile-documents-test.dtd";
    std::ofstream(path, std::ios::binary) << "<!ENTITY e \"outside\">";
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

TEST(DocumentsTest, EntitiesDoNotMultiply)
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
