#pragma once

#include "fuzz/Input.h"
#include "orv/foundation/Exception.h"
#include "orv/serialization/Serializer.h"
#include "orv/time/TimeFormat.h"
#include "orv/time/TimeFrequency.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimePeriod.h"
#include "orv/time/TimeString.h"
#include "tests/support/Model.h"

#include <array>
#include <istream>
#include <optional>
#include <stdexcept>
#include <vector>

/// What documents are read into: a field of every kind, and graphs of both kinds of pointers.

namespace Zan::Orv::Core::Service::Fuzz {

struct Model : ISerializable
{
    std::optional<double> number;
    std::vector<int> counts;
    std::map<std::string, unsigned long long> byName;
    std::vector<std::pair<bool, char>> flags;
    std::array<double, 2> pair{};
    TimePeriod period;
    TimeOffset offset;
    TimeFrequency frequency{1, TimeFrequency::FrequencyUnit::Years};
    TimeFormat format{""};
    TimeString symbol;
    std::vector<std::shared_ptr<Tests::Node>> nodes;
    Tests::RawNode* raw = nullptr;

    void Serialize(Serializer& serializer) override
    {
        serializer.Serialize(number, "number");
        serializer.Serialize(counts, "counts");
        serializer.Serialize(byName, "byName");
        serializer.Serialize(flags, "flags");
        serializer.Serialize(pair, "pair");
        serializer.Serialize(period, "period");
        serializer.Serialize(offset, "offset");
        serializer.Serialize(frequency, "frequency");
        serializer.Serialize(format, "format");
        serializer.Serialize(symbol, "symbol");
        serializer.Serialize(nodes, "nodes");
        serializer.Serialize(raw, "raw");
    }
};

/// Reads a document, and frees whatever graph came of it.
template<class Reader, class... Root>
bool Reads(std::istream& stream, Model& model, Root const&... root)
{
    return Succeeds<SerializeException, TimeException, std::out_of_range, std::runtime_error, std::exception>(
        [&] {
            Reader reader(stream, root...);
            Serializer(reader).Serialize(model, "model");
        });
}

} // namespace Zan::Orv::Core::Service::Fuzz
