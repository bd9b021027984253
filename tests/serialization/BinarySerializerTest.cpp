#include "orv/foundation/Exception.h"
#include "tests/serialization/Documents.h"
#include "tests/serialization/StreamBuffers.h"

#include <gtest/gtest.h>

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
    ExpectBytes<unsigned long long>(0x8123456789ABCDEF, "81 23 45 67 89 AB CD EF");
    ExpectBytes<double>(-std::numeric_limits<double>::infinity(), "FF F0 00 00 00 00 00 00");
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

// Notes the integers that go through it. What a derived class changes in one of them holds for all that is made of it.
struct Noted : BinaryOutputSerializer
{
    using BinaryOutputSerializer::BinaryOutputSerializer;
    using BinaryOutputSerializer::Scalar;

    void Scalar(char const* tag, std::size_t index, unsigned int& value) override
    {
        integers += std::to_string(value) + ' ';
        BinaryOutputSerializer::Scalar(tag, index, value);
    }

    std::string integers;
};

TEST(BinarySerializerTest, ADerivedClassChangesAPrimitiveAndAllThatIsMadeOfIt)
{
    std::pair<std::string, std::pair<bool, int>> values("abc", {true, 7});
    std::ostringstream stream;
    Noted noted(stream);
    Serializer(noted).Serialize(values, "x");
    EXPECT_EQ(noted.integers, "2 3 2 1 7 ");
}

TEST(BinarySerializerTest, AFailureShowsInTheStreamAlone)
{
    // What is cut short is left as it was.
    auto const unread = [](auto value, std::string const& bytes) {
        auto const before = value;
        EXPECT_EQ(BinaryForm::Read(bytes, value), std::ios::eofbit | std::ios::failbit) << bytes.size();
        EXPECT_EQ(value, before) << bytes.size();
    };
    unread(short{5}, "a");
    unread(1.5, "abcdefg");
    unread(std::string("kept"), FromHex("00 00 00 03 61 62"));

    int number = 0;
    std::istringstream in("abc");
    in.exceptions(std::ios::failbit);
    EXPECT_THROW(BinaryForm::ReadFrom(in, number), std::ios::failure);
}

TEST(BinarySerializerTest, AnyBufferIsServed)
{
    std::vector<std::string> texts{"", "a", std::string(200'000, 'x'), "b"};
    std::string const expected = BinaryForm::Write(texts);
    for (std::size_t const size : {0U, 1U, 7U, 5000U})
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
    stream << std::unitbuf;
    BinaryForm::WriteTo(stream, number);
    EXPECT_EQ(buffer.text, "question1234");
}

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

    std::vector<double> honest(100'000, 1.5);
    EXPECT_EQ(Read<std::vector<double>>(BinaryForm::Write(honest)).capacity(), honest.size()); // made at once
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
