#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace belvor {

class LineTrace;
class Outlines;

/// Which lines a render draws over the surfaces, and how. None unless set.
struct LineStyle {
    bool curves = false;                  ///< The curves of the model.
    const Outlines* outlines = nullptr;   ///< Of the model's facets; must outlive all use of the
                                          ///< picture's lines.
    bool everyEdge = false;               ///< Of the outlines also those between facets nearly in one plane.
    int width = 1;                        ///< Pixels: odd, 1 to 15.
    std::optional<std::array<std::uint8_t, 3>> colour;   ///< Red, green, blue of all lines.
    LineTrace* trace = nullptr;   ///< Takes the parts that show; must outlive the render.
    bool surfaces = true;         ///< Without, surfaces hide lines but are not drawn themselves.

    bool draws() const noexcept { return curves || outlines; }
    /// Whether a picture differs from one without lines.
    bool any() const noexcept { return draws() || !surfaces; }
};

}   // namespace belvor
