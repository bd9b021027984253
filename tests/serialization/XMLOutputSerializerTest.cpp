#include "tests/serialization/Documents.h"

#include <gtest/gtest.h>

#include <limits>

namespace Zan::Orv::Core::Service::Tests {

namespace {

class XMLOutputSerializerTest : public ::testing::Test
{
protected:
    XMLOutputSerializerTest() : writer_(std::make_unique<XMLOutputSerializer>(stream_, "r"))
    {
        EXPECT_EQ(Take(), "<?xml version=\"1.0\"?>\n<r>");
    }

    std::string Take()
    {
        std::string text = stream_.str();
        stream_.str("");
        return text;
    }

    template<class T>
    std::string Write(T value)
    {
        writer_->Scalar("t", 5, value);
        return Take();
    }

    std::ostringstream stream_;
    std::unique_ptr<XMLOutputSerializer> writer_;
};

TEST_F(XMLOutputSerializerTest, ScalarsAreElements)
{
    EXPECT_EQ(Write(static_cast<signed char>(-1)), "<t>-1</t>");
    EXPECT_EQ(Write(static_cast<unsigned char>('A')), "<t>65</t>");
    EXPECT_EQ(Write(std::numeric_limits<long long>::min()), "<t>-9223372036854775808</t>");
    EXPECT_EQ(Write(std::numeric_limits<unsigned long long>::max()), "<t>18446744073709551615</t>");
    EXPECT_EQ(Write(short{-7}) + Write(static_cast<unsigned short>(7)) + Write(8) + Write(9U),
              "<t>-7</t><t>7</t><t>8</t><t>9</t>");
    EXPECT_EQ(Write(1.5), "<t>1.50000000000000000000e+00\n</t>");
    EXPECT_EQ(Write(-0.1f), "<t>-1.00000001490116119385e-01\n</t>");
    EXPECT_EQ(Write(-std::numeric_limits<double>::infinity()), "<t>-Inf\n</t>");
    EXPECT_EQ(Write(true) + Write(false), "<t>true</t><t>false</t>");
}

TEST_F(XMLOutputSerializerTest, StringsHaveTheirMarkupEscapedAndNothingElse)
{
    std::pair<std::string, std::string> const cases[] = {
        {"", ""},
        {"a<b", "a&lt;b"},
        {"\"'", "&quot;&apos;"},
        {"&amp;", "&amp;amp;"},
        {"<<>>", "&lt;&lt;&gt;&gt;"},
        {"\xC3\xA9\xFF\x01\r\n\t]]", "\xC3\xA9\xFF\x01\r\n\t]]"}};
    for (auto const& [text, written] : cases)
        EXPECT_EQ(Write(text), "<t>" + written + "</t>");
}

TEST_F(XMLOutputSerializerTest, ObjectsHaveABlankBeforeTheEndOfTheirTag)
{
    std::string className;
    std::size_t count = 3;
    for (int id : {-1, 0, 7})
    {
        writer_->StartObject("t", 1, className, id);
        writer_->EndObject("t");
    }
    EXPECT_EQ(Take(), "<t ></t><t id=\"0\" ></t><t id=\"7\" ></t>");
    className = "N::C";
    for (int id : {-1, 1})
        writer_->StartObject("t", 1, className, id);
    EXPECT_EQ(Take(), "<t class=\"N::C\" ><t class=\"N::C\" id=\"1\" >");
    writer_->StartArray("t", 1, count);
    writer_->EndArray("t");
    writer_.reset();
    EXPECT_EQ(Take(), "<t></t></r>");
}

TEST_F(XMLOutputSerializerTest, IntegersFollowTheStreamAndNothingElseDoes)
{
    stream_ << std::hex << std::showbase << std::uppercase << std::fixed;
    EXPECT_EQ(Write(255) + Write(static_cast<unsigned char>(16)) + Write(0.25) + Write(true),
              "<t>0XFF</t><t>0X10</t><t>2.50000000000000000000e-01\n</t><t>true</t>");
    EXPECT_NE(stream_.flags() & std::ios::boolalpha, std::ios::fmtflags());
}

TEST_F(XMLOutputSerializerTest, WhatAFailedStreamRefusedIsNotKept)
{
    auto const fail = [this] {
        stream_.exceptions(std::ios::goodbit);
        stream_.setstate(std::ios::badbit);
    };
    fail();
    EXPECT_EQ(Write(1) + Write(std::string("x")) + Write(1.0) + Write(true), "");
    EXPECT_THROW(stream_.exceptions(std::ios::badbit), std::ios::failure);
    EXPECT_THROW(Write(1), std::ios::failure);
    stream_.clear();
    EXPECT_EQ(Write(2), "<t>2</t>");
    fail();
    EXPECT_THROW(stream_.exceptions(std::ios::badbit), std::ios::failure);
    EXPECT_NO_THROW(writer_.reset());
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
