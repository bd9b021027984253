#include "orv/foundation/Exception.h"
#include "tests/serialization/Documents.h"
#include "tests/serialization/StreamBuffers.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace Zan::Orv::Core::Service::Tests {

namespace {

template<class T>
T Read(std::string const& bytes)
{
    T value{};
    EXPECT_EQ(BinaryForm::Read(bytes, value), std::ios::goodbit);
    return value;
}

template<class T>
void ExpectBytes(T value, std::string const& hex)
{
    EXPECT_EQ(BinaryForm::Write(value), FromHex(hex)) << hex;
    EXPECT_EQ(Read<T>(FromHex(hex)), value) << hex;
}

// Beyond what the golden document holds.
TEST(BinarySerializerTest, ValuesHaveTheirBytes)
{
    ExpectBytes<unsigned short>(0x1234, "12 34");
    ExpectBytes<unsigned int>(0x89ABCDEF, "89 AB CD EF");
    ExpectBytes<unsigned long long>(0x8123456789ABCDEF, "81 23 45 67 89 AB CD EF");
    ExpectBytes<double>(-std::numeric_limits<double>::infinity(), "FF F0 00 00 00 00 00 00");
    ExpectBytes<bool>(false, "00 00 00 00");
    ExpectBytes<std::string>(std::string("a\0\xFF", 3), "00 00 00 03 61 00 FF");

    // Any number but 0 is true, and the bits of a value that is no number are kept.
    EXPECT_TRUE(Read<bool>(FromHex("00 00 00 02")) && Read<bool>(FromHex("80 00 00 00")));
    std::string const noNumber = FromHex("7F F0 12 34 00 00 00 01");
    auto value = Read<double>(noNumber);
    EXPECT_EQ(BinaryForm::Write(value), noNumber);
}

TEST(BinarySerializerTest, CountsHave32Bits)
{
    std::size_t count = static_cast<std::size_t>((1ULL << 32) + 5); // the upper bits are lost
    std::stringstream stream;
    BinaryOutputSerializer(stream).StartArray("t", 0, count);
    EXPECT_EQ(stream.str(), FromHex("00 00 00 05"));
    stream.str(FromHex("FF FF FF FF"));
    BinaryInputSerializer reader(stream);
    reader.StartArray("t", 0, count);
    EXPECT_EQ(count, 0xFFFFFFFFU);
    reader.StartArray("t", 0, count);
    EXPECT_EQ(count, 0U); // where there is none
}

// Notes which primitives go through it. What a derived class changes in one of them holds for all that is made of it.
template<class Base>
struct Noted : Base
{
    using Base::Base;
    using Base::Scalar;

    void Scalar(char const*, std::size_t, unsigned long long& value) override { Note('L', value); }
    void Scalar(char const*, std::size_t, unsigned int& value) override { Note('I', value); }
    void Scalar(char const*, std::size_t, unsigned short& value) override { Note('S', value); }
    void Scalar(char const*, std::size_t, unsigned char& value) override { Note('C', value); }
    void Scalar(char const*, std::size_t, int& value) override { Note('i', value); }
    void Scalar(char const*, std::size_t, std::string& value) override { Note('t', value); }

    template<class T>
    void Note(char primitive, T& value)
    {
        primitives += primitive;
        Base::Scalar("t", 0, value);
    }

    std::string primitives;
};

template<class Base, class T>
std::string PrimitivesOf(T& value, std::iostream& stream)
{
    Noted<Base> impl(stream);
    Serializer(impl).Serialize(value, "x");
    return impl.primitives;
}

TEST(BinarySerializerTest, ADerivedClassChangesAPrimitiveAndAllThatIsMadeOfIt)
{
    std::pair<std::pair<bool, signed char>, std::pair<short, long long>> numbers;
    std::shared_ptr<ISerializable> object;
    std::stringstream stream;
    EXPECT_EQ(PrimitivesOf<BinaryOutputSerializer>(numbers, stream), "IIiICISL");
    EXPECT_EQ(PrimitivesOf<BinaryInputSerializer>(numbers, stream), "IIiICISL");
    EXPECT_EQ(PrimitivesOf<BinaryOutputSerializer>(object, stream), "tIiI");
    EXPECT_EQ(PrimitivesOf<BinaryInputSerializer>(object, stream), "tIiI");
}

TEST(BinarySerializerTest, AFailureShowsInTheStreamAlone)
{
    // What is cut short is left as it was.
    auto const unread = [](auto value, std::string const& bytes) {
        auto const before = value;
        EXPECT_EQ(BinaryForm::Read(bytes, value), std::ios::eofbit | std::ios::failbit) << bytes.size();
        EXPECT_EQ(value, before) << bytes.size();
    };
    unread(static_cast<unsigned char>(5), "");
    unread(short{5}, "a");
    unread(true, std::string(3, '\0'));
    unread(1.5F, "abc");
    unread(1.5, "abcdefg");
    unread(std::string("kept"), "abc");
    unread(std::string("kept"), FromHex("00 00 00 03 61 62"));

    int number = 0;
    std::istringstream in("abc");
    in.exceptions(std::ios::failbit);
    EXPECT_THROW(BinaryForm::ReadFrom(in, number), std::ios::failure);
    LimitedTarget full(0);
    std::ostream out(&full);
    BinaryForm::WriteTo(out, number);
    EXPECT_TRUE(out.bad());
}

TEST(BinarySerializerTest, AnyBufferIsServed)
{
    std::vector<std::string> texts{"", "a", std::string(200'000, 'x'), "b"};
    std::string const expected = BinaryForm::Write(texts);
    for (std::size_t const size : {0U, 1U, 3U, 4U, 7U, 5000U, 100'000U})
    {
        SmallBuffer target(size);
        std::ostream to(&target);
        BinaryForm::WriteTo(to, texts);
        to.flush();
        EXPECT_TRUE(target.text == expected && to.good()) << size;

        SmallBuffer source(size, expected);
        std::istream from(&source);
        std::vector<std::string> read;
        BinaryForm::ReadFrom(from, read);
        EXPECT_TRUE(read == texts && from.good()) << size;
    }
}

TEST(BinarySerializerTest, StreamsThatFlushAreFlushed)
{
    SmallBuffer buffer(100);
    std::ostream stream(&buffer);
    std::stringstream tied("1234");
    tied.tie(&stream);
    int number = 0;
    stream << "question";
    BinaryForm::ReadFrom(tied, number);
    EXPECT_EQ(buffer.text, "question");
    stream << " 2";
    BinaryForm::WriteTo(tied, number);
    EXPECT_EQ(buffer.text, "question 2");
    stream << std::unitbuf;
    BinaryForm::WriteTo(stream, number);
    EXPECT_EQ(buffer.text, "question 21234");
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

TEST(BinarySerializerTest, APromiseCostsNoMoreThanWhatComes)
{
    std::string const promise = FromHex("FF FF FF FF");
    SmallBuffer source(10, promise + "0123456789");
    std::istream stream(&source);
    std::string text = "kept";
    BinaryForm::ReadFrom(stream, text);
    EXPECT_EQ(text, "kept");
    EXPECT_LE(source.mostAsked, 64 * 1024);

    std::vector<int> numbers;
    EXPECT_THROW(BinaryForm::Read(promise + "1234567", numbers), SerializeException);
    EXPECT_LE(numbers.capacity(), 7U);

    // However arrays nest: each of these promises four billion elements.
    std::string const level = FromHex("00 00 00 00") + promise + promise;
    Tree tree;
    EXPECT_THROW(BinaryForm::Read(Repeat(300, level), tree), SerializeException);
    EXPECT_LT(tree.Bytes(), 300 * (2 * sizeof(Tree) + 4 * level.size()));

    std::vector<double> honest(100'000, 1.5);
    auto const read = Read<std::vector<double>>(BinaryForm::Write(honest));
    EXPECT_EQ(read, honest);
    EXPECT_EQ(read.capacity(), honest.size()); // made at once
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
