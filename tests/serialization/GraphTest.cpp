#include "tests/serialization/Documents.h"
#include "tests/support/Model.h"

#include <gtest/gtest.h>

#include <random>

namespace Zan::Orv::Core::Service::Tests {

namespace {

// Distributions differ between standard libraries; the engine does not.
class Dice
{
public:
    explicit Dice(unsigned int seed) : engine_(seed) {}
    std::size_t operator()(std::size_t sides) { return engine_() % sides; }

private:
    std::mt19937 engine_;
};

std::string RandomText(Dice& dice)
{
    static char const* const pieces[] = {"a",  "<", "&", "\"", "'",        ">",  "\\",
                                         "\n", "n", " ", "#",  "\xC3\xA9", "]]>"};
    std::string text = "t"; // an empty text leaves its target alone in XML
    for (std::size_t i = dice(6); i != 0; --i)
        text += pieces[dice(std::size(pieces))];
    return text;
}

using Graph = std::vector<std::shared_ptr<Node>>;

std::shared_ptr<Node> RandomNode(Dice& dice)
{
    std::shared_ptr<Node> node;
    std::size_t const kind = dice(3);
    if (kind == 0)
        node = std::make_shared<Node>();
    else if (kind == 1)
    {
        auto const valve = std::make_shared<Valve>();
        valve->setting = static_cast<double>(dice(1'000'000)) / 7.0;
        valve->open = dice(2) == 0;
        valve->serial = dice(2) == 0 ? std::optional<long>(static_cast<long>(dice(1'000'000))) : std::nullopt;
        node = valve;
    }
    else
    {
        auto const tank = std::make_shared<Tank>();
        tank->levels = {{RandomText(dice), std::vector<float>(dice(3), 0.1f)}};
        node = tank;
    }
    node->name = RandomText(dice);
    node->phase = static_cast<Phase::Enum>(dice(3));
    return node;
}

// Any node may refer to any other, itself and null included.
Graph RandomGraph(Dice& dice)
{
    Graph nodes(1 + dice(30));
    for (auto& node : nodes)
        node = RandomNode(dice);
    auto const any = [&] { return dice(4) == 0 ? nullptr : nodes[dice(nodes.size())]; };
    for (auto const& node : nodes)
    {
        node->next = any();
        for (std::size_t i = dice(4); i != 0; --i)
            node->links.push_back(any());
        for (std::size_t i = dice(3); i != 0; --i)
            node->byName[RandomText(dice)] = any();
    }
    return nodes;
}

// What came back is written in the other form, so that no fault of one form hides behind itself.
TEST(GraphTest, RandomGraphsComeBackTheSame)
{
    for (unsigned int seed = 1; seed <= 200; ++seed)
    {
        GraphGuard const guard;
        Dice dice(seed);
        Graph graph = RandomGraph(dice);
        std::string const xml = XMLForm::Write(graph);
        std::string const text = TextForm::Write(graph);
        Graph fromXML;
        Graph fromText;
        XMLForm::Read(xml, fromXML);
        TextForm::Read(text, fromText);
        ASSERT_EQ(TextForm::Write(fromXML), text) << "seed " << seed;
        ASSERT_EQ(XMLForm::Write(fromText), xml) << "seed " << seed;
    }
    EXPECT_TRUE(Node::Living().empty());
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
