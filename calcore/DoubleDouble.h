#pragma once

namespace belvor {

/// A number as an unevaluated sum, `low` below the last place of `high`. The functions below
/// use additions and multiplications only, each rounded once, so that every build gives the
/// same bits; they need a compiler that does not contract them.
struct DoubleDouble {
    double high, low;
};

/// a + b without an error (D. Knuth, The Art of Computer Programming, volume 2, 4.2.2).
constexpr DoubleDouble exactSum(double a, double b) noexcept
{
    const double sum = a + b, part = sum - a;
    return {sum, (a - (sum - part)) + (b - part)};
}

/// a × b without an error (T. Dekker, A floating-point technique for extending the available
/// precision, 1971). The factors below 2^995, the product 0 or above 2^-960.
constexpr DoubleDouble exactProduct(double a, double b) noexcept
{
    constexpr double splitter = 134217729.0;   // 2^27 + 1
    const double aScaled = a * splitter, bScaled = b * splitter;
    const double aHigh = aScaled - (aScaled - a), bHigh = bScaled - (bScaled - b);
    const double aLow = a - aHigh, bLow = b - bHigh, product = a * b;
    return {product, ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow};
}

/// a − b, with an error of some 2^-105 of the larger of them.
constexpr DoubleDouble difference(const DoubleDouble& a, const DoubleDouble& b) noexcept
{
    const DoubleDouble high = exactSum(a.high, -b.high);
    return exactSum(high.high, high.low + (a.low - b.low));
}

}   // namespace belvor
