#include "tests/serialization/Documents.h"
#include "orv/foundation/Exception.h"
#include "tests/support/Model.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

namespace Zan::Orv::Core::Service::Tests {

namespace {

void ExpectRefused(std::string const& document, std::string const& what)
{
    std::string value;
    EXPECT_THROW(XMLForm::Read(document, value), SerializeException) << what;
}

template<class Form>
struct DocumentsFormTest : ::testing::Test
{
    GraphGuard guard;
};
TYPED_TEST_SUITE(DocumentsFormTest, Forms);

TYPED_TEST(DocumentsFormTest, ATruncatedDocumentIsRefused)
{
    std::vector<std::shared_ptr<Node>> nodes{std::make_shared<Node>(), std::make_shared<Valve>()};
    std::string const document = TypeParam::Write(nodes);
    std::vector<std::shared_ptr<Node>> read;
    EXPECT_THROW(TypeParam::Read(document.substr(0, document.find("Valve")), read), SerializeException);
    EXPECT_LE(read.size(), 2U);
}

TEST(DocumentsTest, ACountCostsNoMoreThanTheElementsBehindIt)
{
    for (std::string const count : {"-1", "9223372036854775807", "4294967295"})
    {
        std::string const document = count + "\n1\n2\n3\n";
        std::vector<int> numbers;
        EXPECT_THROW(TextForm::Read(document, numbers), SerializeException) << count;
        EXPECT_LT(numbers.capacity(), 100U) << count;
    }
}

TEST(DocumentsTest, WhatIsNoDocumentIsRefused)
{
    for (std::string const document :
         {"", "text", "<doc/><doc/>", "<doc><x></doc></x>", "<doc a='1' a='2'/>", "<doc>&none;</doc>",
          "<doc>\x01</doc>", "<doc>\xC3</doc>", "<?xml version='1.0' encoding='none-such'?><doc/>",
          "<?xml version='1.0' encoding='UTF-16'?><doc/>", "<?xml version='9'?><doc/>"})
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
    for (std::string const& external : {"SYSTEM '" + file + "'", "PUBLIC '-//N//C' 'file://" + file + "'"})
    {
        ExpectRefused("<!DOCTYPE doc " + external + "><doc><x>1</x></doc>", external);
        ExpectRefused("<!DOCTYPE doc [<!ENTITY e " + external + ">]><doc><x>&e;</x></doc>", external);
        ExpectRefused("<!DOCTYPE doc [<!ENTITY % p " + external + "> %p;]><doc><x>&e;</x></doc>", external);
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
    for (char last = '0'; last != '4'; ++last)
    {
        std::string const head = std::string("<!ENTITY e") + static_cast<char>(last + 1) + " '";
        entities += head + Repeat(10, std::string("&e") + last + ";") + "'>";
    }
    auto const document = [](std::string const& declarations, std::string const& rest) {
        return "<!DOCTYPE doc [" + declarations + "]><doc " + rest + "</doc>";
    };
    ExpectRefused(document(entities, "><x>&e4;</x>"), "in text");
    ExpectRefused(document(entities, "a='&e4;'>"), "in an attribute");
    ExpectRefused(document("<!ATTLIST doc a CDATA 'x'>", ">"), "a default");
    ExpectRefused(document("<!ENTITY e '&f;'><!ENTITY f '&e;'>", "a='&e;'>"), "in a circle");

    std::string const large(20'000, 'x');
    ExpectRefused(document("<!ENTITY e '" + large + "'>", ">" + Repeat(500, "<x>&e;</x>")), "a large one");
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
