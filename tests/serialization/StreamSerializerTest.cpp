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

struct StreamSerializerTest : ::testing::Test
{
    template<class T>
    std::string Write(T value)
    {
        out.str("");
        writer.Scalar("t", 0, value);
        return out.str();
    }

    template<class T>
    T Read(std::string const& lines, T value = T())
    {
        in.clear();
        in.str(lines);
        reader.Scalar("t", 0, value);
        return value;
    }

    template<class T>
    void ExpectSame(T value)
    {
        std::string const line = Write(value);
        EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
        EXPECT_EQ(Read<T>(line), value) << line;
        EXPECT_TRUE(in.good()) << line;
    }

    template<class... T>
    void ExpectLimits()
    {
        (ExpectSame(std::numeric_limits<T>::lowest()), ...);
        (ExpectSame(std::numeric_limits<T>::min()), ...);
        (ExpectSame(std::numeric_limits<T>::max()), ...);
    }

    std::ostringstream out;
    std::istringstream in;
    StreamOutputSerializer writer{out};
    StreamInputSerializer reader{in};
};

TEST_F(StreamSerializerTest, WritesOneValueToALine)
{
    EXPECT_EQ(Write(static_cast<signed char>('A')) + Write(static_cast<unsigned char>(255)), "65\n255\n");
    EXPECT_EQ(Write(-1LL) + Write(18446744073709551615ULL), "-1\n18446744073709551615\n");
    EXPECT_EQ(Write(0.1f), "1.00000001490116119385e-01\n");
    EXPECT_EQ(Write(std::numeric_limits<double>::quiet_NaN()), "NaN\n");
    EXPECT_EQ(Write(true) + Write(false), "true\nfalse\n");
    EXPECT_EQ(Write(std::string()), "\n");
    EXPECT_EQ(Write(std::string("a\nb\\n\\\r\t")), "a\\nb\\\\n\\\\\r\t\n");
}

TEST_F(StreamSerializerTest, HeadsOfObjectsAndContainers)
{
    std::size_t count = (std::size_t{1} << 32) + 5;
    writer.StartArray("t", 0, count);
    EXPECT_EQ(out.str(), "5\n");
    std::string className;
    int id = 0;
    in.str("N::C 12 behind\n5 elements\n");
    reader.StartObject("t", 0, className, id);
    reader.StartArray("t", 0, count);
    EXPECT_EQ(className + std::to_string(id) + std::to_string(count), "N::C125");
}

TEST_F(StreamSerializerTest, EveryValueComesBack)
{
    ExpectLimits<signed char, unsigned char, short, unsigned short, int, unsigned int, long long,
                 unsigned long long, float, double, bool>();
    ExpectSame(5e-324);
    for (std::string const text : {"", "\n", "\\\\", "\n\\n", "\\\nn", "#", "two words", "\xFF\x01\t"})
        ExpectSame(text);
    ExpectSame(std::string("a\0b", 3));
    EXPECT_EQ(Read<std::string>("\\t\\\"\\\\n\n"), "t\"\\n"); // unknown escapes keep their character
    EXPECT_EQ(Read<std::string>("end\\\n"), "end");
    ExpectSame(std::string(100'000, '\n'));
}

TEST_F(StreamSerializerTest, TextBehindANumberIsSkippedUpTo511Characters)
{
    EXPECT_EQ(Read<int>("12 wells"), 12);
    EXPECT_EQ(Read<std::string>("12 wells"), "12 wells"); // the last line may lack its line feed
    EXPECT_EQ(Read<double>("1.5 wells\n"), 1.5);
    // The skipping ends within the line, and what is left of it is the next value.
    std::array<int, 2> pair{};
    TextForm::Read("2\n1" + std::string(512, '-') + "7\n2\n", pair);
    EXPECT_EQ(pair[1], 7);
}

TEST_F(StreamSerializerTest, AFailureShowsInTheStreamAlone)
{
    EXPECT_EQ(Read<int>("", 5), 5);
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(Read<double>("", 2.5), 2.5);
    EXPECT_EQ(Read<int>("wells\n", 5), 0);
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(Read<short>("32768\n"), 32767);
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(Read<signed char>("200\n"), -56);
    EXPECT_EQ(Read<unsigned char>("256\n"), 0);
    EXPECT_EQ(Read<unsigned long long>("-1\n"), 18446744073709551615ULL);
    EXPECT_TRUE(in.good());
    EXPECT_THROW(Read<double>("wells\n"), std::runtime_error);
    EXPECT_THROW(Read<float>("\n"), std::runtime_error);

    out.setstate(std::ios::failbit);
    EXPECT_EQ(Write(1) + Write(1.5) + Write(std::string("s")) + Write(true), "");
}

TEST_F(StreamSerializerTest, IntegersFollowTheStream)
{
    Write(true);
    Read<bool>("true\n");
    EXPECT_NE(out.flags() & in.flags() & std::ios::boolalpha, std::ios::fmtflags());

    out << std::hex << std::showbase;
    in >> std::hex;
    EXPECT_EQ(Write(255) + Write(short{-1}) + Write(static_cast<signed char>(-1)),
              "0xff\n0xffff\n0xffffffff\n");
    EXPECT_EQ(Read<int>("ff\n"), 255);

    out.flags(std::ios::dec | std::ios::showpos);
    in.flags(std::ios::dec | std::ios::skipws);
    EXPECT_EQ(Write(5) + Write(5U), "+5\n5\n");
    out.imbue(std::locale(out.getloc(), new Grouping));
    in.imbue(out.getloc());
    EXPECT_EQ(Write(-1234567LL) + Write(1234.5), "-1.234.567\n1.23450000000000000000e+03\n");
    EXPECT_EQ(Read<long long>("-1.234.567\n"), -1234567);
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
