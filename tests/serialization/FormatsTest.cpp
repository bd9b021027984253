#include "orv/foundation/Exception.h"
#include "orv/foundation/Numerics.h"
#include "orv/time/TimeFormat.h"
#include "orv/time/TimeFrequency.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimePeriod.h"
#include "tests/serialization/Documents.h"
#include "tests/support/Model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <stdexcept>
#include <tuple>
#include <typeinfo>

// The worked examples of docs/formats.md are what the writers write.

namespace Zan::Orv::Core::Service::Tests {

namespace {

struct Well : ISerializable
{
    std::string name;
    double depth = 0.0;
    bool open = false;
    std::vector<short> rates;
    Phase::Enum phase = Phase::Oil;
    Time drilled;
    std::shared_ptr<Well> next;

    void Serialize(Serializer& serializer) override
    {
        serializer.Serialize(name, "name");
        serializer.Serialize(depth, "depth");
        serializer.Serialize(open, "open");
        serializer.Serialize(rates, "rates");
        PhaseWrapper wrapper(phase);
        serializer.Serialize(wrapper, "phase");
        phase = wrapper.Get();
        serializer.Serialize(drilled, "drilled");
        serializer.Serialize(next, "next");
    }
};

FactoryRegistrar<Well> const registerWell("Sim::Well");

// The lines of the one fenced block of a kind.
std::string Block(std::string const& kind)
{
    static std::string const document = ReadFile(ORV_FORMATS_DOCUMENT);
    std::string const fence = "\n```" + kind + "\n";
    std::size_t const found = document.find(fence);
    EXPECT_NE(found, std::string::npos) << kind;
    EXPECT_EQ(found, document.rfind(fence)) << kind;
    std::size_t const begin = found + fence.size();
    return document.substr(begin, document.find("```\n", begin) - begin);
}

// Line feeds and what indents a line are for the eye; a real line feed is shown by a sign.
std::string Joined(std::string const& block)
{
    std::string const sign = "\xE2\x86\xB5";
    std::istringstream lines(block);
    std::string text;
    for (std::string line; std::getline(lines, line);)
        text += line.substr(std::min(line.find_first_not_of(' '), line.size()));
    for (std::size_t at = text.find(sign); at != std::string::npos; at = text.find(sign, at))
        text.replace(at, sign.size(), "\n");
    return text;
}

// The bytes of all lines, each up to its remark.
std::string Bytes(std::string const& block)
{
    std::istringstream lines(block);
    std::string bytes;
    for (std::string line; std::getline(lines, line);)
        bytes += FromHex(line.substr(0, line.find('|')));
    return bytes;
}

template<class F>
void ExpectExample(std::string const& document)
{
    auto const first = std::make_shared<Well>();
    first->name = "A & B";
    first->depth = 1.5;
    first->open = true;
    first->rates = {7, -2};
    first->phase = Phase::Water;
    first->drilled = Time(2000, 2, 29, 12, 30, 15, 7);
    first->next = std::make_shared<Well>();
    first->next->name = "C";
    first->next->drilled = Time(2001, 1, 1, 0, 0, 0, 0);
    first->next->next = first;
    std::array<std::shared_ptr<Well>, 2> wells{first, nullptr};
    std::array<std::shared_ptr<Well>, 2> read;
    ExpectDocument<F>(wells, document, read);
    for (auto const& circle : {wells[0], read[0]})
        if (circle != nullptr)
            circle->next.reset();
}

// The documents in tests/golden are the same on every host and stay as they are. With ORV_WRITE_GOLDEN set in the
// environment they are written instead.

using Values = std::tuple<bool, char, signed char, unsigned char, short, unsigned short, int, unsigned int,
                          long, long long, unsigned long long, float, std::vector<double>,
                          std::vector<std::string>, TimePeriod, TimeOffset, TimeFrequency>;

char const* const tags[] = {"flag",   "letter", "small",  "byte",   "shortest", "port",
                            "number", "count",  "host",   "large",  "larger",   "single",
                            "values", "texts",  "period", "offset", "frequency"};

// One field of every kind, and a graph with a cycle.
struct Everything : ISerializable
{
    Values values;
    TimeFormat format{""};
    std::shared_ptr<Node> graph;

    void Serialize(Serializer& serializer) override
    {
        char const* const* tag = tags;
        std::apply([&](auto&... value) { (serializer.Serialize(value, *tag++), ...); }, values);
        serializer.Serialize(format, "format");
        serializer.Serialize(graph, "graph");
    }
};

void Fill(Everything& everything)
{
    constexpr int highest = std::numeric_limits<int>::max(); // what XML brings back
    constexpr unsigned highestUnsigned = std::numeric_limits<unsigned>::max();
    everything.values =
        Values(true, 'A', -128, 255, -32768, 65535, std::numeric_limits<int>::min(), highestUnsigned,
               -2147483647L, highest, highestUnsigned, 0.1f,
               {0.0, -0.0, 0.1, 1e-5, 1e100, 5e-324, std::numeric_limits<double>::max(), NullValue},
               {"plain", "<&\"'>", "two\nlines \\n", "  ", "\xC3\xA4\xE2\x82\xAC\xF0\x9D\x84\x9E"},
               TimePeriod(Time(2000, 2, 29, 12, 30, 15, 7), TimeOffset(0, 1, 0, 0, 0, 0, 0)),
               TimeOffset(-1, -2, 3, -4, 5, 6, 7), TimeFrequency(14, TimeFrequency::FrequencyUnit::Years));
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
void CheckGolden(std::string const& name)
{
    GraphGuard const guard;
    std::string const path = std::string(ORV_GOLDEN_FOLDER) + "/" + name;
    Everything everything;
    Fill(everything);
    if (std::getenv("ORV_WRITE_GOLDEN") != nullptr)
        std::ofstream(path, std::ios::binary) << F::Write(everything);

    Everything copy;
    ExpectDocument<F>(everything, ReadFile(path), copy);
}

} // namespace

TEST(FormatsTest, TheDocumentShowsWhatIsWritten)
{
    ExpectExample<XMLForm>(Joined(Block("xml")));
    ExpectExample<BinaryForm>(Bytes(Block("hex")));
    ExpectExample<TextForm>(Block("text"));
    EXPECT_NE(ReadFile(ORV_FORMATS_TEST).find(Block("cpp")), std::string::npos);
}

TEST(FormatsTest, GoldenDocumentsAreTheSameOnEveryHost)
{
    CheckGolden<XMLForm>("everything.xml");
    CheckGolden<BinaryForm>("everything.bin");
    CheckGolden<TextForm>("everything.txt");
}

TEST(FormatsTest, TheFactoryKnowsTheClassesOfTimes)
{
    for (std::string const name : {"Time", "TimeFormat", "TimeFrequency", "TimeOffset", "TimePeriod"})
    {
        std::string const full = "Zan::Orv::Core::Service::" + name;
        std::unique_ptr<ISerializable> const made(Factory::GetFactory().Construct(full));
        ISerializable const& object = *made;
        EXPECT_EQ(Factory::GetFactory().GetClassName(typeid(object)), full);
    }
}

TEST(FormatsTest, TimesAreTakenAsTheyStand)
{
    Time const time(2000, 2, 29, 12, 34, 56, 789);
    TimeOffset offset;
    XMLForm::Read(XML("<x ><months>13</months><hours>-25</hours></x>"), offset);
    EXPECT_EQ(offset.GetYears() * 10000 + offset.GetMonths() * 100 + offset.GetHours(), 1300 - 25);

    TimePeriod period;
    TextForm::Read("# -1\n# -1\n2000-02-29 12:34:56.789\n# -1\n1999-01-01 00:00:00.000\n", period);
    EXPECT_EQ(period.Begin(), time);
    EXPECT_EQ(period.End(), Time(1999, 1, 1, 0, 0, 0, 0));

    TimeFrequency frequency;
    // The unit is in the document, and stays as it was in the object.
    TextForm::Read("# -1\n-2\n# -1\nDays\n", frequency);
    EXPECT_EQ(frequency, TimeFrequency(-2, TimeFrequency::FrequencyUnit::Years));

    Time read = time;
    EXPECT_THROW(TextForm::Read("# -1\nyesterday\n", read), TimeException);
    EXPECT_THROW(TextForm::Read("# -1\n2001-02-29 00:00:00.000\n", read), std::out_of_range);
    EXPECT_EQ(read, time);
}

} // namespace Zan::Orv::Core::Service::Tests
