#include "orv/foundation/Exception.h"
#include "tests/serialization/Documents.h"
#include "tests/support/Model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <streambuf>

namespace Zan::Orv::Core::Service::Tests {

namespace {

struct BinarySerializerTest : ::testing::Test
{
    template<class T>
    std::string Write(T value)
    {
        out.str("");
        writer.Scalar("t", 0, value);
        return out.str();
    }

    template<class T>
    T Read(std::string const& bytes, T value = T())
    {
        in.clear();
        in.str(bytes);
        reader.Scalar("t", 0, value);
        return value;
    }

    template<class T>
    void ExpectBytes(T value, std::string const& hex)
    {
        EXPECT_EQ(Write(value), FromHex(hex)) << hex;
        EXPECT_EQ(Read<T>(FromHex(hex)), value) << hex;
        EXPECT_TRUE(in.good()) << hex;
    }

    std::ostringstream out;
    std::istringstream in;
    BinaryOutputSerializer writer{out};
    BinaryInputSerializer reader{in};
};

TEST_F(BinarySerializerTest, EveryValueHasItsBytes)
{
    ExpectBytes<signed char>(-2, "FE");
    ExpectBytes<unsigned char>(200, "C8");
    ExpectBytes<short>(-2, "FF FE");
    ExpectBytes<unsigned short>(0x1234, "12 34");
    ExpectBytes<int>(1, "00 00 00 01");
    ExpectBytes<int>(std::numeric_limits<int>::min(), "80 00 00 00");
    ExpectBytes<unsigned int>(0x89ABCDEF, "89 AB CD EF");
    ExpectBytes<long long>(-2, "FF FF FF FF FF FF FF FE");
    ExpectBytes<unsigned long long>(0x8123456789ABCDEF, "81 23 45 67 89 AB CD EF");
    ExpectBytes<float>(-1.5F, "BF C0 00 00");
    ExpectBytes<double>(1.0, "3F F0 00 00 00 00 00 00");
    ExpectBytes<double>(5e-324, "00 00 00 00 00 00 00 01");
    ExpectBytes<double>(-std::numeric_limits<double>::infinity(), "FF F0 00 00 00 00 00 00");
    ExpectBytes<bool>(true, "00 00 00 01");
    ExpectBytes<bool>(false, "00 00 00 00");
    ExpectBytes<std::string>("", "00 00 00 00");
    ExpectBytes<std::string>(std::string("a\0\xFF", 3), "00 00 00 03 61 00 FF");

    // Any number but 0 is true, and the bits of a value that is no number are kept.
    EXPECT_TRUE(Read<bool>(FromHex("00 00 00 02")) && Read<bool>(FromHex("80 00 00 00")));
    std::string const noNumber = FromHex("7F F0 12 34 00 00 00 01");
    EXPECT_EQ(Write(Read<double>(noNumber)), noNumber);
}

TEST_F(BinarySerializerTest, HeadsOfObjectsAndContainers)
{
    std::size_t count = static_cast<std::size_t>((1ULL << 32) + 5); // the upper bits are lost
    std::string className = "N::C";
    int id = 7;
    writer.StartArray("t", 0, count);
    writer.EndArray("t");
    writer.StartObject("t", 0, className, id);
    writer.EndObject("t");
    std::string const bytes = FromHex("00 00 00 05  00 00 00 04 4E 3A 3A 43 00 00 00 07");
    EXPECT_EQ(out.str(), bytes);

    in.str(FromHex("FF FF FF FF") + bytes.substr(4));
    reader.StartArray("t", 0, count);
    reader.EndArray("t");
    className.clear();
    id = 0;
    reader.StartObject("t", 0, className, id);
    reader.EndObject("t");
    EXPECT_EQ(count, 0xFFFFFFFFU);
    EXPECT_EQ(className + std::to_string(id), "N::C7");

    auto const node = std::make_shared<RawNode>();
    std::pair<std::shared_ptr<RawNode>, std::shared_ptr<RawNode>> same(node, node);
    std::string const null(8, '\0');
    EXPECT_EQ(BinaryForm::Write(same), FromHex("00 00 00 02") + Counted("Tests::RawNode") +
                                           FromHex("00 00 00 01") + null + null +
                                           null + // weight, left, right
                                           FromHex("00 00 00 00  00 00 00 01"));
}

// Other primitives, in both directions alike: unsigned integers of one byte, `int` with a bit turned, texts
// reversed.
template<class Base>
struct Altered : Base
{
    using Base::Base;
    using Base::Scalar;

    void Scalar(char const*, std::size_t, unsigned long long& value) override { InOneByte(value); }
    void Scalar(char const*, std::size_t, unsigned int& value) override { InOneByte(value); }
    void Scalar(char const*, std::size_t, unsigned short& value) override { InOneByte(value); }
    void Scalar(char const* tag, std::size_t index, int& value) override
    {
        int turned = value ^ 0x40;
        Base::Scalar(tag, index, turned);
        value = turned ^ 0x40;
    }
    void Scalar(char const* tag, std::size_t index, std::string& value) override
    {
        std::string reversed(value.rbegin(), value.rend());
        Base::Scalar(tag, index, reversed);
        value.assign(reversed.rbegin(), reversed.rend());
    }

    template<class T>
    void InOneByte(T& value)
    {
        auto byte = static_cast<unsigned char>(value);
        Base::Scalar(nullptr, 0, byte);
        value = byte;
    }
};

void VisitAll(ISerializerImpl& impl, bool& flag, short& small, int& number, long long& large,
              std::string& text)
{
    std::size_t count = text.size();
    impl.Scalar("t", 0, flag);
    impl.Scalar("t", 0, small);
    impl.Scalar("t", 0, large);
    impl.StartArray("t", 0, count);
    impl.StartObject("t", 0, text, number);
}

TEST_F(BinarySerializerTest, ADerivedClassChangesAPrimitiveAndAllThatIsMadeOfIt)
{
    bool flag = true;
    short small = 2;
    int number = 3;
    long long large = 4;
    std::string text = "abc";
    Altered<BinaryOutputSerializer> output(out);
    VisitAll(output, flag, small, number, large, text);
    EXPECT_EQ(out.str(), FromHex("41 02 04 03  03 63 62 61 43"));

    in.str(out.str());
    Altered<BinaryInputSerializer> input(in);
    small = 0;
    number = 0;
    large = 0;
    text.clear();
    flag = false;
    VisitAll(input, flag, small, number, large, text);
    EXPECT_TRUE(flag && small == 2 && number == 3 && large == 4 && text == "abc");
}

TEST_F(BinarySerializerTest, AFailureShowsInTheStreamAlone)
{
    // What is cut short is left as it was.
    auto const unread = [&](auto value, std::size_t length) {
        EXPECT_EQ(Read(std::string(length, '\0'), value), value) << length;
        EXPECT_TRUE(in.eof() && in.fail()) << length;
    };
    unread(static_cast<unsigned char>(5), 0);
    unread(short{5}, 1);
    unread(5, 3);
    unread(true, 3);
    unread(1.5F, 3);
    unread(1.5, 7);
    unread(std::string("kept"), 3);
    EXPECT_EQ(Read<std::string>(FromHex("00 00 00 03 61 62"), "kept"), "kept");
    std::size_t count = 5;
    reader.StartArray("t", 0, count);
    EXPECT_EQ(count, 0U);
    in.clear();
    in.exceptions(std::ios::failbit);
    EXPECT_THROW(Read<int>("abc"), std::ios::failure);

    struct Full : std::streambuf
    {
    } full;
    std::ostream stream(&full);
    BinaryOutputSerializer(stream).StartArray("t", 0, count);
    EXPECT_TRUE(stream.bad());
}

// A buffer of few characters, or of none, over a text.
class SmallBuffer : public std::streambuf
{
public:
    explicit SmallBuffer(std::size_t size, std::string content = "")
        : text(std::move(content)), area_(size, '\0')
    {
        setp(area_.data(), area_.data() + area_.size());
    }

    std::string text;
    std::streamsize mostAsked = 0;

private:
    int overflow(int c) override
    {
        sync();
        text += static_cast<char>(c);
        return c;
    }

    int sync() override
    {
        text.append(pbase(), pptr());
        setp(area_.data(), area_.data() + area_.size());
        return 0;
    }

    int underflow() override
    {
        std::size_t const count = std::min(std::max<std::size_t>(area_.size(), 1), text.size() - at_);
        setg(text.data() + at_, text.data() + at_, text.data() + at_ + count);
        at_ += count;
        return count == 0 ? EOF : static_cast<unsigned char>(*gptr());
    }

    std::streamsize xsgetn(char* to, std::streamsize count) override
    {
        mostAsked = std::max(mostAsked, count);
        return std::streambuf::xsgetn(to, count);
    }

    std::string area_;
    std::size_t at_ = 0;
};

TEST_F(BinarySerializerTest, AnyBufferIsServed)
{
    std::vector<std::string> texts{"", "a", std::string(200'000, 'x'), "b"};
    std::string const expected = BinaryForm::Write(texts);
    for (std::size_t const size : {0U, 1U, 3U, 4U, 7U, 5000U, 100'000U})
    {
        SmallBuffer buffer(size);
        std::ostream stream(&buffer);
        BinaryOutputSerializer output(stream);
        Serializer(output).Serialize(texts, "x");
        stream.flush();
        EXPECT_TRUE(buffer.text == expected && stream.good()) << size;

        SmallBuffer source(size, expected);
        std::istream from(&source);
        BinaryInputSerializer input(from);
        std::vector<std::string> read;
        Serializer(input).Serialize(read, "x");
        EXPECT_TRUE(read == texts && from.good()) << size;
    }
}

TEST_F(BinarySerializerTest, StreamsThatFlushAreFlushed)
{
    SmallBuffer buffer(100);
    std::ostream stream(&buffer);
    in.tie(&stream);
    out.tie(&stream);
    stream << "question";
    Read<int>("1234");
    EXPECT_EQ(buffer.text, "question");
    stream << " 2";
    Write(1);
    EXPECT_EQ(buffer.text, "question 2");

    short value = 0x4142;
    stream << std::unitbuf;
    BinaryOutputSerializer(stream).Scalar("t", 0, value);
    EXPECT_EQ(buffer.text, "question 2AB");
}

struct Tree : ISerializable
{
    std::vector<Tree> children;
    std::array<double, 50> weights{};

    void Serialize(Serializer& serializer) override { serializer.Serialize(children, "children"); }

    std::size_t Bytes() const
    {
        std::size_t sum = children.capacity() * sizeof(Tree);
        for (Tree const& child : children)
            sum += child.Bytes();
        return sum;
    }
};

TEST_F(BinarySerializerTest, APromiseCostsNoMoreThanWhatComes)
{
    SmallBuffer source(10, FromHex("FF FF FF FF") + "0123456789");
    std::istream stream(&source);
    std::string text = "kept";
    BinaryInputSerializer(stream).Scalar("t", 0, text);
    EXPECT_EQ(text, "kept");
    EXPECT_LE(source.mostAsked, 64 * 1024);

    std::vector<int> numbers;
    EXPECT_THROW(BinaryForm::Read(FromHex("FF FF FF FF") + "1234567", numbers), SerializeException);
    EXPECT_LE(numbers.capacity(), 7U);

    // However arrays nest: each of these promises four billion elements.
    std::string const level = FromHex("00 00 00 00 FF FF FF FF  FF FF FF FF");
    Tree tree;
    EXPECT_THROW(BinaryForm::Read(Repeat(300, level), tree), SerializeException);
    EXPECT_LT(tree.Bytes(), 300 * (2 * sizeof(Tree) + 4 * level.size()));

    std::vector<double> honest(100'000, 1.5);
    std::vector<double> read;
    BinaryForm::Read(BinaryForm::Write(honest), read);
    EXPECT_EQ(read, honest);
    EXPECT_EQ(read.capacity(), honest.size()); // made at once
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
