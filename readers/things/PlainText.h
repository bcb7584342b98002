#pragma once

#include "calcore/Number.h"
#include "calcore/Point.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>

namespace belvor {

/// Takes vertices and facets off a text as programs write them: numbers apart by one blank; for a facet a
/// line with 1 and the material's name, and one with the vertices of its loop. Such text, which nearly all
/// is, needs no look for its end and for other blanks at every character. What is written otherwise is not
/// taken: a Scanner reads that, and gives the same for all that is taken here.
class PlainText {
public:
    /// From `position` on.
    PlainText(const char* position, const char* textEnd) noexcept : at(position), end(textEnd) {}

    /// Behind what has been taken.
    const char* position() const noexcept { return at; }

    /// Three reals.
    bool takeVertex(Point<3>& vertex) noexcept
    {
        if (end - at < 3 * longestReal) return false;
        const char* p = at;
        for (int axis = 0; axis < 3; ++axis)
            if (!takeReal(p, vertex[axis])) return false;
        at = p;
        return true;
    }

    struct Facet {
        static constexpr unsigned mostCorners = 8;
        unsigned count = 0;   ///< Of its corners.
        std::uint32_t corners[mostCorners];
    };
    /// A facet of one loop. `material` is what follows the 1 and a blank, with the line's end; corners count
    /// from 0 and are below `vertices`.
    bool takeFacet(std::string_view material, std::uint32_t vertices, Facet& facet) noexcept
    {
        constexpr std::ptrdiff_t longest = 3 + longestMaterial + 2 + Facet::mostCorners * (1 + digitsAtOnce);
        if (end - at < longest + digitsAtOnce) return false;
        const char* p = at;
        if (*p == '\n') ++p;
        if (p[0] != '1' || p[1] != ' ' || !startsWith(p + 2, material)) return false;
        p += 2 + material.size();
        facet.count = static_cast<unsigned>(*p++ - '0');
        if (facet.count - 1 >= Facet::mostCorners) return false;
        for (unsigned i = 0; i < facet.count; ++i) {
            if (*p++ != ' ') return false;
            std::uint64_t number;
            const unsigned digits = leadingDigits(p, number);
            p += digits;
            if (digits == 0 || isDigit(*p) || number - 1 >= vertices) return false;
            facet.corners[i] = static_cast<std::uint32_t>(number - 1);
        }
        at = p;
        return true;
    }
    static constexpr std::ptrdiff_t longestMaterial = 32;   ///< With the line's end.

private:
    static constexpr std::ptrdiff_t digitsAtOnce = 8, longestReal = 2 + 2 * digitsAtOnce + 1 + digitsAtOnce;

    /// How many of the first eight characters at `p` are digits before any other, and their number.
    static unsigned leadingDigits(const char* p, std::uint64_t& number) noexcept
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

    /// Up to eight digits, perhaps a point and up to seven more.
    static bool takeReal(const char*& from, double& value) noexcept
    {
        const char* p = from;
        if (*p == ' ' || *p == '\n') ++p;
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
            static constexpr std::uint64_t powers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000};
            if (decimals >= std::size(powers)) return false;
            if (decimals != 0) mantissa = mantissa * powers[decimals] + fraction;
        }
        static constexpr double scales[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7};
        if (isDigit(*p) || *p == 'e' || *p == 'E') return false;
        const double size = static_cast<double>(mantissa) / scales[decimals];   // both exact
        value = negative ? -size : size;
        from = p;
        return true;
    }

    static bool startsWith(const char* p, std::string_view text) noexcept
    {
        return std::memcmp(p, text.data(), text.size()) == 0;
    }

    const char* at;
    const char* const end;
};

}   // namespace belvor
