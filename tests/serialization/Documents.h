#pragma once

#include "orv/serialization/Serializer.h"
#include "orv/serialization/StreamInputSerializer.h"
#include "orv/serialization/StreamOutputSerializer.h"
#include "orv/serialization/XMLInputSerializer.h"
#include "orv/serialization/XMLOutputSerializer.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

/// Documents of one field "x", in each form.

namespace Zan::Orv::Core::Service::Tests {

template<class Output, class Input, class... Root>
struct Form
{
    template<class T>
    static std::string Write(T& value)
    {
        std::ostringstream stream;
        {
            Output output(stream, Root::tag...);
            Serializer(output).Serialize(value, "x");
        }
        return stream.str();
    }

    template<class T>
    static void Read(std::string const& document, T& value)
    {
        std::istringstream stream(document);
        Input input(stream, Root::tag...);
        Serializer(input).Serialize(value, "x");
    }
};

struct DocRoot
{
    static constexpr char tag[] = "doc";
};

using XMLForm = Form<XMLOutputSerializer, XMLInputSerializer, DocRoot>;
using TextForm = Form<StreamOutputSerializer, StreamInputSerializer>;

using Forms = ::testing::Types<XMLForm, TextForm>;

/// A whole XML document around `body`.
inline std::string XML(std::string const& body)
{
    return "<?xml version=\"1.0\"?>\n<doc>" + body + "</doc>";
}

inline std::string Repeat(std::size_t count, std::string const& text)
{
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

} // namespace Zan::Orv::Core::Service::Tests
