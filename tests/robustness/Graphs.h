#pragma once

#include "tests/serialization/Documents.h"
#include "tests/support/Model.h"

#include <memory>
#include <string>
#include <utility>

/// One small graph with a field of every kind, a shared node and a cycle, in and out of each form.

namespace Zan::Orv::Core::Service::Tests {

struct Plant : ISerializable
{
    std::shared_ptr<Node> first;
    RawNode* tree = nullptr;

    void Serialize(Serializer& serializer) override
    {
        serializer.Serialize(first, "first");
        serializer.Serialize(tree, "tree");
    }
};

/// What it is made of is freed by a `GraphGuard`.
inline void Fill(Plant& plant)
{
    auto const valve = std::make_shared<Valve>();
    valve->name = "a name that is too long for the string itself";
    valve->phase = Phase::Gas;
    valve->setting = 0.1;
    valve->serial = 12;
    valve->levels = {{"another name that is long enough", {1.0f, 2.0f}}};
    valve->links = {valve, nullptr, std::make_shared<Node>()};
    valve->byName["<self>"] = valve;
    plant.first = valve;
    plant.tree = new RawNode;
    plant.tree->left = new RawLeaf;
    plant.tree->right = plant.tree->left;
}

/// What a form makes of it.
template<class Form>
std::string WholeDocument()
{
    GraphGuard const guard;
    Plant plant;
    Fill(plant);
    return Form::Write(plant);
}

/// Writes and reads a chain of objects. What length is read; a graph that is too deep is an exception.
template<class Form>
int PassChain(int length)
{
    GraphGuard const guard;
    RawNode* first = nullptr;
    for (int i = 0; i < length; ++i)
    {
        auto* const node = new RawNode;
        node->left = std::exchange(first, node);
    }
    RawNode* read = nullptr;
    Form::Read(Form::Write(first), read);
    int found = 0;
    for (; read != nullptr; read = read->left)
        ++found;
    return found;
}

template<class Form>
class FormTest : public ::testing::Test
{
};

TYPED_TEST_SUITE(FormTest, Forms);

} // namespace Zan::Orv::Core::Service::Tests
