#include "orv/foundation/Exception.h"
#include "tests/serialization/Documents.h"
#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

namespace {

// What a document holds of one value.
template<class T>
std::string Body(T value)
{
    std::string const document = XMLForm::Write(value);
    std::size_t const from = document.find("<x");
    std::string const body = document.substr(from, document.rfind("</doc>") - from);
    EXPECT_EQ(document, XML(body));
    return body;
}

TEST(XMLSerializerTest, ValuesHaveTheirElements)
{
    EXPECT_EQ(Body(1UL) + Body(static_cast<unsigned short>(7)) + Body(~0ULL),
              "<x>1</x><x>7</x><x>18446744073709551615</x>");
    EXPECT_EQ(Body(std::numeric_limits<long long>::min()), "<x>-9223372036854775808</x>");
    EXPECT_EQ(Body(-std::numeric_limits<double>::infinity()), "<x>-Inf\n</x>");
    EXPECT_EQ(Body(std::vector<std::vector<bool>>{{true}, {}}),
              "<x><item><item>true</item></item><item></item></x>");
    EXPECT_EQ(Body(std::optional<int>()), "<x></x>");
    // Markup is escaped, and nothing else.
    for (std::string const plain : {"", "\xC3\xA9\xFF\x01\r\n\t]]"})
        EXPECT_EQ(Body(plain), "<x>" + plain + "</x>");
    EXPECT_EQ(Body(std::string("a<<b>\"'&amp;")), "<x>a&lt;&lt;b&gt;&quot;&apos;&amp;amp;</x>");
}

TEST(XMLSerializerTest, IntegersFollowTheStreamAndNothingElseDoes)
{
    std::ostringstream stream;
    stream << std::hex << std::showbase << std::fixed;
    std::pair<int, double> values(255, 0.25);
    XMLForm::WriteTo(stream, values);
    EXPECT_EQ(stream.str(), XML("<x><item>0xff</item><item>2.50000000000000000000e-01\n</item></x>"));
}

TEST(XMLSerializerTest, WhatAFailedStreamRefusedIsNotKept)
{
    std::ostringstream stream;
    auto writer = std::make_unique<XMLOutputSerializer>(stream, "r");
    auto const write = [&](auto value) {
        stream.str("");
        writer->Scalar("t", 5, value);
        return stream.str();
    };
    stream.setstate(std::ios::badbit);
    EXPECT_EQ(write(1) + write(std::string("x")) + write(1.0) + write(true), "");
    stream.clear();
    EXPECT_EQ(write(2), "<t>2</t>");
    stream.exceptions(std::ios::badbit);
    EXPECT_THROW(stream.setstate(std::ios::badbit), std::ios::failure);
    EXPECT_THROW(write(1), std::ios::failure);
    EXPECT_NO_THROW(writer.reset());
}

// A reader of a document around `body`.
struct Reader
{
    explicit Reader(std::string const& body) : stream(XML(body)), xml(stream, "doc") {}

    template<class T>
    T Get(char const* tag, std::size_t index = 0, T value = T())
    {
        xml.Scalar(tag, index, value);
        return value;
    }

    std::string Text(char const* tag, std::size_t index = 0) { return Get<std::string>(tag, index, "none"); }

    // Opens an object; its class and identity.
    std::string Start(char const* tag, std::size_t index = 0)
    {
        std::string className = "old";
        int id = 99;
        xml.StartObject(tag, index, className, id);
        return className + '#' + std::to_string(id);
    }

    std::size_t StartArray(char const* tag)
    {
        std::size_t count = 99;
        xml.StartArray(tag, 0, count);
        return count;
    }

    void End() { xml.EndObject(""); }

    std::istringstream stream;
    XMLInputSerializer xml;
};

template<class T>
T Value(std::string const& text, T old = T())
{
    return Reader("<t>" + text + "</t>").Get<T>("t", 0, old);
}

TEST(XMLSerializerTest, IntegersAreTheirLeadingDigitsIn32Bits)
{
    constexpr int lowest = std::numeric_limits<std::int32_t>::min();
    constexpr int highest = std::numeric_limits<std::int32_t>::max();
    for (int const value : {0, -12, 70000, lowest, highest})
    {
        std::string const text = " \n\t" + std::to_string(value) + ".9 wells";
        EXPECT_EQ(Value<long long>(text), value) << text;
        EXPECT_EQ(Value<short>(text), static_cast<short>(value)) << text;
        EXPECT_EQ(Value<unsigned char>(text), static_cast<unsigned char>(value)) << text;
    }
    for (std::string const text : {"wells", "-+5", "- 5", ""})
        EXPECT_EQ(Value<int>("+005") + Value<int>(text), 5) << text;
    std::string const large = "99999999999999999999999";
    EXPECT_EQ(Value<long long>(large), highest);
    EXPECT_EQ(Value<long long>("-" + large), lowest);
    EXPECT_EQ(Value<unsigned long long>(large), 4294967295U);
    EXPECT_EQ(Value<unsigned long long>("-4294967296"), 4294967295U);
    EXPECT_EQ(Value<unsigned int>("4294967295"), 4294967295U);
    EXPECT_EQ(Value<unsigned long long>("-4294967295"), 1U);
}

TEST(XMLSerializerTest, NumbersAndBooleansAreStrict)
{
    EXPECT_EQ(Value<double>("1.5\n"), 1.5);
    EXPECT_TRUE(Throws<std::runtime_error>([] { Value<double>("abc"); }, "Unrecognized number: 'abc'"));
    EXPECT_TRUE(Value<bool>("true") && !Value<bool>("false", true) && Value<bool>("", true));
    EXPECT_TRUE(Throws<SerializeException>([] { Value<bool>("true "); },
                                           "Invalid boolean value: 'true ' in tag 't'."));
}

TEST(XMLSerializerTest, WhatIsMissingLeavesItsTargetAlone)
{
    for (char const* const body : {"", "<T>1</T>", "<t/>", "<t><u>1</u></t>"})
    {
        Reader reader(body);
        bool const kept = reader.Get<int>("t", 0, 7) == 7 && reader.Get<double>("t", 0, 7.5) == 7.5 &&
                          reader.Get<bool>("t", 0, true) && reader.Text("t") == "none";
        EXPECT_TRUE(kept) << body;
    }

    Reader reader("<a> <item/>text<!-- x --><?pi x?><![CDATA[<item/>]]></a>");
    EXPECT_EQ(reader.Start("object") + reader.Start("inner"), "#0#0");
    EXPECT_EQ(reader.StartArray("array"), 0U);
    EXPECT_EQ(reader.Text("t"), "none");
    for (int i = 0; i < 3; ++i)
        reader.End();
    // What was missed has become a part of the tree, for a look-up that begins at the first child.
    EXPECT_EQ(reader.StartArray("a"), 1U);
    EXPECT_EQ(reader.Start("b"), "#0");
    reader.End();
    reader.End();
    EXPECT_EQ(reader.StartArray("a"), 2U);
}

TEST(XMLSerializerTest, AttributesTellClassAndIdentity)
{
    Reader reader(
        "<o/><o id=''/><o id='0'/><o id='7' class='N::C'/><o class='N::C'/><o id=' 12x'/><o id='x'/>"
        "<o other='1'/><o id='99999999999'/>");
    std::string found;
    for (std::size_t i = 0; i < 9; ++i)
    {
        found += reader.Start("o", i) + ' ';
        reader.End();
    }
    EXPECT_EQ(found, "#-1 #-1 #0 N::C#7 N::C#-1 #12 #0 #-1 #2147483647 ");
}

TEST(XMLSerializerTest, ElementsAreFoundByIndexInAnyOrder)
{
    std::string const body = "<b>x</b><a>0</a><c><a>deep</a></c><a>1</a>text<b>y</b><a>2</a>";
    for (std::string const order : {"012", "210", "1102"})
    {
        Reader reader(body);
        for (char const c : order)
            EXPECT_EQ(reader.Text("a", static_cast<std::size_t>(c - '0')), std::string(1, c)) << order;
        EXPECT_EQ(reader.Text("b", 1), "y");
    }

    Reader nested("<a>0</a><o><a>1</a><a>2</a></o><a>3</a>");
    EXPECT_EQ(nested.Text("a", 0), "0");
    nested.Start("o");
    EXPECT_EQ(nested.Text("a", 1), "2");
    nested.End(); // back to where the outer element was left
    EXPECT_EQ(nested.Text("a", 1), "3");
}

TEST(XMLSerializerTest, AMissIsRememberedByTheAddressOfItsTag)
{
    Reader reader("<b>1</b><a>2</a>");
    char tag[] = "a";
    EXPECT_EQ(reader.Text(tag, 1), "none");
    tag[0] = 'b';
    EXPECT_EQ(reader.Text(tag, 1), "none"); // goes on where the tag of this address was left
    EXPECT_EQ(reader.Text(tag, 0), "1");    // a lower index begins again
}

TEST(XMLSerializerTest, AnEndNeedsABegin)
{
    Reader reader("<o/>");
    reader.Start("o");
    reader.End();
    EXPECT_TRUE(Throws<SerializeException>([&] { reader.xml.EndObject("o"); },
                                           "Nothing is open that the end of 'o' could close."));
}

TEST(XMLSerializerTest, TheFirstTextOfAnElementIsItsValue)
{
    EXPECT_EQ(Value<std::string>("<!-- one --><?two?>3<!-- four -->5"), "3");
    EXPECT_EQ(Value<std::string>("<u>1</u>2"), "2");
    EXPECT_EQ(Value<std::string>("&lt;&amp;&gt;&quot;&apos;&#65;&#x1F600;"), "<&>\"'A\xF0\x9F\x98\x80");
    EXPECT_EQ(Value<std::string>(" \r\n "), " \n ");
    EXPECT_EQ(Value<std::string>("<![CDATA[1]]>2", "none"), "2"); // a CDATA section is no text
    // The parser hands a text over in pieces of a million, which may part the two halves of a character in UTF-16.
    std::string text = Repeat(530'000, "\xF0\x9F\x98\x80") + "z";
    for (int shift = 0; shift < 2; ++shift, text.insert(0, 1, 'a'))
        EXPECT_TRUE(Value<std::string>(text) == text) << shift;
}

TEST(XMLSerializerTest, StringsAreUTF8WhateverTheEncodingOfTheDocument)
{
    EXPECT_EQ(Reader("<\xC3\xA9>1</\xC3\xA9>").Text("\xC3\xA9"), "1");
    EXPECT_EQ(Reader("<o class='\xC3\xA9'/>").Start("o"), "\xC3\xA9#-1");

    std::string wide = "\xFF\xFE";
    for (char const c : std::string("<doc><x>1</x></doc>"))
        wide.append({c, '\0'});
    wide.replace(wide.find('1'), 2, "\x3D\xD8\x00\xDE", 4);
    auto const read = [](std::string const& document) {
        std::string value;
        XMLForm::Read(document, value);
        return value;
    };
    EXPECT_EQ(read("<?xml version='1.0' encoding='ISO-8859-1'?><doc><x>\xE9</x></doc>"), "\xC3\xA9");
    EXPECT_EQ(read(wide), "\xF0\x9F\x98\x80");
    EXPECT_EQ(read("\xEF\xBB\xBF<doc><x>marked</x></doc>"), "marked");
}

TEST(XMLSerializerTest, TheRootIsChecked)
{
    std::istringstream stream("<found><doc/></found>");
    EXPECT_TRUE(Throws<SerializeException>([&] { XMLInputSerializer(stream, "doc"); },
                                           "Root element tag mismatch: Expected 'doc' but found 'found'."));
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
