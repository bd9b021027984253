#include "tests/serialization/Documents.h"

#include <gtest/gtest.h>

#include <limits>

namespace Zan::Orv::Core::Service::Tests {

namespace {

struct XMLOutputSerializerTest : ::testing::Test
{
    XMLOutputSerializerTest() : writer(std::make_unique<XMLOutputSerializer>(stream, "r"))
    {
        EXPECT_EQ(Take(), "<?xml version=\"1.0\"?>\n<r>");
    }

    std::string Take()
    {
        std::string text = stream.str();
        stream.str("");
        return text;
    }

    template<class T>
    std::string Write(T value)
    {
        writer->Scalar("t", 5, value);
        return Take();
    }

    std::ostringstream stream;
    std::unique_ptr<XMLOutputSerializer> writer;
};

TEST_F(XMLOutputSerializerTest, ScalarsAreElements)
{
    EXPECT_EQ(Write(std::numeric_limits<long long>::min()) + Write(~0ULL),
              "<t>-9223372036854775808</t><t>18446744073709551615</t>");
    EXPECT_EQ(Write(short{-7}) + Write(static_cast<unsigned short>(7)) + Write(8) + Write(9U),
              "<t>-7</t><t>7</t><t>8</t><t>9</t>");
    EXPECT_EQ(Write(-0.1f), "<t>-1.00000001490116119385e-01\n</t>");
    EXPECT_EQ(Write(-std::numeric_limits<double>::infinity()), "<t>-Inf\n</t>");
    EXPECT_EQ(Write(true) + Write(false), "<t>true</t><t>false</t>");
}

TEST_F(XMLOutputSerializerTest, StringsHaveTheirMarkupEscapedAndNothingElse)
{
    for (std::string const plain : {"", "\xC3\xA9\xFF\x01\r\n\t]]"})
        EXPECT_EQ(Write(plain), "<t>" + plain + "</t>");
    EXPECT_EQ(Write(std::string("a<<b>\"'&amp;")), "<t>a&lt;&lt;b&gt;&quot;&apos;&amp;amp;</t>");
}

TEST_F(XMLOutputSerializerTest, ObjectsHaveABlankBeforeTheEndOfTheirTag)
{
    std::string className;
    std::size_t count = 3;
    for (int id : {-1, 0, 7})
    {
        writer->StartObject("t", 1, className, id);
        writer->EndObject("t");
    }
    EXPECT_EQ(Take(), "<t ></t><t id=\"0\" ></t><t id=\"7\" ></t>");
    className = "N::C";
    for (int id : {-1, 1})
        writer->StartObject("t", 1, className, id);
    EXPECT_EQ(Take(), "<t class=\"N::C\" ><t class=\"N::C\" id=\"1\" >");
    writer->StartArray("t", 1, count);
    writer->EndArray("t");
    writer.reset();
    EXPECT_EQ(Take(), "<t></t></r>");
}

TEST_F(XMLOutputSerializerTest, IntegersFollowTheStreamAndNothingElseDoes)
{
    stream << std::hex << std::showbase << std::fixed;
    EXPECT_EQ(Write(255) + Write(0.25), "<t>0xff</t><t>2.50000000000000000000e-01\n</t>");
    EXPECT_EQ(Write(true), "<t>true</t>");
    EXPECT_NE(stream.flags() & std::ios::boolalpha, std::ios::fmtflags());
}

TEST_F(XMLOutputSerializerTest, WhatAFailedStreamRefusedIsNotKept)
{
    stream.setstate(std::ios::badbit);
    EXPECT_EQ(Write(1) + Write(std::string("x")) + Write(1.0) + Write(true), "");
    EXPECT_THROW(stream.exceptions(std::ios::badbit), std::ios::failure);
    EXPECT_THROW(Write(1), std::ios::failure);
    stream.clear();
    EXPECT_EQ(Write(2), "<t>2</t>");
    EXPECT_THROW(stream.setstate(std::ios::badbit), std::ios::failure);
    EXPECT_NO_THROW(writer.reset());
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
