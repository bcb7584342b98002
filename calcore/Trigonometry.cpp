#include "calcore/Trigonometry.h"

#include "calcore/DoubleDouble.h"
#include "calcore/TrigonometryTables.h"
#include "calcore/WideTrigonometry.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

// Each function works in two steps (A. Ziv, Fast evaluation of elementary mathematical functions
// with correctly rounded last bit, 1991): a sum of two doubles with a proven error bound, which
// decides the rounding for all but about one argument in a thousand, and for those the 320 bits
// of WideTrigonometry.

namespace belvor {
namespace {

/// The bound for the relative error of the first step. The largest part of it comes from the
/// series' terms behind the first, which are evaluated in plain doubles with an error below six
/// halves of their last place: they are at most 2^-12/3 of the result where there is no entry
/// of a table to add, and 2^-19.6 against results of at least 2^-6 where there is one, so that
/// less than 2^-65 of the result is wrong by them; all else together is below 2^-70.
constexpr double errorBound = 0x1p-64;

/// Whether every number within the error bound around `value` rounds to the same double.
bool roundingIsCertain(const DoubleDouble& value) noexcept
{
    const double error = std::abs(value.high) * errorBound;
    return value.high + (value.low - error) == value.high + (value.low + error);
}

/// `radians` less the nearest multiple of π/2, wrong by at most 2^-103 of it and 2^-131. π/2 stands in four
/// parts, the first three so short that the multiples of them are exact up to a million radians (W. Cody and
/// W. Waite, Software Manual for the Elementary Functions, 1980).
WideRemainder remainder(double radians) noexcept
{
    constexpr double longest = 1e6;
    if (std::abs(radians) > longest) return wideRemainder(radians);
    constexpr double first = 0x1.921fb544p+0, second = 0x1.0b4611a6p-34, third = 0x1.3198a2ep-69,
                     fourth = 0x1.b839a252049c1p-104;
    const double turns = std::floor(radians * (2.0 / std::numbers::pi) + 0.5);
    const DoubleDouble coarse = exactSum(radians - turns * first, -(turns * second));
    const DoubleDouble fine = exactSum(coarse.high, -(turns * third));
    return {exactSum(fine.high, (fine.low + coarse.low) - turns * fourth),
            static_cast<int>(turns - 4.0 * std::floor(turns * 0.25))};
}

/// own + own × (cos t − 1) + other × sin t: the sine of an angle whose sine is `own` and cosine
/// `other`, increased by t; with `other` negated, the cosine for swapped ones. |t| ≤ 1/64.
DoubleDouble increased(const DoubleDouble& own, const DoubleDouble& other, const DoubleDouble& t) noexcept
{
    const double x = t.high;
    const DoubleDouble square = exactProduct(x, x);
    const double z = square.high, squareLow = square.low + 2.0 * x * t.low;
    // sin t and cos t − 1
    const double cubic =
        x * z * (-1.0 / 6.0 + z * (1.0 / 120.0 + z * (-1.0 / 5040.0 + z * (1.0 / 362880.0))));
    const DoubleDouble sine = exactSum(x, t.low + (cubic - 0.5 * z * t.low));
    const double quartic = z * z * (1.0 / 24.0 + z * (-1.0 / 720.0 + z * (1.0 / 40320.0)));
    const DoubleDouble cosineLessOne = exactSum(-0.5 * z, quartic - 0.5 * squareLow);

    const DoubleDouble a = exactProduct(own.high, cosineLessOne.high);
    const DoubleDouble b = exactProduct(other.high, sine.high);
    const DoubleDouble added = exactSum(b.high, a.high), sum = exactSum(own.high, added.high);
    const double aLow = a.low + (own.high * cosineLessOne.low + own.low * cosineLessOne.high);
    const double bLow = b.low + (other.high * sine.low + other.low * sine.high);
    return exactSum(sum.high, sum.low + (added.low + (own.low + (aLow + bLow))));
}

/// The sine of `radians` plus `quarters` right angles; `radians` finite and not below 2^-27.
double sineAfter(double radians, int quarters) noexcept
{
    constexpr double leastRest = 0x1p-60;
    const WideRemainder angle = remainder(radians);
    if (std::abs(angle.rest.high) < leastRest) return wideSine(radians, quarters);
    const bool mirrored = angle.rest.high < 0.0;
    const DoubleDouble rest = mirrored ? DoubleDouble{-angle.rest.high, -angle.rest.low} : angle.rest;
    const int nearest = static_cast<int>(32.0 * rest.high + 0.5);
    const DoubleDouble t = exactSum(rest.high - nearest / 32.0, rest.low);
    const auto& [sine, cosine] = sinesAndCosines[nearest];
    const int quadrant = (angle.quadrant + quarters) & 3;
    const bool isCosine = quadrant % 2 != 0;
    const DoubleDouble value =
        isCosine ? increased(cosine, {-sine.high, -sine.low}, t) : increased(sine, cosine, t);
    if (!roundingIsCertain(value)) return wideSine(radians, quarters);
    const bool negative = (quadrant >= 2) != (mirrored && !isCosine);
    return negative ? -(value.high + value.low) : value.high + value.low;
}

/// arctan(part/whole) for 2^-56 ≤ part/whole ≤ 1 and whole in [0.5, 1): the table at the nearest
/// 1/32 and the series of what is left, at most 1/64.
DoubleDouble arctangentOfRatio(double part, double whole) noexcept
{
    const int nearest = static_cast<int>(32.0 * (part / whole) + 0.5);
    const double k = nearest / 32.0;
    // The rest of the ratio, (part − k whole) / (whole + k part).
    const DoubleDouble kWhole = exactProduct(k, whole), kPart = exactProduct(k, part);
    const DoubleDouble above = exactSum(part, -kWhole.high), below = exactSum(whole, kPart.high);
    const double aboveLow = above.low - kWhole.low, belowLow = below.low + kPart.low;
    const double rest = above.high / below.high;
    const DoubleDouble product = exactProduct(rest, below.high);
    const double restLow =
        (((above.high - product.high) - product.low) + (aboveLow - rest * belowLow)) / below.high;

    const double z = rest * rest;
    const double tail =
        rest * z * (-1.0 / 3.0 + z * (1.0 / 5.0 + z * (-1.0 / 7.0 + z * (1.0 / 9.0 + z * (-1.0 / 11.0)))));
    const DoubleDouble& start = arctangents[nearest];
    const DoubleDouble sum = exactSum(start.high, rest);
    return exactSum(sum.high, sum.low + (start.low + (tail + restLow * (1.0 - z))));
}

/// arctan(part/whole) where that is so small that only the direction of its distance from
/// part/whole matters, which is down. A quotient in full precision keeps 2^-107 of itself away
/// from every number between two doubles, so there it rounds as the angle does; with fewer
/// digits it may lie between two of them, and then the angle rounds down.
double smallArctangent(double part, double whole) noexcept
{
    constexpr double leastUnit = std::numeric_limits<double>::denorm_min();
    const double quotient = part / whole;
    if (!(quotient < std::numeric_limits<double>::min()) || quotient == 0.0) return quotient;
    int exponent;
    const double scaled = std::frexp(whole, &exponent);
    const double halves = 2.0 * std::ldexp(quotient, 1074) - 1.0;   // of the least unit, below the quotient
    const DoubleDouble product = exactProduct(halves, scaled);
    const bool between = product.low == 0.0 && product.high == std::ldexp(part, 1075 - exponent);
    return between ? quotient - leastUnit : quotient;
}

constexpr DoubleDouble halfPi{0x1.921fb54442d18p+0, 0x1.1a62633145c07p-54};
constexpr DoubleDouble pi{0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53};

/// The angle of the direction (across, up) or, when `left`, of (−across, up); both at least 0.
double angleOf(double up, double across, bool left) noexcept
{
    const bool steep = up > across;
    double part = std::min(up, across), whole = std::max(up, across);
    if (whole == 0.0) return left ? pi.high : 0.0;
    int exponent;
    std::frexp(whole, &exponent);
    const bool tiny = part / whole < 0x1p-56;
    if (tiny && !steep && !left) return smallArctangent(part, whole);
    part = std::ldexp(part, -exponent);
    whole = std::ldexp(whole, -exponent);
    const DoubleDouble acute = tiny ? DoubleDouble{part / whole, 0.0} : arctangentOfRatio(part, whole);
    DoubleDouble angle = steep ? difference(halfPi, acute) : acute;
    if (left) angle = difference(pi, angle);
    if (roundingIsCertain(angle)) return angle.high + angle.low;
    return wideArctangent(part, whole, acute.high, steep, left);
}

}   // namespace

double sine(double radians) noexcept
{
    if (std::abs(radians) < 0x1p-26) return radians;   // by less than half of the last place above the sine
    if (!std::isfinite(radians)) return std::numeric_limits<double>::quiet_NaN();
    return sineAfter(radians, 0);
}

double cosine(double radians) noexcept
{
    if (std::abs(radians) < 0x1p-27) return 1.0;
    if (!std::isfinite(radians)) return std::numeric_limits<double>::quiet_NaN();
    return sineAfter(radians, 1);
}

double arctangent(double value) noexcept { return arctangent(value, 1.0); }

double arctangent(double y, double x) noexcept
{
    if (std::isnan(x) || std::isnan(y)) return std::numeric_limits<double>::quiet_NaN();
    double up = std::abs(y), across = std::abs(x);
    if (std::isinf(up) || std::isinf(across)) {
        up = std::isinf(up) ? 1.0 : 0.0;
        across = std::isinf(across) ? 1.0 : 0.0;
    }
    return std::copysign(angleOf(up, across, std::signbit(x)), y);
}

}   // namespace belvor
