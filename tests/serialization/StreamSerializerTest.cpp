#include "tests/serialization/Documents.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <locale>
#include <stdexcept>

namespace Zan::Orv::Core::Service::Tests {

namespace {

// "1.234" for 1234, as some languages write it.
class Grouping : public std::numpunct<char>
{
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

template<class T>
std::string Write(T value)
{
    return TextForm::Write(value);
}

template<class T>
T Read(std::string const& lines, std::ios::iostate state = std::ios::goodbit, T value = T())
{
    EXPECT_EQ(TextForm::Read(lines, value) & ~std::ios::eofbit, state) << lines;
    return value;
}

template<class T>
void ExpectSame(T value)
{
    std::string const line = Write(value);
    EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
    EXPECT_EQ(Read<T>(line), value) << line;
}

template<class... T>
void ExpectLimits()
{
    (ExpectSame(std::numeric_limits<T>::lowest()), ...);
    (ExpectSame(std::numeric_limits<T>::min()), ...);
    (ExpectSame(std::numeric_limits<T>::max()), ...);
}

TEST(StreamSerializerTest, EveryValueHasALineAndComesBack)
{
    EXPECT_EQ(Write(static_cast<signed char>('A')) + Write(static_cast<unsigned char>(255)), "65\n255\n");
    EXPECT_EQ(Write(-1LL) + Write(18446744073709551615ULL), "-1\n18446744073709551615\n");
    EXPECT_EQ(Write(0.1f) + Write(false), "1.00000001490116119385e-01\nfalse\n");
    EXPECT_EQ(Write(std::string("a\nb\\n\\\r\t")), "a\\nb\\\\n\\\\\r\t\n");
    ExpectLimits<signed char, unsigned char, short, unsigned short, int, unsigned int, long long,
                 unsigned long long, float, double, bool>();
    for (std::string const text : {"", "\n\\n", "\\\nn", "\xFF\x01\t"})
        ExpectSame(text);
    ExpectSame(std::string("a\0b", 3));
    EXPECT_EQ(Read<std::string>("\\t\\\"\\\\n\n"), "t\"\\n"); // unknown escapes keep their character
    EXPECT_EQ(Read<std::string>("end\\\n"), "end");
}

TEST(StreamSerializerTest, HeadsOfObjectsAndContainers)
{
    std::size_t count = 0;
    std::string className;
    int id = 0;
    std::istringstream stream("N::C 12 behind\n5 elements\n");
    StreamInputSerializer reader(stream);
    reader.StartObject("t", 0, className, id);
    reader.StartArray("t", 0, count);
    EXPECT_EQ(className + std::to_string(id) + std::to_string(count), "N::C125");
}

TEST(StreamSerializerTest, TextBehindANumberIsSkippedUpTo511Characters)
{
    EXPECT_EQ(Read<std::string>("12 wells"), "12 wells"); // the last line may lack its line feed
    EXPECT_EQ(Read<double>("1.5 wells\n"), 1.5);
    // The skipping ends within the line, and what is left of it is the next value.
    std::array<int, 2> pair{};
    TextForm::Read("2\n1" + std::string(512, '-') + "7\n2\n", pair);
    EXPECT_EQ(pair[1], 7);
}

TEST(StreamSerializerTest, AFailureShowsInTheStreamAlone)
{
    EXPECT_EQ(Read("", std::ios::failbit, 5), 5);
    EXPECT_EQ(Read("wells\n", std::ios::failbit, 5), 0);
    EXPECT_EQ(Read<short>("32768\n", std::ios::failbit), 32767);
    EXPECT_EQ(Read<signed char>("200\n"), -56);
    EXPECT_EQ(Read<unsigned long long>("-1\n"), 18446744073709551615ULL);
    EXPECT_THROW(Read<double>("wells\n"), std::runtime_error);
}

TEST(StreamSerializerTest, IntegersFollowTheStream)
{
    std::stringstream stream;
    auto const write = [&stream](auto value) {
        stream.str("");
        TextForm::WriteTo(stream, value);
        return stream.str();
    };
    auto const read = [&stream](std::string const& line) {
        long long value = 0;
        stream.str(line);
        TextForm::ReadFrom(stream, value);
        return value;
    };
    write(true);
    EXPECT_NE(stream.flags() & std::ios::boolalpha, std::ios::fmtflags());
    stream << std::hex << std::showbase;
    EXPECT_EQ(write(255LL) + write(short{-1}) + write(static_cast<signed char>(-1)) + write(254ULL) +
                  write(static_cast<unsigned short>(253)),
              "0xff\n0xffff\n0xffffffff\n0xfe\n0xfd\n");
    stream << std::dec;
    stream.imbue(std::locale(stream.getloc(), new Grouping));
    EXPECT_EQ(write(1234U) + write(1234.5), "1.234\n1.23450000000000000000e+03\n");
    EXPECT_EQ(read("-1.234.567\n"), -1234567);
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
