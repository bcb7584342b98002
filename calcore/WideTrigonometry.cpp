#include "calcore/WideTrigonometry.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace belvor {
namespace {

constexpr std::size_t fractionWords = 10, words = fractionWords + 1;

/// A number from 0 on below 2^32, cut off 320 bits behind the point: each operation below loses
/// at most one unit of the last bit.
struct Fixed {
    std::array<std::uint32_t, words> word{};   // the least first; the last one before the point
};

constexpr Fixed one{{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}};
constexpr Fixed halfPi{{0x1c6809bb, 0xa29410f3, 0x76273644, 0x04177d4c, 0x14cf98e8, 0x52049c11, 0x01b839a2,
                        0x898cc517, 0x42d18469, 0x921fb544, 0x00000001}};

Fixed operator+(Fixed a, const Fixed& b) noexcept
{
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i < words; ++i) {
        carry += std::uint64_t{a.word[i]} + b.word[i];
        a.word[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    return a;
}

bool operator<(const Fixed& a, const Fixed& b) noexcept
{
    return std::lexicographical_compare(a.word.rbegin(), a.word.rend(), b.word.rbegin(), b.word.rend());
}

/// b at most a.
Fixed operator-(Fixed a, const Fixed& b) noexcept
{
    std::uint64_t borrow = 0;
    for (std::size_t i = 0; i < words; ++i) {
        const std::uint64_t taken = std::uint64_t{a.word[i]} - b.word[i] - borrow;
        a.word[i] = static_cast<std::uint32_t>(taken);
        borrow = taken >> 63;
    }
    return a;
}

Fixed operator*(const Fixed& a, const Fixed& b) noexcept
{
    std::array<std::uint32_t, 2 * words> product{};
    for (std::size_t i = 0; i < words; ++i) {
        std::uint64_t carry = 0;
        for (std::size_t j = 0; j < words; ++j) {
            carry += std::uint64_t{a.word[i]} * b.word[j] + product[i + j];
            product[i + j] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        product[i + words] = static_cast<std::uint32_t>(carry);
    }
    Fixed result;
    std::copy_n(product.begin() + fractionWords, words, result.word.begin());
    return result;
}

Fixed operator/(Fixed a, std::uint32_t divisor) noexcept
{
    std::uint64_t rest = 0;
    for (std::size_t i = words; i-- > 0;) {
        rest = rest << 32 | a.word[i];
        a.word[i] = static_cast<std::uint32_t>(rest / divisor);
        rest %= divisor;
    }
    return a;
}

/// a/b for a below b, bit by bit.
Fixed operator/(Fixed a, const Fixed& b) noexcept
{
    Fixed quotient;
    for (std::size_t bit = 32 * fractionWords; bit-- > 0;) {
        a = a + a;
        if (a < b) continue;
        a = a - b;
        quotient.word[bit / 32] |= std::uint32_t{1} << bit % 32;
    }
    return quotient;
}

/// `value` not negative.
Fixed fixed(double value) noexcept
{
    Fixed result;
    for (std::size_t i = words; i-- > 0 && value != 0.0;) {
        const double whole = std::floor(value);
        result.word[i] = static_cast<std::uint32_t>(whole);
        value = (value - whole) * 0x1p32;
    }
    return result;
}

/// The double nearest to a number of at least 2^-260, which is none between two doubles.
double rounded(const Fixed& value) noexcept
{
    std::size_t top = words - 1;
    while (value.word[top] == 0) --top;
    const int shift = std::countl_zero(value.word[top]);
    const std::uint64_t first = std::uint64_t{value.word[top]} << 32 | value.word[top - 1];
    std::uint64_t bits = first << shift;   // the highest is set
    if (shift > 0) bits |= value.word[top - 2] >> (32 - shift);
    const std::uint64_t digits = (bits >> 11) + (bits >> 10 & 1);
    return std::ldexp(static_cast<double>(digits),
                      32 * (static_cast<int>(top) - static_cast<int>(fractionWords)) - 21 - shift);
}

/// 2/π, the first word behind the point first; enough for the largest double.
constexpr std::uint32_t twoOverPi[] = {
    0xa2f9836e, 0x4e441529, 0xfc2757d1, 0xf534ddc0, 0xdb629599, 0x3c439041, 0xfe5163ab, 0xdebbc561,
    0xb7246e3a, 0x424dd2e0, 0x06492eea, 0x09d1921c, 0xfe1deb1c, 0xb129a73e, 0xe88235f5, 0x2ebb4484,
    0xe99c7026, 0xb45f7e41, 0x3991d639, 0x835339f4, 0x9c845f8b, 0xbdf9283b, 0x1ff897ff, 0xde05980f,
    0xef2f118b, 0x5a0a6d1f, 0x6d367ecf, 0x27cb09b7, 0x4f463f66, 0x9e5fea2d, 0x7527bac7, 0xebe5f17b,
    0x3d0739f7, 0x8a5292ea, 0x6bfb5fb1, 0x1f8d5d08, 0x56033046, 0xfc7b6bab, 0xf0cfbc20, 0x9af4361d,
    0xa9e39161, 0x5ee61b08, 0x6599855f, 0x14a06840,
};

struct Reduced {
    Fixed rest;      // at most π/4
    bool negative;   // the sign of the rest
    int quadrant;    // 0 to 3
};

/// `radians`, positive, less the nearest multiple of π/2 (M. Payne and R. Hanek, Radian reduction
/// for trigonometric functions, 1983): of the product with 2/π only the part around the point.
Reduced reduce(double radians) noexcept
{
    constexpr std::size_t taken = 14;
    int exponent;
    const auto digits = static_cast<std::uint64_t>(std::ldexp(std::frexp(radians, &exponent), 53));
    exponent -= 53;
    // Words before `first` add multiples of four right angles.
    const std::size_t first = exponent < 2 ? 0 : static_cast<std::size_t>(exponent - 2) / 32;
    std::array<std::uint32_t, taken + 2> product{};
    for (std::size_t i = 0; i < 2; ++i) {
        std::uint64_t carry = 0;
        for (std::size_t j = 0; j < taken; ++j) {
            carry += (digits >> 32 * i & 0xffffffff) * twoOverPi[first + taken - 1 - j] + product[i + j];
            product[i + j] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        product[i + taken] = static_cast<std::uint32_t>(carry);
    }
    const int point = static_cast<int>(32 * (first + taken)) - exponent;   // its bit in the product
    const auto wordFrom = [&product](int bit) {
        const auto at = static_cast<std::size_t>(bit / 32);
        const auto part = [&product](std::size_t i) {
            return std::uint64_t{i < product.size() ? product[i] : 0};
        };
        return static_cast<std::uint32_t>((part(at + 1) << 32 | part(at)) >> bit % 32);
    };
    Fixed fraction;
    for (std::size_t i = 0; i < fractionWords; ++i)
        fraction.word[i] = wordFrom(point - 32 * static_cast<int>(fractionWords - i));
    const bool negative = fraction.word[fractionWords - 1] >> 31;
    if (negative) fraction = one - fraction;
    return {fraction * halfPi, negative, static_cast<int>((wordFrom(point) + negative) & 3)};
}

/// The series of the sine (`odd`) or cosine of an angle of at most 1; what is left out is below
/// the last bit.
Fixed series(const Fixed& angle, bool odd) noexcept
{
    const Fixed square = angle * angle;
    Fixed sum = one;
    for (std::uint32_t n = odd ? 69 : 68; n > 1; n -= 2) sum = one - square * sum / (n * (n - 1));
    return odd ? angle * sum : sum;
}

DoubleDouble doubleDouble(const Fixed& value) noexcept
{
    const double high = rounded(value);
    const Fixed near = fixed(high);
    const bool above = value < near;
    const Fixed rest = above ? near - value : value - near;
    if (!(Fixed() < rest)) return {high, 0.0};
    const double low = rounded(rest);
    return {high, above ? -low : low};
}

}   // namespace

WideRemainder wideRemainder(double radians) noexcept
{
    const Reduced angle = reduce(std::abs(radians));
    const bool mirrored = radians < 0.0;
    const DoubleDouble rest = doubleDouble(angle.rest);
    return {angle.negative != mirrored ? DoubleDouble{-rest.high, -rest.low} : rest,
            (mirrored ? -angle.quadrant : angle.quadrant) & 3};
}

double wideSine(double radians, int quarters) noexcept
{
    const Reduced angle = reduce(std::abs(radians));
    // cos(−x) = cos x; the other quarters are not asked for with a sign that matters.
    const bool mirrored = radians < 0.0;
    const int quadrant = ((mirrored ? -angle.quadrant : angle.quadrant) + quarters) & 3;
    const bool isCosine = quadrant % 2 != 0;
    const double value = rounded(series(angle.rest, !isCosine));
    const bool negative = (quadrant >= 2) != (!isCosine && angle.negative != mirrored);
    return negative ? -value : value;
}

double wideArctangent(double part, double whole, double nearby, bool steep, bool left) noexcept
{
    // The angle is `nearby` and that of the direction turned back by it, which is small.
    const Fixed start = fixed(nearby), sine = series(start, true), cosine = series(start, false);
    const Fixed x = fixed(whole), y = fixed(part);
    const Fixed up = y * cosine, down = x * sine;
    const bool below = up < down;
    const Fixed turn = (below ? down - up : up - down) / (x * cosine + y * sine);
    const Fixed square = turn * turn, cube = square * turn;
    const Fixed small = turn - cube / 3u + cube * square / 5u;
    Fixed angle = below ? start - small : start + small;
    if (steep) angle = halfPi - angle;
    if (left) angle = halfPi + halfPi - angle;
    return rounded(angle);
}

}   // namespace belvor
