#pragma once

#include "Batch.h"

#include "orv/serialization/ISerializable.h"
#include "orv/serialization/Serializer.h"

#include <boost/serialization/nvp.hpp>
#include <cereal/cereal.hpp>

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// What is stored, by ours and by every peer: plain records, and a graph whose nodes share others. A class
/// names its fields once, in `Visit`.

namespace OrvBenchmark {

template<class Model>
class Stored : public Zan::Orv::Core::Service::ISerializable
{
public:
    void Serialize(Zan::Orv::Core::Service::Serializer& serializer) override
    {
        static_cast<Model*>(this)->Visit(
            [&](char const* tag, auto& field) { serializer.Serialize(field, tag); });
    }
};

struct Detail : Stored<Detail>
{
    int kind = 0;
    double weight = 0.0;

    bool operator==(Detail const& other) const { return kind == other.kind && weight == other.weight; }

    template<class Visitor>
    void Visit(Visitor visit)
    {
        visit("kind", kind);
        visit("weight", weight);
    }
    template<class Archive>
    void serialize(Archive& archive)
    {
        Visit([&](char const* tag, auto& field) { archive(cereal::make_nvp(tag, field)); });
    }
};

struct Record : Stored<Record>
{
    int number = 0;
    double value = 0.0;
    std::string name;
    Detail detail;

    bool operator==(Record const& other) const
    {
        return number == other.number && value == other.value && name == other.name && detail == other.detail;
    }

    template<class Visitor>
    void Visit(Visitor visit)
    {
        visit("number", number);
        visit("value", value);
        visit("name", name);
        visit("detail", detail);
    }
    template<class Archive>
    void serialize(Archive& archive)
    {
        Visit([&](char const* tag, auto& field) { archive(cereal::make_nvp(tag, field)); });
    }
};

/// Links lead to nodes that come earlier.
struct Node : Stored<Node>
{
    int number = 0;
    double value = 0.0;
    std::shared_ptr<Node> first;
    std::shared_ptr<Node> second;
    std::weak_ptr<Node> back;

    template<class Visitor>
    void Visit(Visitor visit)
    {
        visit("number", number);
        visit("value", value);
        visit("first", first);
        visit("second", second);
        std::shared_ptr<Node> held = back.lock();
        visit("back", held);
        back = held;
    }
    template<class Archive>
    void serialize(Archive& archive)
    {
        Visit([&](char const* tag, auto& field) { archive(cereal::make_nvp(tag, field)); });
    }
};

using Records = std::vector<Record>;
using Graph = std::vector<std::shared_ptr<Node>>;

inline void Fill(Records& records, std::size_t size)
{
    Random random(5);
    records.resize(size);
    for (Record& record : records)
    {
        record.number = static_cast<int>(random.Between(std::int64_t(0), 1'000'000));
        record.value = random.Between(-1000.0, 1000.0);
        record.name = "record " + std::to_string(random.Between(std::int64_t(0), 1'000'000));
        record.detail.kind = static_cast<int>(random.Between(std::int64_t(0), 100));
        record.detail.weight = random.Between(0.0, 1.0);
    }
}

inline void Fill(Graph& graph, std::size_t size)
{
    Random random(6);
    for (std::size_t i = 0; i < size; ++i)
    {
        auto const node = std::make_shared<Node>();
        node->number = static_cast<int>(i);
        node->value = random.Between(-1000.0, 1000.0);
        if (i != 0)
        {
            auto const earlier = [&] {
                return graph[static_cast<std::size_t>(random.Between(std::int64_t(0), std::int64_t(i) - 1))];
            };
            node->first = earlier();
            node->second = earlier();
            node->back = earlier();
        }
        graph.push_back(node);
    }
}

inline bool AreEqual(Records const& records, Records const& others)
{
    return records == others;
}

/// Links are compared by number, and by being shared with the vector.
inline bool AreEqual(Graph const& graph, Graph const& others)
{
    if (graph.size() != others.size())
        return false;
    for (std::size_t i = 0; i < graph.size(); ++i)
    {
        Node const& node = *graph[i];
        Node const& other = *others[i];
        auto const same = [&](std::shared_ptr<Node> const& link, std::shared_ptr<Node> const& otherLink) {
            if (link == nullptr || otherLink == nullptr)
                return link == otherLink;
            return link->number == otherLink->number &&
                   otherLink == others[static_cast<std::size_t>(otherLink->number)];
        };
        if (node.number != other.number || node.value != other.value || !same(node.first, other.first) ||
            !same(node.second, other.second) || !same(node.back.lock(), other.back.lock()))
            return false;
    }
    return true;
}

} // namespace OrvBenchmark

// Boost's archives look for free functions here.
namespace boost::serialization {

template<class Archive>
void serialize(Archive& archive, OrvBenchmark::Detail& model, unsigned int)
{
    model.Visit([&](char const* tag, auto& field) { archive& make_nvp(tag, field); });
}

template<class Archive>
void serialize(Archive& archive, OrvBenchmark::Record& model, unsigned int)
{
    model.Visit([&](char const* tag, auto& field) { archive& make_nvp(tag, field); });
}

template<class Archive>
void serialize(Archive& archive, OrvBenchmark::Node& model, unsigned int)
{
    model.Visit([&](char const* tag, auto& field) { archive& make_nvp(tag, field); });
}

} // namespace boost::serialization
