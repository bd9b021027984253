#include "orv/foundation/Math.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>

namespace Zan::Orv::Core::Service::Tests {

namespace {

template<class T>
constexpr T least = std::numeric_limits<T>::min();
template<class T>
constexpr T inf = std::numeric_limits<T>::infinity();
template<class T>
constexpr T nan = std::numeric_limits<T>::quiet_NaN();

template<class T>
struct MathTest : ::testing::Test
{
};

using Widths = ::testing::Types<double, float>;
TYPED_TEST_SUITE(MathTest, Widths);

template<class T>
bool Equal(T a, T b, T relTol, T absTol)
{
    if constexpr (sizeof(T) == sizeof(double))
        return Math::EqD(a, b, relTol, absTol);
    else
        return Math::EqF(a, b, relTol, absTol);
}

} // namespace

TEST(MathLimitsTest, AreThoseOfTheStoredTypes)
{
    EXPECT_EQ(Math::Limits<char>::Min(), static_cast<char>(-128));
    EXPECT_EQ(Math::Limits<long int>::Min(), -2147483647 - 1);
    EXPECT_EQ(Math::Limits<long int>::Max(), 2147483647);
    EXPECT_EQ(Math::Limits<double>::Min(), -1.7976931348623157e+308);
}

TYPED_TEST(MathTest, TheAlmostFamilyIsStrict)
{
    using T = TypeParam;
    struct
    {
        T a, b, tol;
        bool absolute, relative, either;
    } const cases[] = {
        {100, 102, T(0.02), false, false, false},       // just as far as the tolerance
        {1, 2, T(0.75), false, false, false},           // the first value is the yardstick
        {T(-0.5), T(-0.75), T(0.5), true, false, true}, // absolute up to the tolerance itself
        {1, T(1e-9), 1, sizeof(T) == 8, sizeof(T) == 8, sizeof(T) == 8}, // floats are subtracted as floats
        {1, 1, nan<T>, false, false, false},
    };
    for (auto const& c : cases)
    {
        SCOPED_TRACE(::testing::Message() << c.a << ", " << c.b << " within " << c.tol);
        EXPECT_EQ(Math::IsAlmostEqualAbsolute(c.a, c.b, c.tol), c.absolute);
        EXPECT_EQ(Math::IsAlmostZero(c.a - c.b, c.tol), c.absolute);
        EXPECT_EQ(Math::IsAlmostEqualRelative(c.a, c.b, c.tol), c.relative);
        EXPECT_EQ(Math::IsAlmostEqual(c.a, c.b, c.tol), c.either);
    }
}

TYPED_TEST(MathTest, EqualWithinTwoTolerances)
{
    using T = TypeParam;
    struct
    {
        T a, b, relTol, absTol;
        bool equal;
    } const cases[] = {
        {1, T(1.0000001), T(-1e-6), T(1e-12), true},
        {1, T(1.5), T(0.5), 0, true}, // the tolerance itself is still equal
        {2, 1, T(0.6), 0, false},     // within it of the larger value, not of the smaller one
        {std::numeric_limits<T>::max(), least<T> * 4, inf<T>, 0, false}, // the quotient has no finite value
        {0, T(1e-13), T(1e-20), T(1e-12), false}, // the relative tolerance counts for small values, too
        {least<T>, -least<T>, 0, 1, true},        // small ones compare without their signs
        {inf<T>, inf<T>, 1, 1, false},
    };
    for (auto const& c : cases)
        EXPECT_EQ(Equal(c.a, c.b, c.relTol, c.absTol), c.equal)
            << c.a << ", " << c.b << " within " << c.relTol << " or " << c.absTol;
}

TEST(MathDigitsTest, CountTheCharactersOfAnInteger)
{
    for (long power = 1; power <= LONG_MAX / 10; power *= 10)
        for (long const n :
             {power * 10 - 1, power * 10, 1 - power * 10, power * -10, power - 1, LONG_MAX, LONG_MIN})
            EXPECT_EQ(Math::NumOfDigits(n), std::to_string(n).size()) << n;
}

} // namespace Zan::Orv::Core::Service::Tests
