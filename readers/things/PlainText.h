#pragma once

#include "calcore/PlainNumber.h"
#include "calcore/Point.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace belvor {

/// The name of a material in a Things file.
struct ThingsMaterial {
    std::string_view name;
    std::string_view
        line;   ///< As it stands in the text, with its end; empty when it is a long one, or none.
};

constexpr bool separatesThings(char c) noexcept { return isBlank(c) || c == '@'; }

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
        constexpr std::ptrdiff_t longest =
            3 + longestMaterial + 2 + Facet::mostCorners * (1 + plain::digitsAtOnce);
        if (end - at < longest + plain::digitsAtOnce) return false;
        const char* p = at;
        if (*p == '\n') ++p;
        if (p[0] != '1' || p[1] != ' ' || !startsWith(p + 2, material)) return false;
        p += 2 + material.size();
        facet.count = static_cast<unsigned>(*p++ - '0');
        if (facet.count - 1 >= Facet::mostCorners) return false;
        for (unsigned i = 0; i < facet.count; ++i) {
            if (*p++ != ' ') return false;
            std::uint64_t number;
            const unsigned digits = plain::leadingDigits(p, number);
            p += digits;
            if (digits == 0 || isDigit(*p) || number - 1 >= vertices) return false;
            facet.corners[i] = static_cast<std::uint32_t>(number - 1);
        }
        at = p;
        return true;
    }
    static constexpr std::ptrdiff_t longestMaterial = 32;   ///< With the line's end.

    /// The material of a facet of one loop that starts here, if it is plain and has a name. Takes nothing.
    bool findMaterial(ThingsMaterial& material) const noexcept
    {
        if (end - at < 3 + longestMaterial) return false;
        const char* const start = at + (*at == '\n');
        const char* const name = start + 2;
        if (start[0] != '1' || start[1] != ' ' || isDigit(*name) || separatesThings(*name)) return false;
        const char* const lineEnd = std::find(name, name + longestMaterial - 1, '\n');
        if (lineEnd == name + longestMaterial - 1) return false;
        const char* last = lineEnd;
        while (separatesThings(last[-1])) --last;   // stops at the first character at the latest
        material = {{name, last}, {name, lineEnd + 1}};
        return true;
    }

private:
    static constexpr std::ptrdiff_t longestReal = 1 + plain::longestReal;

    static bool takeReal(const char*& from, double& value) noexcept
    {
        const char* p = from;
        if (*p == ' ' || *p == '\n') ++p;
        if (!plain::takeReal(p, value)) return false;
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
