#include "tests/serialization/Documents.h"
#include "orv/foundation/Exception.h"
#include "tests/serialization/StreamBuffers.h"
#include "tests/support/Model.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <type_traits>
#include <typeinfo>

namespace Zan::Orv::Core::Service::Tests {

namespace {

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

// Any node may refer to any other, itself and null included.
Graph RandomGraph(Dice& dice, std::size_t size)
{
    Graph nodes(size);
    for (auto& node : nodes)
    {
        auto const valve = std::make_shared<Valve>();
        valve->setting = static_cast<double>(dice() % 1'000'000) / 7.0;
        valve->open = dice() % 2 == 0;
        valve->levels = {{RandomText(dice), std::vector<float>(dice() % 3, 0.1f)}};
        node = dice() % 2 == 0 ? std::make_shared<Node>() : valve;
        node->name = RandomText(dice);
        node->phase = static_cast<Phase::Enum>(dice() % 3);
    }
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

// A reading may end well, with a failure of the document, or with one of a number, an enumeration or a time in it.
// Running out of memory is none of them.
template<class Form, class T>
void ExpectEndsWell(std::string const& document, T& target)
{
    try
    {
        Form::Read(document, target);
    }
    catch (std::runtime_error const&)
    {}
    catch (std::out_of_range const&)
    {}
    catch (std::exception const& e)
    {
        EXPECT_TRUE(typeid(e) == typeid(std::exception)) << typeid(e).name() << ": " << e.what();
    }
}

void ExpectRefused(std::string const& document, std::string const& what)
{
    std::string value;
    EXPECT_THROW(XMLForm::Read(document, value), SerializeException) << what;
}

template<class From, class To>
void ExpectCopied(Graph& graph)
{
    Graph read;
    From::Read(From::Write(graph), read);
    ASSERT_EQ(To::Write(read), To::Write(graph));
}

// What came back is written in another form, so that no fault of one form hides behind itself.
TEST(DocumentsTest, RandomGraphsComeBackTheSame)
{
    for (unsigned int seed = 1; seed <= 200; ++seed)
    {
        SCOPED_TRACE(seed);
        GraphGuard const guard;
        Dice dice(seed);
        Graph graph = RandomGraph(dice, 1 + dice() % 30);
        ExpectCopied<XMLForm, TextForm>(graph);
        ExpectCopied<TextForm, BinaryForm>(graph);
        ExpectCopied<BinaryForm, XMLForm>(graph);
    }
    EXPECT_TRUE(Node::Living().empty());
}

template<class Form>
struct DocumentsFormTest : ::testing::Test
{
    GraphGuard guard;
};
TYPED_TEST_SUITE(DocumentsFormTest, Forms);

TYPED_TEST(DocumentsFormTest, DocumentsWithChangedBytesNeverCrash)
{
    constexpr unsigned int seed = 20240611;
    constexpr int rounds = std::is_same_v<TypeParam, XMLForm> ? 1000 : 3000;
    Dice random(seed);
    Graph graph = RandomGraph(random, 4);
    std::string const whole = TypeParam::Write(graph);
    for (int round = 0; round < rounds; ++round)
    {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
        std::string document = whole;
        for (auto changes = 1 + random() % 4; changes != 0; --changes)
        {
            // Half of the changes swap in a byte of the document, so that more of it still has a meaning.
            char const any = static_cast<char>(random() & 0xFF);
            bool const known = random() % 2 == 0;
            document[random() % document.size()] = known ? document[random() % document.size()] : any;
        }
        GraphGuard const readGuard;
        Graph read;
        ExpectEndsWell<TypeParam>(document, read);
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
        refused(std::map<int, int>());
        refused(std::set<std::vector<bool>>());
        refused(std::vector<std::vector<int>>());
    }
    for (std::string const count :
         {"", "x", "-", "99999999999999999999", "1e9", "0x5", "# -1", "\n\n\n", "\xFF"})
    {
        std::vector<std::string> texts;
        ExpectEndsWell<TextForm>(count + "\na\nb\n", texts);
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

TEST(DocumentsTest, EachBackEndKnowsItsDirection)
{
    std::stringstream stream(XML(""));
    XMLInputSerializer xmlIn(stream, "doc");
    BinaryInputSerializer binaryIn(stream);
    StreamInputSerializer textIn(stream);
    std::ostringstream out;
    XMLOutputSerializer xmlOut(out, "doc");
    BinaryOutputSerializer binaryOut(out);
    StreamOutputSerializer textOut(out);
    for (ISerializerImpl* const reader : std::initializer_list<ISerializerImpl*>{&xmlIn, &binaryIn, &textIn})
        EXPECT_TRUE(reader->IsReading() && !reader->IsWriting());
    for (ISerializerImpl* const writer :
         std::initializer_list<ISerializerImpl*>{&xmlOut, &binaryOut, &textOut})
        EXPECT_TRUE(writer->IsWriting() && !writer->IsReading());
}

TEST(DocumentsTest, NothingOutsideTheStreamIsRead)
{
    TemporaryDirectory const folder;
    std::string const file =
        std::filesystem::path(folder.Write("hostile.dtd", "<!ENTITY e \"outside\">")).generic_string();
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

TYPED_TEST(DocumentsFormTest, ComeBackThroughEveryStack)
{
    Dice dice(1);
    Graph graph = RandomGraph(dice, 30);
    std::string const document = TypeParam::Write(graph);
    for (std::string const kinds : {"", "z", "6", "z6", "6z", "z6z6"})
    {
        std::stringbuf file;
        {
            Stack stack(file, kinds);
            std::ostream stream(stack.Top());
            TypeParam::WriteTo(stream, graph);
        }
        EXPECT_EQ(file.str(), Wrap(document, kinds)) << kinds;

        Stack stack(file, kinds);
        std::istream stream(stack.Top());
        Graph read;
        TypeParam::ReadFrom(stream, read);
        EXPECT_EQ(TypeParam::Write(read), document) << kinds;
    }
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
