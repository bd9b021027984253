#include "Graphs.h"
#include "tests/serialization/StreamBuffers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <istream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

// A target that takes so many bytes and no more, a source that ends or breaks after so many: alone, and below the buffers
// that compress and encode.

namespace Zan::Orv::Core::Service::Tests {
namespace {

/// Delivers `text` a few characters at a time, and then ends, by an exception where it `throws`.
class BrokenSource : public std::streambuf
{
public:
    BrokenSource(std::string text, bool throwing) : text_(std::move(text)), throws_(throwing)
    {
        setg(text_.data(), text_.data(), text_.data());
    }

protected:
    int_type underflow() override
    {
        constexpr std::ptrdiff_t step = 7;
        char* const end = text_.data() + text_.size();
        if (gptr() == end && throws_)
            throw std::runtime_error("broken");
        if (gptr() == end)
            return traits_type::eof();
        setg(gptr(), gptr(), gptr() + std::min(step, end - gptr()));
        return traits_type::to_int_type(*gptr());
    }

private:
    std::string text_;
    bool throws_;
};

bool Compresses(std::string const& kinds)
{
    return kinds.find('z') != std::string::npos;
}

/// Tries each stack of buffers with what a document becomes in it cut at each size.
template<class Attempt>
void CutAnywhere(std::string const& document, Attempt attempt)
{
    for (std::string const kinds : {"", "z", "6", "z6"})
    {
        std::string const stored = Wrap(document, kinds);
        for (std::size_t size = 0; size <= stored.size(); ++size)
            for (bool const throws : {false, true})
            {
                SCOPED_TRACE(testing::Message() << kinds << ", " << size << " of " << stored.size());
                attempt(stored, kinds, size, throws);
            }
    }
}

TYPED_TEST(FormTest, WritingToAFullTarget)
{
    GraphGuard const guard;
    Plant plant;
    Fill(plant);
    CutAnywhere(TypeParam::Write(plant), [&](auto& stored, auto& kinds, std::size_t limit, bool throws) {
        LimitedTarget target(limit, throws);
        {
            Stack stack(target, kinds);
            std::ostream stream(stack.Top());
            TypeParam::WriteTo(stream, plant);
            stream.flush();
            // A compressor may hold its block to the end.
            EXPECT_EQ(stream.fail(), limit < stored.size() && !Compresses(kinds));
        }
        EXPECT_EQ(target.text, stored.substr(0, limit));
    });
}

// Nobody misses a line feed at the end, but anything else.
TYPED_TEST(FormTest, ReadingFromABrokenSource)
{
    CutAnywhere(WholeDocument<TypeParam>(), [](auto& stored, auto& kinds, std::size_t size, bool throws) {
        BrokenSource source(stored.substr(0, size), throws);
        Stack stack(source, kinds);
        std::istream stream(stack.Top());
        GraphGuard const guard;
        Plant plant;
        bool succeeded = false;
        try
        {
            TypeParam::ReadFrom(stream, plant);
            // The parser has gone for the end, which a stream takes for a failure.
            succeeded = std::is_same_v<TypeParam, XMLForm> || !stream.fail();
        }
        catch (std::runtime_error const&)
        {
            // The form has found out by itself.
        }
        EXPECT_TRUE(!succeeded || size > stored.find_last_not_of('\n'));
    });
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
