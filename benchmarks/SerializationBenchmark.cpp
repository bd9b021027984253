#include "Models.h"

#include "orv/serialization/BinaryInputSerializer.h"
#include "orv/serialization/BinaryOutputSerializer.h"
#include "orv/serialization/Factory.h"
#include "orv/serialization/StreamInputSerializer.h"
#include "orv/serialization/StreamOutputSerializer.h"
#include "orv/serialization/XMLInputSerializer.h"
#include "orv/serialization/XMLOutputSerializer.h"

#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/archive/text_iarchive.hpp>
#include <boost/archive/text_oarchive.hpp>
#include <boost/archive/xml_iarchive.hpp>
#include <boost/archive/xml_oarchive.hpp>
#include <boost/serialization/shared_ptr.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/vector.hpp>
#include <cereal/archives/portable_binary.hpp>
#include <cereal/archives/xml.hpp>
#include <cereal/types/memory.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <map>
#include <sstream>
#include <string>

// Records and graphs, as XML, as bytes and as text, written to a stream that is kept and read back from one.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

FactoryRegistrar<Node> const registrar("OrvBenchmark::Node");

struct OurXML
{
    template<class Model>
    static void Write(std::ostream& stream, Model& model)
    {
        XMLOutputSerializer xml(stream, "doc");
        Serializer(xml).Serialize(model, "model");
    }
    template<class Model>
    static void Read(std::istream& stream, Model& model)
    {
        XMLInputSerializer xml(stream, "doc");
        Serializer(xml).Serialize(model, "model");
    }
};

template<class Output, class Input>
struct Ours
{
    template<class Model>
    static void Write(std::ostream& stream, Model& model)
    {
        Output output(stream);
        Serializer(output).Serialize(model, "model");
    }
    template<class Model>
    static void Read(std::istream& stream, Model& model)
    {
        Input input(stream);
        Serializer(input).Serialize(model, "model");
    }
};

using OurBinary = Ours<BinaryOutputSerializer, BinaryInputSerializer>;
using OurText = Ours<StreamOutputSerializer, StreamInputSerializer>;

template<class OutputArchive, class InputArchive>
struct Boost
{
    template<class Model>
    static void Write(std::ostream& stream, Model& model)
    {
        OutputArchive archive(stream);
        archive << boost::serialization::make_nvp("model", model);
    }
    template<class Model>
    static void Read(std::istream& stream, Model& model)
    {
        InputArchive archive(stream);
        archive >> boost::serialization::make_nvp("model", model);
    }
};

using BoostXML = Boost<boost::archive::xml_oarchive, boost::archive::xml_iarchive>;
using BoostBinary = Boost<boost::archive::binary_oarchive, boost::archive::binary_iarchive>;
using BoostText = Boost<boost::archive::text_oarchive, boost::archive::text_iarchive>;

template<class OutputArchive, class InputArchive>
struct Cereal
{
    template<class Model>
    static void Write(std::ostream& stream, Model& model)
    {
        OutputArchive archive(stream);
        archive(cereal::make_nvp("model", model));
    }
    template<class Model>
    static void Read(std::istream& stream, Model& model)
    {
        InputArchive archive(stream);
        archive(cereal::make_nvp("model", model));
    }
};

using CerealXML = Cereal<cereal::XMLOutputArchive, cereal::XMLInputArchive>;
using CerealBinary = Cereal<cereal::PortableBinaryOutputArchive, cereal::PortableBinaryInputArchive>;

// Models are made once a size, and shared by all forms.
template<class Model>
Model& MadeModel(std::size_t size)
{
    static std::map<std::size_t, Model> models;
    Model& model = models[size];
    if (model.empty())
        Fill(model, size);
    return model;
}

template<class Form, class Model>
std::string Document(Model& model)
{
    std::ostringstream stream;
    Form::Write(stream, model);
    return stream.str();
}

template<class Form, class Model>
bool RoundTrips()
{
    Model& model = MadeModel<Model>(1000);
    std::istringstream stream(Document<Form>(model));
    Model read;
    Form::Read(stream, read);
    return AreEqual(model, read);
}

template<class Form, class Model>
void Write(benchmark::State& state)
{
    if (!Holds(state, RoundTrips<Form, Model>()))
        return;
    auto& model = MadeModel<Model>(static_cast<std::size_t>(state.range(0)));
    std::ostringstream stream(Document<Form>(model)); // as long as it will be
    for ([[maybe_unused]] auto _ : state)
    {
        stream.seekp(0);
        Form::Write(stream, model);
    }
    Holds(state, stream.good());
}

template<class Form, class Model>
void Read(benchmark::State& state)
{
    if (!Holds(state, RoundTrips<Form, Model>()))
        return;
    auto const size = static_cast<std::size_t>(state.range(0));
    std::istringstream stream(Document<Form>(MadeModel<Model>(size)));
    for ([[maybe_unused]] auto _ : state)
    {
        stream.clear();
        stream.seekg(0);
        Model read;
        Form::Read(stream, read);
        if (!Holds(state, read.size() == size))
            return;
    }
}

// The tree that the parser library makes by itself, with nothing read out of it: the floor of a reader that
// walks it.
template<class Model>
void ParseXerces(benchmark::State& state)
{
    namespace xercesc = XERCES_CPP_NAMESPACE;
    static bool const started = [] {
        xercesc::XMLPlatformUtils::Initialize();
        return true;
    }();
    static_cast<void>(started);

    auto const size = static_cast<std::size_t>(state.range(0));
    std::string const document = Document<OurXML>(MadeModel<Model>(size));
    for ([[maybe_unused]] auto _ : state)
    {
        xercesc::MemBufInputSource const source(reinterpret_cast<XMLByte const*>(document.data()),
                                                document.size(), "document");
        xercesc::XercesDOMParser parser;
        parser.parse(source);
        auto* const root = parser.getDocument()->getDocumentElement();
        if (!Holds(state, root->getFirstElementChild()->getChildElementCount() == size))
            return;
    }
}

void ToMillion(benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier(10)->Range(1'000, 1'000'000)->Unit(benchmark::kMillisecond);
}

void RecordPeer(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(100'000)->Unit(benchmark::kMillisecond);
}

void GraphPeer(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(10'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK_TEMPLATE(Write, OurXML, Records)->Name("xml.write/ours")->Apply(ToMillion);
BENCHMARK_TEMPLATE(Write, BoostXML, Records)->Name("xml.write/boost")->Apply(RecordPeer);
BENCHMARK_TEMPLATE(Write, CerealXML, Records)->Name("xml.write/cereal")->Apply(RecordPeer);

BENCHMARK_TEMPLATE(Read, OurXML, Records)->Name("xml.read/ours")->Apply(ToMillion);
BENCHMARK_TEMPLATE(ParseXerces, Records)->Name("xml.read/xerces")->Apply(RecordPeer);

BENCHMARK_TEMPLATE(Write, OurBinary, Records)->Name("binary.write/ours")->Apply(ToMillion);
BENCHMARK_TEMPLATE(Write, CerealBinary, Records)->Name("binary.write/cereal")->Apply(RecordPeer);
BENCHMARK_TEMPLATE(Write, BoostBinary, Records)->Name("binary.write/boost")->Apply(RecordPeer);
BENCHMARK_TEMPLATE(Read, OurBinary, Records)->Name("binary.read/ours")->Apply(ToMillion);
BENCHMARK_TEMPLATE(Read, CerealBinary, Records)->Name("binary.read/cereal")->Apply(RecordPeer);
BENCHMARK_TEMPLATE(Read, BoostBinary, Records)->Name("binary.read/boost")->Apply(RecordPeer);

BENCHMARK_TEMPLATE(Write, OurText, Records)->Name("text.write/ours")->Apply(ToMillion);
BENCHMARK_TEMPLATE(Write, BoostText, Records)->Name("text.write/boost")->Apply(RecordPeer);
BENCHMARK_TEMPLATE(Read, OurText, Records)->Name("text.read/ours")->Apply(ToMillion);
BENCHMARK_TEMPLATE(Read, BoostText, Records)->Name("text.read/boost")->Apply(RecordPeer);

BENCHMARK_TEMPLATE(Write, OurXML, Graph)->Name("graph.xml.write/ours")->Apply(ToMillion);
BENCHMARK_TEMPLATE(Write, BoostXML, Graph)->Name("graph.xml.write/boost")->Apply(GraphPeer);
BENCHMARK_TEMPLATE(Read, OurXML, Graph)->Name("graph.xml.read/ours")->Apply(ToMillion);
BENCHMARK_TEMPLATE(Read, BoostXML, Graph)->Name("graph.xml.read/boost")->Apply(GraphPeer);
BENCHMARK_TEMPLATE(ParseXerces, Graph)->Name("graph.xml.read/xerces")->Apply(GraphPeer);

BENCHMARK_TEMPLATE(Write, OurBinary, Graph)->Name("graph.binary.write/ours")->Apply(ToMillion);
BENCHMARK_TEMPLATE(Write, CerealBinary, Graph)->Name("graph.binary.write/cereal")->Apply(GraphPeer);
BENCHMARK_TEMPLATE(Write, BoostBinary, Graph)->Name("graph.binary.write/boost")->Apply(GraphPeer);
BENCHMARK_TEMPLATE(Read, OurBinary, Graph)->Name("graph.binary.read/ours")->Apply(ToMillion);
BENCHMARK_TEMPLATE(Read, CerealBinary, Graph)->Name("graph.binary.read/cereal")->Apply(GraphPeer);
BENCHMARK_TEMPLATE(Read, BoostBinary, Graph)->Name("graph.binary.read/boost")->Apply(GraphPeer);

BENCHMARK_TEMPLATE(Write, OurText, Graph)->Name("graph.text.write/ours")->Apply(ToMillion);
BENCHMARK_TEMPLATE(Write, BoostText, Graph)->Name("graph.text.write/boost")->Apply(GraphPeer);
BENCHMARK_TEMPLATE(Read, OurText, Graph)->Name("graph.text.read/ours")->Apply(ToMillion);
BENCHMARK_TEMPLATE(Read, BoostText, Graph)->Name("graph.text.read/boost")->Apply(GraphPeer);

} // namespace
