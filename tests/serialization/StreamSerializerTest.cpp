#include "tests/serialization/Documents.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <locale>
#include <stdexcept>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

namespace {

// "1.234" for 1234, as some languages write it.
class Grouping : public std::numpunct<char>
{
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

class StreamSerializerTest : public ::testing::Test
{
protected:
    template<class T>
    std::string Write(T value)
    {
        out_.str("");
        writer_.Scalar("t", 0, value);
        return out_.str();
    }

    template<class T>
    T Read(std::string const& lines, T value = T())
    {
        in_.clear();
        in_.str(lines);
        reader_.Scalar("t", 0, value);
        return value;
    }

    template<class T>
    void ExpectSame(T value)
    {
        std::string const line = Write(value);
        EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
        EXPECT_EQ(Read<T>(line), value) << line;
        EXPECT_TRUE(in_.good()) << line;
    }

    template<class T>
    void ExpectLimits()
    {
        for (T const value : {std::numeric_limits<T>::lowest(), T(0), T(1), T(-1),
                              std::numeric_limits<T>::min(), std::numeric_limits<T>::max()})
            ExpectSame(value);
    }

    std::ostringstream out_;
    std::istringstream in_;
    StreamOutputSerializer writer_{out_};
    StreamInputSerializer reader_{in_};
};

TEST_F(StreamSerializerTest, WritesOneValueToALine)
{
    EXPECT_EQ(Write(static_cast<signed char>('A')), "65\n");
    EXPECT_EQ(Write(static_cast<unsigned char>(255)), "255\n");
    EXPECT_EQ(Write(-1LL), "-1\n");
    EXPECT_EQ(Write(18446744073709551615ULL), "18446744073709551615\n");
    EXPECT_EQ(Write(1.5), "1.50000000000000000000e+00\n");
    EXPECT_EQ(Write(0.1f), "1.00000001490116119385e-01\n");
    EXPECT_EQ(Write(std::numeric_limits<double>::quiet_NaN()), "NaN\n");
    EXPECT_EQ(Write(true) + Write(false), "true\nfalse\n");
    EXPECT_EQ(Write(std::string()), "\n");
    EXPECT_EQ(Write(std::string("a\nb\\n\\\r\t")), "a\\nb\\\\n\\\\\r\t\n");
}

TEST_F(StreamSerializerTest, ContainersAndObjectsHaveAHeadAndNoEnd)
{
    std::string className;
    int id = -1;
    std::size_t count = (std::size_t{1} << 32) + 5;
    writer_.StartObject("t", 0, className, id);
    EXPECT_EQ(className, "");
    writer_.EndObject("t");
    className = "N::C";
    writer_.StartObject("t", 0, className, id = 12);
    writer_.StartArray("t", 0, count);
    writer_.EndArray("t");
    EXPECT_EQ(out_.str(), "# -1\nN::C 12\n5\n");

    in_.str("# -1\nN::C 12 behind\n5 elements\n");
    reader_.StartObject("t", 0, className, id);
    EXPECT_EQ(className + std::to_string(id), "-1");
    reader_.StartObject("t", 0, className, id);
    EXPECT_EQ(className + std::to_string(id), "N::C12");
    reader_.StartArray("t", 0, count);
    EXPECT_EQ(count, 5U);
    EXPECT_TRUE(in_.good());
}

TEST_F(StreamSerializerTest, EveryValueComesBack)
{
    ExpectLimits<signed char>();
    ExpectLimits<unsigned char>();
    ExpectLimits<short>();
    ExpectLimits<unsigned short>();
    ExpectLimits<int>();
    ExpectLimits<unsigned int>();
    ExpectLimits<long long>();
    ExpectLimits<unsigned long long>();
    ExpectLimits<float>();
    ExpectLimits<double>();
    ExpectSame(5e-324);
    ExpectSame(true);
    ExpectSame(false);
    for (std::string const text :
         {"", "\n", "\\", "\\\\", "\\n", "\n\\n", "\\\nn", "#", "two words", "\xFF\x01\t"})
        ExpectSame(text);
    ExpectSame(std::string("a\0b", 3));
    EXPECT_EQ(Read<std::string>("\\t\\\"\\\\n\n"), "t\"\\n"); // unknown escapes keep their character
    EXPECT_EQ(Read<std::string>("end\\\n"), "end");
    ExpectSame(std::string(100'000, '\n'));
}

TEST_F(StreamSerializerTest, TextBehindANumberIsSkippedUpTo511Characters)
{
    EXPECT_EQ(Read<int>("12 wells"), 12);
    EXPECT_EQ(Read<double>("1.5 wells\n"), 1.5);
    // The skipping ends within the line, and what is left of it is the next value.
    in_.clear();
    in_.str("1" + std::string(512, '-') + "7\n2\n");
    int value = 0;
    reader_.Scalar("t", 0, value);
    reader_.Scalar("t", 0, value);
    EXPECT_EQ(value, 7);
}

TEST_F(StreamSerializerTest, AFailureShowsInTheStreamAlone)
{
    EXPECT_EQ(Read<int>("", 5), 5);
    EXPECT_TRUE(in_.fail());
    EXPECT_EQ(Read<std::string>("", "kept"), "kept");
    EXPECT_EQ(Read<double>("", 2.5), 2.5);
    EXPECT_EQ(Read<int>("wells\n", 5), 0);
    EXPECT_TRUE(in_.fail());
    EXPECT_EQ(Read<short>("70000\n"), 32767);
    EXPECT_TRUE(in_.fail());
    EXPECT_EQ(Read<signed char>("200\n"), -56);
    EXPECT_EQ(Read<unsigned char>("256\n"), 0);
    EXPECT_EQ(Read<unsigned long long>("-1\n"), 18446744073709551615ULL);
    EXPECT_TRUE(in_.good());
    EXPECT_THROW(Read<double>("wells\n"), std::runtime_error);
    EXPECT_THROW(Read<float>("\n"), std::runtime_error);

    out_.setstate(std::ios::failbit);
    EXPECT_EQ(Write(1) + Write(1.5) + Write(std::string("s")) + Write(true), "");
}

TEST_F(StreamSerializerTest, TheLastLineMayLackItsLineFeed)
{
    std::vector<int> numbers;
    TextForm::Read("3\n1\n2\n3", numbers);
    EXPECT_EQ(numbers, (std::vector<int>{1, 2, 3}));
    std::vector<std::string> texts;
    TextForm::Read("2\na\nb", texts);
    EXPECT_EQ(texts, (std::vector<std::string>{"a", "b"}));
}

TEST_F(StreamSerializerTest, IntegersFollowTheStream)
{
    Write(true);
    EXPECT_NE(out_.flags() & std::ios::boolalpha, std::ios::fmtflags());
    Read<bool>("true\n");
    EXPECT_NE(in_.flags() & std::ios::boolalpha, std::ios::fmtflags());

    out_ << std::hex << std::showbase;
    in_ >> std::hex;
    EXPECT_EQ(Write(255) + Write(short{-1}) + Write(static_cast<signed char>(-1)) + Write(16.0),
              "0xff\n0xffff\n0xffffffff\n1.60000000000000000000e+01\n");
    EXPECT_EQ(Read<int>("ff\n"), 255);

    out_.flags(std::ios::dec | std::ios::showpos);
    in_.flags(std::ios::dec | std::ios::skipws);
    EXPECT_EQ(Write(5) + Write(5U), "+5\n5\n");
    out_.imbue(std::locale(out_.getloc(), new Grouping));
    in_.imbue(out_.getloc());
    EXPECT_EQ(Write(-1234567LL) + Write(1234.5), "-1.234.567\n1.23450000000000000000e+03\n");
    EXPECT_EQ(Read<long long>("-1.234.567\n"), -1234567);
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
