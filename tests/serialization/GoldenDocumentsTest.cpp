#include "orv/foundation/Numerics.h"
#include "orv/time/TimeFormat.h"
#include "orv/time/TimeFrequency.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimePeriod.h"

#include "tests/serialization/Documents.h"
#include "tests/support/Model.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <sstream>

// The documents in tests/golden are the same on every host and stay as they are: each suite writes them anew, compares
// byte for byte, and reads the stored ones. With ORV_WRITE_GOLDEN set in the environment they are written instead.

namespace Zan::Orv::Core::Service::Tests {

namespace {

// One field of every kind, and a graph with a cycle.
struct Everything : ISerializable
{
    bool flag = false;
    char letter = 0;
    signed char small = 0;
    unsigned char byte = 0;
    short shortest = 0;
    unsigned short port = 0;
    int number = 0;
    unsigned int count = 0;
    long host = 0;
    long long large = 0;
    unsigned long long larger = 0;
    float single = 0;
    std::vector<double> values;
    std::vector<std::string> texts;
    TimePeriod period;
    TimeOffset offset;
    TimeFrequency frequency;
    TimeFormat format{""};
    std::shared_ptr<Node> graph;

    void Serialize(Serializer& serializer) override
    {
        serializer.Serialize(flag, "flag");
        serializer.Serialize(letter, "letter");
        serializer.Serialize(small, "small");
        serializer.Serialize(byte, "byte");
        serializer.Serialize(shortest, "shortest");
        serializer.Serialize(port, "port");
        serializer.Serialize(number, "number");
        serializer.Serialize(count, "count");
        serializer.Serialize(host, "host");
        serializer.Serialize(large, "large");
        serializer.Serialize(larger, "larger");
        serializer.Serialize(single, "single");
        serializer.Serialize(values, "values");
        serializer.Serialize(texts, "texts");
        serializer.Serialize(period, "period");
        serializer.Serialize(offset, "offset");
        serializer.Serialize(frequency, "frequency");
        serializer.Serialize(format, "format");
        serializer.Serialize(graph, "graph");
    }
};

void Fill(Everything& everything)
{
    everything.flag = true;
    everything.letter = 'A';
    everything.small = -128;
    everything.byte = 255;
    everything.shortest = -32768;
    everything.port = 65535;
    everything.number = std::numeric_limits<int>::min();
    everything.count = std::numeric_limits<unsigned int>::max();
    everything.host = -2147483647L;
    everything.large = std::numeric_limits<int>::max(); // what XML brings back
    everything.larger = std::numeric_limits<unsigned int>::max();
    everything.single = 0.1f;
    everything.values = {0.0, -0.0, 0.1, 1e-5, 1e100, 5e-324, std::numeric_limits<double>::max(), NullValue};
    everything.texts = {"plain", "<&\"'>", "two\nlines \\n", "  ", "\xC3\xA4\xE2\x82\xAC\xF0\x9D\x84\x9E"};
    everything.period = TimePeriod(Time(2000, 2, 29, 12, 30, 15, 7), TimeOffset(0, 1, 0, 0, 0, 0, 0));
    everything.offset = TimeOffset(-1, -2, 3, -4, 5, 6, 7);
    everything.frequency = TimeFrequency(14, TimeFrequency::FrequencyUnit::Years);
    everything.format = TimeFormat("%d %E %Y");

    auto valve = std::make_shared<Valve>();
    valve->name = "V-1";
    valve->phase = Phase::Gas;
    valve->setting = 0.25;
    valve->serial = 77;
    valve->levels = {{"low", {0.5f, 1.5f}}, {"high", {}}};
    auto node = std::make_shared<Node>();
    node->name = "N-1";
    node->links = {valve, nullptr, node};
    valve->links = {node};
    valve->byName = {{"self", valve}, {"other", node}};
    everything.graph = valve;
}

template<class F>
void Check(std::string const& name)
{
    GraphGuard const guard;
    std::string const path = std::string(ORV_GOLDEN_FOLDER) + "/" + name;
    Everything everything;
    Fill(everything);
    std::string const written = F::Write(everything);
    if (std::getenv("ORV_WRITE_GOLDEN") != nullptr)
        std::ofstream(path, std::ios::binary) << written;

    std::string const stored = ReadFile(path);
    ASSERT_FALSE(stored.empty()) << path;
    EXPECT_EQ(written, stored) << path;
    Everything copy;
    copy.frequency = TimeFrequency(1, TimeFrequency::FrequencyUnit::Years);
    F::Read(stored, copy);
    EXPECT_EQ(F::Write(copy), stored) << path;
}

} // namespace

TEST(GoldenDocumentsTest, AreTheSameOnEveryHost)
{
    Check<XMLForm>("everything.xml");
    Check<BinaryForm>("everything.bin");
    Check<TextForm>("everything.txt");
}

} // namespace Zan::Orv::Core::Service::Tests
