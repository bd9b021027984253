#include "orv/foundation/Numerics.h"

#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace Zan::Orv::Core::Service::Tests {

namespace {

std::uint64_t Bits(double value)
{
    return std::bit_cast<std::uint64_t>(value);
}

// The C library's own reading of `text` is the measure. All NaNs count as one. That of Windows may round the last bit
// wrongly, and is then one unit off.
constexpr std::uint64_t scanfError =
#if defined(_WIN32)
    1;
#else
    0;
#endif

void ExpectAsScanf(std::string const& text)
{
    double expected = 0;
    if (std::sscanf(text.c_str(), "%le", &expected) != 1)
    {
        std::string const words = "Unrecognized number: '" + text + "'";
        EXPECT_TRUE(Throws<std::runtime_error>([&] { IEEEFromString(text); }, words)) << text;
        return;
    }
    SCOPED_TRACE(text);
    double const value = IEEEFromString(text);
    std::uint64_t const found = Bits(IsNaN(value) ? NullValue : value);
    std::uint64_t const scanned = Bits(IsNaN(expected) ? NullValue : expected);
    EXPECT_LE(found > scanned ? found - scanned : scanned - found, scanfError)
        << value << " and not " << expected;
}

} // namespace

TEST(NumericsTest, ClassifiesAndPrintsByTheBits)
{
    std::pair<std::uint64_t, std::string> const cases[] = {
        {0x7FF8000000000000, "NaN"},
        {0x7FF0000000000000, "+Inf"},
        {0xFFF0000000000000, "-Inf"},
        {0x7FEFFFFFFFFFFFFF, "1.79769313486231570815e+308"},
        {0x0000000000000001, "4.94065645841246544177e-324"},
        {0x8000000000000000, "-0.00000000000000000000e+00"},
        {0xBFB999999999999A, "-1.00000000000000005551e-01"}};
    for (auto const& [bits, text] : cases)
    {
        SCOPED_TRACE(::testing::Message() << std::hex << bits);
        auto const value = std::bit_cast<double>(bits);
        EXPECT_EQ(IsFinite(value), text.size() > 4);
        EXPECT_EQ(IsNaN(value), text == "NaN");
        EXPECT_EQ(IsNullValue(value), text == "NaN");
        EXPECT_TRUE(IsPosInfinity(value) == (text == "+Inf") && IsNegInfinity(value) == (text == "-Inf"));
        EXPECT_EQ(IEEEToString(value), text);
    }
    EXPECT_EQ(Bits(NullValue), cases[0].first);
}

TEST(NumericsTest, ReadsWhatScanfReads)
{
    // One text a line: numbers; none; hexadecimal ones; words; around the ends of the range, and beyond.
    std::istringstream texts(
        " \t\v\f\r1.5\n1.5abc\n1.5 2.5\n+1.5\n007\n1,5\n00x1\n5.\n-.5e-1\n1E+05\n1e5.5\n"
        "1e0x5\n1e+0000000000000000000005\n-0\n1.00000000000000000000e+00051\n1.00000000000000000000e+05x\n"
        "9.99999999999999999999e+22\n9007199254740993\n9007199254740993.0000000000000000000001\n"
        "\n \nabc\n.\n-.\n+\n+-1\n- 1\n.e5\n+I\n-In\nna\n\xA0\nN\nNil\n"
        "0x10\n0XaB\n-0x1.8p3\n+0x1P-3\n0x.8p1\n0x1.p3\n0x1p+-5\n0x1.00000000000008p0\n"
        "0x1.000000000000080000000000001p0\n0x10000000000000000000000p-90\n"
        "inf\n+inf\n-INFINITY\nInfx\nnan\n-nan\nnanx\n"
        "1.7976931348623158e308\n1.7976931348623159e308\n-1e309\n2.2250738585072011e-308\n"
        "2.4703282292062328e-324\n2.4703282292062327e-324\n-1e-400\n0.00001e309\n0e999999999999\n"
        "1e99999999999999999999\n-1e-99999999999999999999\n0x1p-1074\n0x1p-1075\n"
        "0x1.fffffffffffff8p1023\n"
        "0x0p99999999999999999999\n-0x1p99999999999999999999\n");
    for (std::string text; std::getline(texts, text);)
        ExpectAsScanf(text);
}

TEST(NumericsTest, ReadsItsOwnWordsByItsOwnRules)
{
    EXPECT_TRUE(IsNaN(IEEEFromString("  NaNcy")));
    EXPECT_TRUE(
        Throws<std::runtime_error>([] { IEEEFromString(" \tNAN"); }, "Unrecognized number: ' \tNAN'"));
    EXPECT_EQ(IEEEFromString("1.5e+x"), 1.5);
    // Infinities are refused with the plainest of all exceptions.
    for (char const* text : {"+Infinity", "  -Inf"})
        EXPECT_TRUE(Throws<std::exception>([&] { IEEEFromString(text); }, std::exception().what())) << text;
}

// A reader that takes quadratic time would be at it for an hour.
TEST(NumericsTest, ReadsAMillionDigits)
{
    std::string const zeros(1000000, '0');
    std::string const nines(1000000, '9');
    std::pair<std::string, double> const cases[] = {{"0." + zeros + "1e1000001", 1.0},
                                                    {"1e-" + nines, 0.0},
                                                    {"0x1" + zeros + "p-4000000", 1.0},
                                                    {std::string(1000000, ' ') + "7", 7.0}};
    for (auto const& [text, value] : cases)
        EXPECT_EQ(IEEEFromString(text), value) << text.substr(0, 8) << "..." << text.substr(text.size() - 8);
}

} // namespace Zan::Orv::Core::Service::Tests
