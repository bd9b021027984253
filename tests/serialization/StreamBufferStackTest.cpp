#include "tests/serialization/Documents.h"
#include "tests/serialization/StreamBuffers.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/Model.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Zan::Orv::Core::Service::Tests {

namespace {

using Graph = std::vector<std::shared_ptr<Node>>;

char const* const stacks[] = {"", "z", "6", "z6", "6z", "z6z6"};

template<class Form>
struct StreamBufferStackTest : ::testing::Test
{
    GraphGuard guard;
};
TYPED_TEST_SUITE(StreamBufferStackTest, Forms);

TYPED_TEST(StreamBufferStackTest, CarriesEveryForm)
{
    Graph graph{std::make_shared<Node>(), nullptr};
    graph[0]->name = "line\nfeed & more";
    for (std::size_t i = 0; i < 200; ++i)
        graph[0]->byName[std::to_string(i * i)] = graph[i % 2];
    std::string const document = TypeParam::Write(graph);
    for (std::string const kinds : stacks)
    {
        std::stringbuf file;
        {
            Stack stack(file, kinds);
            std::ostream stream(stack.Top());
            TypeParam::WriteTo(stream, graph);
        }
        EXPECT_EQ(file.str(), Wrap(document, kinds)) << kinds;

        Stack stack(file, kinds);
        std::istream stream(stack.Top());
        Graph read;
        TypeParam::ReadFrom(stream, read);
        EXPECT_EQ(TypeParam::Write(read), document) << kinds;
    }
}

TEST(StreamBufferStackTest, SynchronisedInTheMiddle)
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

// The buffer that misses something says so.
TEST(StreamBufferStackTest, EveryPrefixEndsInAFailure)
{
    std::string const stored = Wrap(RandomBytes(500), "z6");
    std::size_t symbols = 0;
    // Nobody misses a line feed at the end.
    for (std::size_t size = 0; size <= stored.find_last_not_of('\n'); symbols += stored[size++] != '\n')
        EXPECT_TRUE(Throws<std::runtime_error>([&] { Unwrap(stored.substr(0, size), "z6"); },
                                               symbols % 4 == 0 ? "BZip2: Unexpected end of input"
                                                                : "Ill-formed base64 encoding"))
            << size;
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
