#include "tests/serialization/Documents.h"
#include "tests/serialization/StreamBuffers.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/Model.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Zan::Orv::Core::Service::Tests {

namespace {

using Graph = std::vector<std::shared_ptr<Node>>;

struct StoredForm
{
    char const* name;
    void (*write)(std::ostream& stream, Graph& graph);
    void (*read)(std::istream& stream, Graph& graph);
};

template<class Output, class Input, class... Root>
StoredForm FormOf(char const* name)
{
    return {name,
            [](std::ostream& stream, Graph& graph) {
                Output output(stream, Root::tag...);
                Serializer(output).Serialize(graph, "graph");
            },
            [](std::istream& stream, Graph& graph) {
                Input input(stream, Root::tag...);
                Serializer(input).Serialize(graph, "graph");
            }};
}

StoredForm const forms[] = {
    FormOf<XMLOutputSerializer, XMLInputSerializer, DocRoot>("XML"),
    FormOf<StreamOutputSerializer, StreamInputSerializer>("text"),
    FormOf<BinaryOutputSerializer, BinaryInputSerializer>("binary"),
};

char const* const stacks[] = {"", "z", "6", "z6", "6z", "z6z6"};

Graph MakeGraph()
{
    auto const node = std::make_shared<Node>(), other = std::make_shared<Node>();
    node->name = "line\nfeed & more";
    other->links = {node, other, nullptr};
    for (int i = 0; i < 200; ++i)
        node->byName[std::to_string(i * i)] = i % 3 == 0 ? other : nullptr;
    return {node, other};
}

std::string Store(StoredForm const& form, Graph& graph, std::string const& kinds)
{
    std::stringbuf target;
    {
        Stack stack(target, kinds);
        std::ostream stream(stack.Top());
        form.write(stream, graph);
    }
    return target.str();
}

TEST(StreamBufferStack, EveryFormOnEveryStackComesBack)
{
    GraphGuard const guard;
    Graph graph = MakeGraph();
    for (StoredForm const& form : forms)
    {
        std::string const document = Store(form, graph, "");
        for (std::string const kinds : stacks)
        {
            SCOPED_TRACE(form.name + (" on " + kinds));
            std::string const stored = Store(form, graph, kinds);
            EXPECT_EQ(stored, Wrap(document, kinds));

            std::stringbuf source(stored, std::ios::in);
            Stack stack(source, kinds);
            std::istream stream(stack.Top());
            Graph read;
            form.read(stream, read);
            EXPECT_EQ(Store(form, read, ""), document);
        }
    }
}

TEST(StreamBufferStack, SynchronisedInTheMiddle)
{
    std::string const bytes = RandomBytes(20'000);
    for (std::string const kinds : stacks)
    {
        LimitedTarget target;
        {
            Stack stack(target, kinds);
            for (std::size_t at = 0, size = 0; at < bytes.size(); at += size, size = (size + 1) % 700)
            {
                std::string const burst = bytes.substr(at, size);
                stack.Top()->sputn(burst.data(), std::ssize(burst));
                EXPECT_EQ(stack.Top()->pubsync(), 0);
            }
        }
        EXPECT_EQ(Unwrap(target.text, kinds), bytes) << kinds;
    }
}

// Reading ends where a document was cut, and says so: the buffers by their exceptions, which a stream keeps as
// its state, and the forms by theirs.
TEST(StreamBufferStack, EveryPrefixEndsInAFailure)
{
    GraphGuard const guard;
    Graph graph = MakeGraph();
    for (StoredForm const& form : forms)
    {
        std::string const document = Store(form, graph, "");
        std::string const stored = Wrap(document, "z6");
        std::size_t symbols = 0;
        // Nobody misses a line feed at the end.
        for (std::size_t size = 0; size <= stored.find_last_not_of('\n'); ++size)
        {
            SCOPED_TRACE(testing::Message() << form.name << ", " << size << " of " << stored.size());
            std::string const prefix = stored.substr(0, size);
            EXPECT_TRUE(Throws<std::runtime_error>([&] { Unwrap(prefix, "z6"); },
                                                   symbols % 4 == 0 ? "BZip2: Unexpected end of input"
                                                                    : "Ill-formed base64 encoding"));
            symbols += stored[size] != '\n';

            std::stringbuf source(prefix, std::ios::in);
            Stack stack(source, "z6");
            std::istream stream(stack.Top());
            Graph read;
            try
            {
                form.read(stream, read);
                EXPECT_TRUE(stream.fail() || Store(form, read, "") == document);
            }
            catch (std::exception const&)
            {
                // The form has found out by itself.
            }
        }
    }
}

TEST(StreamBufferStack, ATargetThatIsFull)
{
    std::string const bytes = RandomBytes(20'000);
    for (std::string const kinds : stacks)
    {
        std::string const stored = Wrap(bytes, kinds);
        for (std::size_t limit = 0; limit < stored.size(); limit += 2999)
        {
            for (bool const throws : {false, true})
            {
                LimitedTarget target(limit, throws);
                {
                    Stack stack(target, kinds);
                    std::ostream stream(stack.Top());
                    stream.write(bytes.data(), std::ssize(bytes)).flush();
                    // A compressor may hold its block to the end.
                    EXPECT_TRUE(stream.fail() || kinds.find('z') != std::string::npos)
                        << kinds << ", " << limit;
                }
                EXPECT_EQ(target.text, stored.substr(0, limit)) << kinds << ", " << limit;
            }
        }
    }
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
