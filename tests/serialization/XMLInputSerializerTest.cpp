#include "orv/foundation/Exception.h"
#include "tests/serialization/Documents.h"
#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <stdexcept>
#include <typeinfo>

namespace Zan::Orv::Core::Service::Tests {

namespace {

// A reader of a document around `body`.
class Reader
{
public:
    explicit Reader(std::string const& body) : stream_(XML(body)), xml_(stream_, "doc") {}

    template<class T>
    T Get(char const* tag, std::size_t index = 0, T value = T())
    {
        xml_.Scalar(tag, index, value);
        return value;
    }

    std::string Text(char const* tag, std::size_t index = 0) { return Get<std::string>(tag, index, "none"); }

    // Opens an object and gives its class and identity.
    std::string Start(char const* tag, std::size_t index = 0)
    {
        std::string className = "old";
        int id = 99;
        xml_.StartObject(tag, index, className, id);
        return className + '#' + std::to_string(id);
    }

    std::size_t StartArray(char const* tag, std::size_t index = 0)
    {
        std::size_t count = 99;
        xml_.StartArray(tag, index, count);
        return count;
    }

    void End() { xml_.EndObject(""); }

private:
    std::istringstream stream_;
    XMLInputSerializer xml_;
};

template<class T>
T Value(std::string const& text, T old = T())
{
    return Reader("<t>" + text + "</t>").Get<T>("t", 0, old);
}

TEST(XMLInputSerializerTest, IntegersAreTheirLeadingDigitsIn32Bits)
{
    constexpr int lowest = std::numeric_limits<std::int32_t>::min();
    constexpr int highest = std::numeric_limits<std::int32_t>::max();
    std::map<std::string, int> const cases = {{"12", 12},
                                              {" \n\t-12 wells", -12},
                                              {"+5", 5},
                                              {"-+5", 0},
                                              {"wells", 0},
                                              {"- 5", 0},
                                              {"0x10", 0},
                                              {"007", 7},
                                              {"1.9", 1},
                                              {"70000", 70000},
                                              {"2147483647", highest},
                                              {"-2147483648", lowest}};
    for (auto const& [text, value] : cases)
    {
        EXPECT_EQ(Value<int>(text), value) << text;
        EXPECT_EQ(Value<long long>(text), value) << text;
        EXPECT_EQ(Value<short>(text), static_cast<short>(value)) << text;
        EXPECT_EQ(Value<unsigned short>(text), static_cast<unsigned short>(value)) << text;
        EXPECT_EQ(Value<signed char>(text), static_cast<signed char>(value)) << text;
        EXPECT_EQ(Value<unsigned char>(text), static_cast<unsigned char>(value)) << text;
    }
    for (std::string const text : {"4294967296", "9223372036854775807", "99999999999999999999999"})
    {
        EXPECT_EQ(Value<long long>(text), highest) << text;
        EXPECT_EQ(Value<long long>("-" + text), lowest) << text;
        EXPECT_EQ(Value<unsigned long long>(text), 4294967295U) << text;
        EXPECT_EQ(Value<unsigned long long>("-" + text), 4294967295U) << text;
    }
    EXPECT_EQ(Value<unsigned int>("4294967295"), 4294967295U);
    EXPECT_EQ(Value<unsigned long long>("4294967295"), 4294967295U);
    EXPECT_EQ(Value<unsigned long long>("-4294967295"), 1U);
}

TEST(XMLInputSerializerTest, NumbersAndBooleansAreStrict)
{
    EXPECT_EQ(Value<double>("1.5\n"), 1.5);
    EXPECT_EQ(Value<float>("\n 1e-1"), 0.1f);
    EXPECT_NE(Value<double>("NaN"), Value<double>("NaN"));
    EXPECT_TRUE(Throws<std::runtime_error>([] { Value<double>("abc"); }, "Unrecognized number: 'abc'"));
    try
    {
        Value<float>("-Inf\n");
        ADD_FAILURE() << "read an infinity";
    }
    catch (std::exception const& e)
    {
        EXPECT_EQ(typeid(e), typeid(std::exception));
    }

    EXPECT_TRUE(Value<bool>("true"));
    EXPECT_FALSE(Value<bool>("false", true));
    EXPECT_TRUE(Value<bool>("", true));
    for (std::string const text : {"1", "TRUE", " true", "true ", "truefalse"})
        EXPECT_TRUE(Throws<SerializeException>([&] { Value<bool>(text); },
                                               "Invalid boolean value: '" + text + "' in tag 't'."));
}

TEST(XMLInputSerializerTest, WhatIsMissingLeavesItsTargetAlone)
{
    for (char const* const body : {"", "<T>1</T>", "<t/>", "<t></t>", "<t><u>1</u></t>", "<u><t>1</t></u>"})
    {
        Reader reader(body);
        EXPECT_EQ(reader.Get<int>("t", 0, 7), 7) << body;
        EXPECT_EQ(reader.Get<double>("t", 0, 7.5), 7.5) << body;
        EXPECT_EQ(reader.Get<bool>("t", 0, true), true) << body;
        EXPECT_EQ(reader.Text("t"), "none") << body;
    }

    Reader reader("<a> <item/>text<!-- x --><?pi x?><![CDATA[<item/>]]></a>");
    EXPECT_EQ(reader.Start("object"), "#0");
    EXPECT_EQ(reader.Start("inner"), "#0");
    EXPECT_EQ(reader.StartArray("array"), 0U);
    EXPECT_EQ(reader.Text("t"), "none");
    reader.End();
    reader.End();
    reader.End();
    // What was missed has become a part of the tree, for a look-up that begins at the first child.
    EXPECT_EQ(reader.StartArray("a"), 1U);
    EXPECT_EQ(reader.Start("b"), "#0");
    reader.End();
    reader.End();
    EXPECT_EQ(reader.StartArray("a"), 2U);
}

TEST(XMLInputSerializerTest, AttributesTellClassAndIdentity)
{
    Reader reader(
        "<o/><o id=''/><o id='0'/><o id='7' class='N::C'/><o class='N::C'/><o id=' 12x'/><o id='x'/>"
        "<o other='1'/><o id='99999999999'/>");
    char const* const expected[] = {"#-1", "#-1", "#0",  "N::C#7",     "N::C#-1",
                                    "#12", "#0",  "#-1", "#2147483647"};
    for (std::size_t i = 0; i < std::size(expected); ++i)
    {
        EXPECT_EQ(reader.Start("o", i), expected[i]) << i;
        reader.End();
    }
}

TEST(XMLInputSerializerTest, ElementsAreFoundByIndexInAnyOrder)
{
    std::string const body = "<b>x</b><a>0</a><c><a>deep</a></c><a>1</a>text<b>y</b><a>2</a>";
    char const a[] = "a";
    char const otherA[] = "a";
    for (std::string const order : {"012", "210", "0022", "1", "20", "1102", "2012"})
    {
        Reader one(body);
        Reader two(body);
        for (std::size_t i = 0; i < order.size(); ++i)
        {
            std::size_t const index = static_cast<std::size_t>(order[i] - '0');
            EXPECT_EQ(one.Text(a, index), order.substr(i, 1)) << order;
            EXPECT_EQ(two.Text(i % 2 == 0 ? a : otherA, index), order.substr(i, 1)) << order;
        }
        EXPECT_EQ(one.Text("b", 1), "y");
    }

    Reader nested("<a>0</a><o><a>1</a><a>2</a></o><a>3</a>");
    EXPECT_EQ(nested.Text(a, 0), "0");
    nested.Start("o");
    EXPECT_EQ(nested.Text(a, 1), "2");
    nested.End(); // back to where the outer element was left
    EXPECT_EQ(nested.Text(a, 1), "3");
}

TEST(XMLInputSerializerTest, AMissIsRememberedByTheAddressOfItsTag)
{
    Reader reader("<b>1</b><a>2</a>");
    char tag[] = "a";
    EXPECT_EQ(reader.Text(tag, 1), "none");
    tag[0] = 'b';
    EXPECT_EQ(reader.Text(tag, 1), "none"); // goes on where the tag of this address was left
    EXPECT_EQ(reader.Text(tag, 0), "1");    // a lower index begins again
    EXPECT_EQ(reader.Text("a", 0), "2");
    EXPECT_EQ(reader.Text(tag, 0), "1");
    tag[0] = 'a';
    EXPECT_EQ(reader.Text(tag, 0), "2");
    tag[0] = 'b';
    EXPECT_EQ(reader.Text(tag, 0), "none");
}

TEST(XMLInputSerializerTest, TheFirstTextOfAnElementIsItsValue)
{
    EXPECT_EQ(Value<std::string>("<!-- one --><?two?>3<!-- four -->5"), "3");
    EXPECT_EQ(Value<std::string>("<u>1</u>2"), "2");
    EXPECT_EQ(Value<std::string>("&lt;&amp;&gt;&quot;&apos;&#65;&#x1F600;"), "<&>\"'A\xF0\x9F\x98\x80");
    EXPECT_EQ(Value<std::string>(" \r\n "), " \n ");
    EXPECT_EQ(Value<std::string>("<![CDATA[1]]>2", "none"), "2"); // a CDATA section is no text
    for (std::size_t const length : {255U, 256U, 257U, 16383U, 16384U, 1'000'000U})
    {
        std::string const text = std::string(length - 2, 'x') + "\xC3\xA9";
        EXPECT_TRUE(Value<std::string>(text) == text) << length;
    }
}

TEST(XMLInputSerializerTest, StringsAreUTF8WhateverTheEncodingOfTheDocument)
{
    std::string const text = "\xC3\xA9 \xE6\xBC\xA2 \xF0\x9F\x98\x80";
    EXPECT_EQ(Value<std::string>(text), text);
    EXPECT_EQ(Reader("<\xC3\xA9>1</\xC3\xA9>").Text("\xC3\xA9"), "1");
    EXPECT_EQ(Reader("<o class='\xC3\xA9'/>").Start("o"), "\xC3\xA9#-1");

    std::string const latin = "<?xml version='1.0' encoding='ISO-8859-1'?><doc><x>\xE9</x></doc>";
    std::string wide = "\xFF\xFE";
    for (char const c : std::string("<doc><x>1</x></doc>"))
        wide.append({c, '\0'});
    wide.replace(wide.find('1'), 2, "\x3D\xD8\x00\xDE", 4);
    std::string value;
    XMLForm::Read(latin, value);
    EXPECT_EQ(value, "\xC3\xA9");
    XMLForm::Read(wide, value);
    EXPECT_EQ(value, "\xF0\x9F\x98\x80");
    XMLForm::Read("\xEF\xBB\xBF<doc><x>marked</x></doc>", value);
    EXPECT_EQ(value, "marked");
}

TEST(XMLInputSerializerTest, TheRootIsChecked)
{
    for (std::string const root : {"doc", "Found", "foun", "founds", ""})
    {
        std::istringstream stream("<found><doc/></found>");
        EXPECT_TRUE(Throws<SerializeException>([&] { XMLInputSerializer(stream, root); },
                                               "Root element tag mismatch: Expected '" + root +
                                                   "' but found 'found'."));
    }
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
