#include "orv/foundation/Math.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace Zan::Orv::Core::Service {

namespace {

// The type whose range a type has in this library: the same one, but for these two on some hosts.
template<class T>
struct RangeOf
{
    using type = T;
};
template<>
struct RangeOf<char>
{
    using type = signed char;
};
template<>
struct RangeOf<long int>
{
    using type = std::int32_t;
};

template<class T>
bool AlmostEqual(T a, T b, T tol)
{
    return std::abs(a) > tol ? Math::IsAlmostEqualRelative(a, b, tol)
                             : Math::IsAlmostEqualAbsolute(a, b, tol);
}

template<class T>
bool EqualWithin(T a, T b, T relTol, T absTol)
{
    static T const logMax = std::log(std::numeric_limits<T>::max());
    constexpr T smallestNormal = std::numeric_limits<T>::min();

    if (std::isnan(absTol)) // any other NaN falls through every comparison by itself
        return false;
    relTol = std::abs(relTol);
    absTol = std::abs(absTol);
    T const sizeA = std::abs(a);
    T const sizeB = std::abs(b);
    T const larger = std::max(sizeA, sizeB);
    T const smaller = std::min(sizeA, sizeB);

    if (sizeA > smallestNormal && sizeB > smallestNormal && std::abs(sizeA - sizeB) > larger * relTol)
        return false;

    T x = sizeA;
    T y = sizeB;
    if (smaller > smallestNormal)
    {
        // Keeps the divisions from overflowing.
        if (std::abs(std::log(sizeA) - std::log(sizeB)) > logMax)
            return false;
        x = a / smaller;
        y = b / smaller;
    }
    else if (larger > absTol)
        return false;
    return std::abs(x - y) <= relTol;
}

} // namespace

template<class T>
T Math::Limits<T>::Min()
{
    return static_cast<T>(std::numeric_limits<typename RangeOf<T>::type>::lowest());
}

template<class T>
T Math::Limits<T>::Max()
{
    return static_cast<T>(std::numeric_limits<typename RangeOf<T>::type>::max());
}

template struct Math::Limits<char>;
template struct Math::Limits<unsigned char>;
template struct Math::Limits<int>;
template struct Math::Limits<unsigned int>;
template struct Math::Limits<long int>;
template struct Math::Limits<float>;
template struct Math::Limits<double>;
template struct Math::Limits<bool>;

bool Math::IsAlmostZero(double x, double tol)
{
    return std::abs(x) < tol;
}

bool Math::IsAlmostZero(float x, float tol)
{
    return std::abs(x) < tol;
}

bool Math::IsAlmostEqualAbsolute(double a, double b, double tol)
{
    return std::abs(a - b) < tol;
}

bool Math::IsAlmostEqualAbsolute(float a, float b, float tol)
{
    return std::abs(a - b) < tol;
}

bool Math::IsAlmostEqualRelative(double a, double b, double tol)
{
    return std::abs((a - b) / a) < tol;
}

bool Math::IsAlmostEqualRelative(float a, float b, float tol)
{
    return std::abs((a - b) / a) < tol;
}

bool Math::IsAlmostEqual(double a, double b, double tol)
{
    return AlmostEqual(a, b, tol);
}

bool Math::IsAlmostEqual(float a, float b, float tol)
{
    return AlmostEqual(a, b, tol);
}

bool Math::EqD(double a, double b, double relTol, double absTol)
{
    return EqualWithin(a, b, relTol, absTol);
}

bool Math::EqF(float a, float b, float relTol, float absTol)
{
    return EqualWithin(a, b, relTol, absTol);
}

unsigned int Math::NumOfDigits(long int n)
{
    // By division: the logarithm of a number just below a power of ten rounds up.
    unsigned int count = n < 0 ? 2 : 1;
    for (n /= 10; n != 0; n /= 10)
        ++count;
    return count;
}

} // namespace Zan::Orv::Core::Service
