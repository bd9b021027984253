#include "orv/time/Time.h"
#include "tests/serialization/Documents.h"
#include "tests/support/Model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

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
    auto const second = first->next = std::make_shared<Well>();
    second->name = "C";
    second->drilled = Time(2001, 1, 1, 0, 0, 0, 0);
    second->next = first;
    std::array<std::shared_ptr<Well>, 2> wells{first, nullptr};
    EXPECT_EQ(F::Write(wells), document);

    std::array<std::shared_ptr<Well>, 2> read;
    F::Read(document, read);
    ASSERT_NE(read[0], nullptr);
    EXPECT_EQ(F::Write(read), document);
    first->next.reset();
    read[0]->next.reset();
}

} // namespace

TEST(FormatsTest, TheDocumentShowsWhatIsWritten)
{
    ExpectExample<XMLForm>(Joined(Block("xml")));
    ExpectExample<BinaryForm>(Bytes(Block("hex")));
    ExpectExample<TextForm>(Block("text"));
    EXPECT_NE(ReadFile(ORV_FORMATS_TEST).find(Block("cpp")), std::string::npos);
}

} // namespace Zan::Orv::Core::Service::Tests
