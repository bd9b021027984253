#pragma once

#include "orv/serialization/EnumWrapper.h"
#include "orv/serialization/Factory.h"
#include "orv/serialization/Serializer.h"

#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

/// A small model with a field of every kind, for graphs with cycles, shared nodes and derived classes.

namespace Zan::Orv::Core::Service::Tests {

struct Phase
{
    enum Enum
    {
        Oil,
        Water,
        Gas
    };

    struct EnumMap
    {
        using EnumType = Enum;
        static void Fill(std::map<Enum, std::string>& names)
        {
            names = {{Oil, "Oil"}, {Water, "Water"}, {Gas, "Gas & condensate"}};
        }
    };
};

using PhaseConverter = DefaultEnumConverter<Phase::EnumMap>;
using PhaseWrapper = EnumWrapper<PhaseConverter>;

/// Knows the objects of the class `T` that live.
template<class T>
struct Tracked : ISerializable
{
    Tracked() { Living().insert(this); }
    ~Tracked() override { Living().erase(this); }
    Tracked(Tracked const&) = delete;

    static std::unordered_set<Tracked*>& Living()
    {
        static std::unordered_set<Tracked*> living;
        return living;
    }
};

/// A node that is held by shared pointers.
struct Node : Tracked<Node>
{
    std::string name;
    Phase::Enum phase = Phase::Oil;
    std::vector<std::shared_ptr<Node>> links;
    std::map<std::string, std::shared_ptr<Node>> byName;

    void Serialize(Serializer& serializer) override
    {
        serializer.Serialize(name, "name");
        PhaseWrapper wrapper(phase);
        serializer.Serialize(wrapper, "phase");
        phase = wrapper.Get();
        serializer.Serialize(links, "links");
        serializer.Serialize(byName, "byName");
    }
};

struct Valve : Node
{
    double setting = 0.0;
    bool open = false;
    std::optional<long> serial;
    std::list<std::pair<std::string, std::vector<float>>> levels;

    void Serialize(Serializer& serializer) override
    {
        serializer.Serialize(levels, "levels");
        Node::Serialize(serializer);
        serializer.Serialize(setting, "setting");
        serializer.Serialize(open, "open");
        serializer.Serialize(serial, "serial");
    }
};

/// A node that is held by raw pointers: made with `new` and freed by `GraphGuard`.
struct RawNode : Tracked<RawNode>
{
    double weight = 0.0;
    RawNode* left = nullptr;
    RawNode* right = nullptr;

    void Serialize(Serializer& serializer) override
    {
        serializer.Serialize(weight, "weight");
        serializer.Serialize(left, "left");
        serializer.Serialize(right, "right");
    }
};

struct RawLeaf : RawNode
{
};

inline FactoryRegistrar<Node> const registerNode("Tests::Node");
inline FactoryRegistrar<Valve> const registerValve("Tests::Valve");
inline FactoryRegistrar<RawNode> const registerRawNode("Tests::RawNode");
inline FactoryRegistrar<RawLeaf> const registerRawLeaf("Tests::RawLeaf");

/// Frees every node at its end: cycles do not free themselves, and long chains should not do it by recursion.
struct GraphGuard
{
    ~GraphGuard()
    {
        std::vector<std::shared_ptr<Node>> links;
        for (Tracked<Node>* const tracked : Node::Living())
        {
            auto* const node = static_cast<Node*>(tracked);
            for (auto& link : node->links)
                links.push_back(std::move(link));
            for (auto& entry : node->byName)
                links.push_back(std::move(entry.second));
        }
        for (Tracked<RawNode>* const node : std::unordered_set<Tracked<RawNode>*>(RawNode::Living()))
            delete node;
    }
};

} // namespace Zan::Orv::Core::Service::Tests
