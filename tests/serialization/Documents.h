#pragma once

#include "orv/serialization/BinaryInputSerializer.h"
#include "orv/serialization/BinaryOutputSerializer.h"
#include "orv/serialization/Serializer.h"
#include "orv/serialization/StreamInputSerializer.h"
#include "orv/serialization/StreamOutputSerializer.h"
#include "orv/serialization/XMLInputSerializer.h"
#include "orv/serialization/XMLOutputSerializer.h"
#include "tests/support/Texts.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

/// Documents of one field "x", in each form.

namespace Zan::Orv::Core::Service::Tests {

template<class Output, class Input, class... Root>
struct Form
{
    template<class T>
    static void WriteTo(std::ostream& stream, T& value)
    {
        Output output(stream, Root::tag...);
        Serializer(output).Serialize(value, "x");
    }

    template<class T>
    static void ReadFrom(std::istream& stream, T& value)
    {
        Input input(stream, Root::tag...);
        Serializer(input).Serialize(value, "x");
    }

    template<class T>
    static std::string Write(T& value)
    {
        std::ostringstream stream;
        WriteTo(stream, value);
        return stream.str();
    }

    /// The state in which the stream is left.
    template<class T>
    static std::ios::iostate Read(std::string const& document, T& value)
    {
        std::istringstream stream(document);
        ReadFrom(stream, value);
        return stream.rdstate();
    }
};

struct DocRoot
{
    static constexpr char tag[] = "doc";
};

using XMLForm = Form<XMLOutputSerializer, XMLInputSerializer, DocRoot>;
using BinaryForm = Form<BinaryOutputSerializer, BinaryInputSerializer>;
using TextForm = Form<StreamOutputSerializer, StreamInputSerializer>;

using Forms = ::testing::Types<XMLForm, BinaryForm, TextForm>;

/// `value` is written as `document`, and what is read from there into `target` is written so as well.
template<class Form, class T>
void ExpectDocument(T& value, std::string const& document, T& target)
{
    EXPECT_EQ(Form::Write(value), document);
    Form::Read(document, target);
    EXPECT_EQ(Form::Write(target), document);
}

/// A whole XML document around `body`.
inline std::string XML(std::string const& body)
{
    return "<?xml version=\"1.0\"?>\n<doc>" + body + "</doc>";
}

} // namespace Zan::Orv::Core::Service::Tests
