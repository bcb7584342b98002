#pragma once

#include "calcore/Number.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace belvor {

/// Takes numbers off a text as programs write them, several digits at once. What is written otherwise is not
/// taken: a Scanner reads that, and gives the same for all that is taken here.
namespace plain {

inline constexpr std::ptrdiff_t digitsAtOnce = 8;
/// So many characters must be there for takeReal(), whatever they are.
inline constexpr std::ptrdiff_t longestReal = 2 + 3 * digitsAtOnce + digitsAtOnce;

/// How many of the first eight characters at `p` are digits before any other, and their number.
inline unsigned leadingDigits(const char* p, std::uint64_t& number) noexcept
{
    if constexpr (std::endian::native == std::endian::little) {
        std::uint64_t word;
        std::memcpy(&word, p, sizeof word);
        word ^= 0x3030303030303030u;   // the value of each digit, in a byte of its own
        const std::uint64_t others = ((word + 0x7676767676767676u) | word) & 0x8080808080808080u;
        const auto count = static_cast<unsigned>(std::countr_zero(others)) / 8;
        if (count == 0) return 0;
        word <<= 64 - 8 * count;
        word = word * 10 + (word >> 8);   // pairs of digits
        number = ((word & 0xFF000000FFu) * (100 + (1000000ull << 32))
                  + ((word >> 16) & 0xFF000000FFu) * (1 + (10000ull << 32)))
                 >> 32;
        return count;
    } else {
        number = 0;
        unsigned count = 0;
        for (; count < digitsAtOnce && isDigit(p[count]); ++count)
            number = number * 10 + static_cast<std::uint64_t>(p[count] - '0');
        return count;
    }
}

/// Perhaps a minus, up to eight digits, perhaps a point and up to sixteen more, if a double holds them all.
/// What follows is no digit and no exponent.
inline bool takeReal(const char*& from, double& value) noexcept
{
    static constexpr std::uint64_t powers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
    static constexpr double scales[] = {1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7, 1e8,
                                        1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16};
    const char* p = from;
    const bool negative = *p == '-';
    p += negative;
    std::uint64_t mantissa;
    const unsigned digits = leadingDigits(p, mantissa);
    if (digits == 0) return false;
    p += digits;
    unsigned decimals = 0;
    if (*p == '.') {
        std::uint64_t fraction = 0;
        decimals = leadingDigits(++p, fraction);
        p += decimals;
        if (decimals != 0) mantissa = mantissa * powers[decimals] + fraction;
        if (decimals == digitsAtOnce) {                                 // else the number is below 10^15
            constexpr std::uint64_t largest = std::uint64_t{1} << 53;   // all up to it are doubles
            if (const unsigned more = leadingDigits(p, fraction)) {
                if (mantissa > largest / powers[more]) return false;
                mantissa = mantissa * powers[more] + fraction;
                p += more;
                decimals += more;
            }
            if (mantissa > largest) return false;
        }
    }
    if (isDigit(*p) || *p == 'e' || *p == 'E') return false;
    const double size = static_cast<double>(mantissa) / scales[decimals];   // both exact
    value = negative ? -size : size;
    from = p;
    return true;
}

}   // namespace plain
}   // namespace belvor
