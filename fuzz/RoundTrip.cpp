#include "fuzz/Model.h"
#include "orv/foundation/Numerics.h"
#include "orv/serialization/BinaryInputSerializer.h"
#include "orv/serialization/BinaryOutputSerializer.h"
#include "orv/serialization/StreamInputSerializer.h"
#include "orv/serialization/StreamOutputSerializer.h"
#include "orv/serialization/XMLInputSerializer.h"
#include "orv/serialization/XMLOutputSerializer.h"

#include <cmath>
#include <sstream>

namespace Zan::Orv::Core::Service::Fuzz {

namespace {

// Text that all forms can hold: XML has no control characters, and is UTF-8.
std::string PlainText(Input& input)
{
    std::string text = input.Text();
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ' || static_cast<unsigned char>(c) > '~')
            c = '?';
    return text;
}

// Any number that all forms bring back: a missing one has a single text, and infinity is written but refused.
double AnyNumber(Input& input)
{
    auto const number = input.Number<double>();
    return std::isfinite(number) ? number : NullValue;
}

Time AnyTime(Input& input)
{
    Time time = Time::MinTime();
    time += std::llabs(input.Number<long long>() % (Time::MaxTime() - Time::MinTime()));
    return time;
}

void Fill(Model& model, Input& input)
{
    if (input.Flag())
        model.number = AnyNumber(input);
    for (unsigned count = input.Below(4); count > 0; --count)
        model.counts.push_back(input.Number<int>());
    for (unsigned count = input.Below(4); count > 0; --count)
        model.byName[PlainText(input)] = input.Number<std::uint32_t>(); // what XML can bring back
    for (unsigned count = input.Below(20); count > 0; --count)
        model.flags.emplace_back(input.Flag(), input.Number<char>() & 0x7F);
    model.pair[0] = AnyNumber(input);
    model.period = TimePeriod(AnyTime(input), AnyTime(input));
    auto const small = [&] { return int{input.Number<std::int8_t>()}; };
    model.offset = TimeOffset(small(), small(), small(), small(), small(), small(), small());
    model.format = TimeFormat(PlainText(input));
    model.symbol = TimeString(PlainText(input));

    std::size_t const nodes = input.Below(6);
    for (std::size_t i = 0; i < nodes; ++i)
    {
        if (input.Flag())
        {
            auto valve = std::make_shared<Tests::Valve>();
            valve->setting = AnyNumber(input);
            valve->levels.emplace_back(PlainText(input), std::vector<float>(input.Below(3), 0.5f));
            model.nodes.push_back(valve);
        }
        else
            model.nodes.push_back(std::make_shared<Tests::Node>());
        model.nodes.back()->name = PlainText(input);
    }
    for (auto& node : model.nodes)
        for (unsigned count = input.Below(4); count > 0; --count)
            node->links.push_back(input.Flag() ? nullptr
                                               : model.nodes[input.Below(static_cast<unsigned>(nodes))]);

    Tests::RawNode** end = &model.raw;
    for (unsigned count = input.Below(5); count > 0; --count)
    {
        *end = new Tests::RawNode;
        (*end)->weight = AnyNumber(input);
        (*end)->right = input.Flag() ? model.raw : nullptr;
        end = &(*end)->left;
    }
}

template<class Writer, class... Root>
std::string Write(Model& model, Root const&... root)
{
    std::ostringstream stream;
    {
        Writer writer(stream, root...);
        Serializer(writer).Serialize(model, "model");
    }
    return stream.str();
}

// The copy says the same in binary, which loses nothing.
template<class Writer, class Reader, class... Root>
void Check(Model& model, std::string const& expected, Root const&... root)
{
    std::istringstream stream(Write<Writer>(model, root...));
    Model copy;
    Require(Reads<Reader>(stream, copy, root...), "what was written is read");
    Require(Write<BinaryOutputSerializer>(copy) == expected, "what is read is what was written");
}

} // namespace

void Run(Input& input)
{
    Tests::GraphGuard const guard;
    Model model;
    Fill(model, input);
    std::string const bytes = Write<BinaryOutputSerializer>(model);
    Check<BinaryOutputSerializer, BinaryInputSerializer>(model, bytes);
    Check<StreamOutputSerializer, StreamInputSerializer>(model, bytes);
    Check<XMLOutputSerializer, XMLInputSerializer>(model, bytes, "doc");
}

} // namespace Zan::Orv::Core::Service::Fuzz
