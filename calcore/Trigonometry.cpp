#include "calcore/Trigonometry.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <numbers>

namespace belvor {
namespace {

/// A number as an unevaluated sum, `low` below the last place of `high`.
struct Sum {
    double high, low;
};

/// a + b with its rounding error (D. Knuth, The Art of Computer Programming, volume 2, 4.2.2).
Sum exactSum(double a, double b) noexcept
{
    const double sum = a + b, part = sum - a;
    return {sum, (a - (sum - part)) + (b - part)};
}

/// An angle less a multiple of π/2.
struct Reduced {
    Sum rest;       // in about [−π/4, π/4]
    int quadrant;   // 0 to 3
};

/// `radians` within a million. π/2 stands in three parts, the first two so short that the
/// multiples of them are exact (W. Cody and W. Waite, Software Manual for the Elementary
/// Functions, 1980).
Reduced reduce(double radians) noexcept
{
    constexpr double first = 0x1.921fb54400000p+0, second = 0x1.0b4611a600000p-34,
                     third = 0x1.3198a2e037073p-69;
    const double turns = std::floor(radians * (2.0 / std::numbers::pi) + 0.5);
    const Sum coarse = exactSum(radians - turns * first, -(turns * second));
    const Sum fine = exactSum(coarse.high, -(turns * third));
    return {{fine.high, fine.low + coarse.low}, static_cast<int>(turns - 4.0 * std::floor(turns * 0.25))};
}

/// The Taylor series on [−π/4, π/4]; the next term would be below a thousandth of the last place.
double seriesOfSine(const Sum& angle) noexcept
{
    const double x = angle.high, z = x * x;
    double tail = 0.0;
    for (const double factorial :
         {355687428096000.0, -1307674368000.0, 6227020800.0, -39916800.0, 362880.0, -5040.0, 120.0, -6.0})
        tail = tail * z + 1.0 / factorial;
    return x + (x * z * tail + angle.low * (1.0 - 0.5 * z));
}

double seriesOfCosine(const Sum& angle) noexcept
{
    const double x = angle.high, z = x * x, half = 0.5 * z, rounded = 1.0 - half;
    double tail = 0.0;
    for (const double factorial :
         {20922789888000.0, -87178291200.0, 479001600.0, -3628800.0, 40320.0, -720.0, 24.0})
        tail = tail * z + 1.0 / factorial;
    return rounded + (((1.0 - rounded) - half) + (z * z * tail - x * angle.low));
}

/// The sine of `radians` plus `quarters` right angles.
double sineAfter(double radians, int quarters) noexcept
{
    constexpr double longest = 1e6;
    if (std::abs(radians) > longest) radians = std::fmod(radians, 2.0 * std::numbers::pi);
    if (!(std::abs(radians) <= longest)) return std::numeric_limits<double>::quiet_NaN();
    const Reduced angle = reduce(radians);
    switch ((angle.quadrant + quarters) & 3) {
    case 0: return seriesOfSine(angle.rest);
    case 1: return seriesOfCosine(angle.rest);
    case 2: return -seriesOfSine(angle.rest);
    default: return -seriesOfCosine(angle.rest);
    }
}

/// arctan(k/8)
constexpr Sum arctangents[] = {
    {0.0, 0.0},
    {0x1.fd5ba9aac2f6ep-4, -0x1.cd37686760c17p-59},
    {0x1.f5b75f92c80ddp-3, 0x1.8ab6e3cf7afbdp-57},
    {0x1.6f61941e4def1p-2, -0x1.c63aae6f6e918p-56},
    {0x1.dac670561bb4fp-2, 0x1.a2b7f222f65e2p-56},
    {0x1.1e00babdefeb4p-1, -0x1.928df287a668fp-58},
    {0x1.4978fa3269ee1p-1, 0x1.2419a87f2a458p-56},
    {0x1.700a7c5784634p-1, -0x1.8c34d25aadef6p-56},
    {0x1.921fb54442d18p-1, 0x1.1a62633145c07p-55},
};
constexpr Sum halfPi{0x1.921fb54442d18p+0, 0x1.1a62633145c07p-54};
constexpr Sum pi{0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53};

/// arctan(part/whole) for 0 ≤ part ≤ whole, whole above 0 and both finite: the table at the
/// nearest eighth and the series of what is left, at most 1/16.
Sum arctangentOfRatio(double part, double whole) noexcept
{
    int exponent;
    whole = std::frexp(whole, &exponent);
    part = std::ldexp(part, -exponent);
    const int eighths = static_cast<int>(8.0 * (part / whole) + 0.5);
    const double nearest = eighths / 8.0;
    const double wholeHigh = static_cast<float>(whole);   // short: its product with the eighths is exact
    const double rest =
        ((part - nearest * wholeHigh) - nearest * (whole - wholeHigh)) / (whole + nearest * part);
    const double z = rest * rest;
    double tail = 0.0;
    for (const double term : {13.0, 11.0, 9.0, 7.0, 5.0, 3.0}) tail = 1.0 / term - z * tail;
    const Sum& start = arctangents[eighths];
    return exactSum(start.high, start.low + (rest - rest * z * tail));
}

Sum difference(const Sum& a, const Sum& b) noexcept
{
    const Sum high = exactSum(a.high, -b.high);
    return {high.high, high.low + (a.low - b.low)};
}

}   // namespace

double sine(double radians) noexcept { return radians == 0.0 ? radians : sineAfter(radians, 0); }

double cosine(double radians) noexcept { return sineAfter(radians, 1); }

double arctangent(double value) noexcept { return arctangent(value, 1.0); }

double arctangent(double y, double x) noexcept
{
    if (std::isnan(x) || std::isnan(y)) return std::numeric_limits<double>::quiet_NaN();
    double up = std::abs(y), across = std::abs(x);
    if (std::isinf(up) || std::isinf(across)) {
        up = std::isinf(up) ? 1.0 : 0.0;
        across = std::isinf(across) ? 1.0 : 0.0;
    }
    Sum angle{0.0, 0.0};
    if (up > 0.0 || across > 0.0) angle = arctangentOfRatio(std::min(up, across), std::max(up, across));
    if (up > across) angle = difference(halfPi, angle);
    if (std::signbit(x)) angle = difference(pi, angle);
    return std::copysign(angle.high + angle.low, y);
}

}   // namespace belvor
