#pragma once

#include "calcore/Number.h"

#include <cstdint>
#include <limits>
#include <string_view>

namespace belvor {

/// Takes numbers off the front of a text exactly as formatted stream extraction does in the
/// C locale: blanks are skipped, the longest run that can be a number is taken, and once a
/// number has failed nothing more is read. `alsoBlank` is a further character that separates.
///
/// Reals are rounded correctly. Short ones are computed exactly (a mantissa below
/// 2^53 times or over a power of ten up to 10^22; W. Clinger, "How to read floating point
/// numbers accurately", 1990), the others std::from_chars.
template <char alsoBlank = ' '>
class Scanner {
public:
    explicit Scanner(std::string_view text) noexcept : at(text.data()), last(text.data() + text.size()) {}

    bool failed() const noexcept { return hasFailed; }
    void fail() noexcept { hasFailed = true; }
    const char* position() const noexcept { return at; }
    void moveTo(const char* position) noexcept { at = position; }
    const char* end() const noexcept { return last; }

    /// True when something other than blanks follows; false, and failed, at the end.
    bool skipBlanks() noexcept
    {
        if (hasFailed) return false;
        while (at != last && (isBlank(*at) || *at == alsoBlank)) ++at;
        if (at == last) hasFailed = true;
        return !hasFailed;
    }

    /// An integer. A failed one is 0; one beyond 64 bits fails as `beyond`.
    /// At the end of the text, and once failed, `value` keeps what it has.
    bool integer(std::int64_t& value, std::int64_t beyond = 0) noexcept
    {
        if (!skipBlanks()) return false;
        const char* p = at;
        const bool negative = *p == '-';
        if (negative || *p == '+') ++p;
        std::uint64_t magnitude = 0;
        const char* const digits = p;
        const char* const sureEnd = last - p > 18 ? p + 18 : last;   // so many digits fit, whatever they are
        for (; p != sureEnd && isDigit(*p); ++p)
            magnitude = magnitude * 10 + static_cast<std::uint64_t>(*p - '0');
        bool overflow = false;
        for (; p != last && isDigit(*p); ++p) {
            const std::uint64_t next = magnitude * 10 + static_cast<std::uint64_t>(*p - '0');
            overflow |= next > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())
                        || magnitude > next / 10;
            magnitude = next;
        }
        at = p;
        if (p == digits || overflow) {
            value = p == digits ? 0 : beyond;
            hasFailed = true;
            return false;
        }
        value = negative ? -static_cast<std::int64_t>(magnitude) : static_cast<std::int64_t>(magnitude);
        return true;
    }

    /// A real. A failed one is 0; one too large for a double fails as the largest double.
    /// At the end of the text, and once failed, `value` keeps what it has.
    bool real(double& value) noexcept
    {
        if (!skipBlanks()) return false;
        const char* const start = at;
        const char* p = at;
        const bool negative = *p == '-';
        if (negative || *p == '+') ++p;
        std::uint64_t mantissa = 0;
        const char* const digits = p;
        while (p != last && isDigit(*p)) mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p++ - '0');
        auto digitCount = p - digits;
        std::int64_t exponent = 0;
        if (p != last && *p == '.') {
            const char* const fraction = ++p;
            while (p != last && isDigit(*p))
                mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p++ - '0');
            exponent = fraction - p;
            digitCount += p - fraction;
        }
        bool good = digitCount > 0;
        if (good && p != last && (*p == 'e' || *p == 'E')) {
            ++p;
            const bool below = p != last && *p == '-';
            if (p != last && (*p == '-' || *p == '+')) ++p;
            const char* const power = p;
            std::int64_t written = 0;
            for (; p != last && isDigit(*p); ++p)
                if (written < 100000000) written = written * 10 + (*p - '0');
            good = p != power;   // "1e" is taken whole and is no number
            exponent += below ? -written : written;
        }
        at = p;
        if (!good) {
            value = 0.0;
            hasFailed = true;
            return false;
        }
        if (digitCount <= 19 && mantissa <= (std::uint64_t{1} << 53) && exponent >= -22 && exponent <= 22) {
            const double whole = static_cast<double>(mantissa);
            const double size = exponent < 0 ? whole / powerOfTen(-exponent) : whole * powerOfTen(exponent);
            value = negative ? -size : size;
            return true;
        }
        return exactReal(start, p, value);
    }

private:
    static double powerOfTen(std::int64_t exponent) noexcept
    {
        static constexpr double powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                            1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                            1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
        return powers[exponent];
    }

    bool exactReal(const char* start, const char* end, double& value) noexcept
    {
        const bool negative = *start == '-';
        if (isDouble({start, static_cast<std::size_t>(end - start)}, value)) return true;
        value = negative ? -std::numeric_limits<double>::max() : std::numeric_limits<double>::max();
        hasFailed = true;
        return false;
    }

    const char* at;
    const char* last;
    bool hasFailed = false;
};

}   // namespace belvor
