#pragma once

#include "orv/Export.h"

namespace Zan::Orv::Core::Service {

/// Near equality of floating-point numbers, limits of the number types, and the width of an integer as text.
///
/// Every comparison of the `IsAlmost` family is strict: a difference equal to `tol` is not almost equal. A
/// NaN makes every answer false. All functions are safe on any thread.
class ORV_API Math
{
public:
    /// The range of a type. `Min` of a floating type is the most negative value and not the smallest positive
    /// one; `long int` has 32 bits here on every host, as in the documents that are stored.
    template<class T>
    struct Limits
    {
        static T Min(); ///< the lowest value
        static T Max(); ///< the highest value
    };

    /// |x| < tol
    static bool IsAlmostZero(double x, double tol);
    static bool IsAlmostZero(float x, float tol);

    /// |a - b| < tol
    static bool IsAlmostEqualAbsolute(double a, double b, double tol);
    static bool IsAlmostEqualAbsolute(float a, float b, float tol);

    /// |(a - b) / a| < tol: `a` alone is the yardstick. False for `a` = 0.
    static bool IsAlmostEqualRelative(double a, double b, double tol);
    static bool IsAlmostEqualRelative(float a, float b, float tol);

    /// The relative test where |a| > tol, else the absolute one.
    static bool IsAlmostEqual(double a, double b, double tol);
    static bool IsAlmostEqual(float a, float b, float tol);

    /// \{
    /// Equal within `relTol` of the smaller magnitude. Where one of the values is zero, subnormal or smaller
    /// than any normal number, both must lie within `absTol` of zero, and their magnitudes within `relTol` of
    /// each other. The signs of the tolerances do not matter.
    static bool EqD(double a, double b, double relTol, double absTol);
    static bool EqF(float a, float b, float relTol, float absTol);
    /// \}

    /// The number of characters that print `n`, its minus sign included.
    static unsigned int NumOfDigits(long int n);
};

extern template struct ORV_API Math::Limits<char>;
extern template struct ORV_API Math::Limits<unsigned char>;
extern template struct ORV_API Math::Limits<int>;
extern template struct ORV_API Math::Limits<unsigned int>;
extern template struct ORV_API Math::Limits<long int>;
extern template struct ORV_API Math::Limits<float>;
extern template struct ORV_API Math::Limits<double>;
extern template struct ORV_API Math::Limits<bool>;

} // namespace Zan::Orv::Core::Service
