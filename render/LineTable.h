#pragma once

#include "platform/LargeMemory.h"
#include "render/LineStyle.h"
#include "render/Shading.h"
#include "scene/Model.h"

#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

namespace belvor {

class Camera;

/// What makes a line visible where a facet lies in front of it at a sample point.
enum class LineRule : std::uint8_t {
    curve,     ///< Nothing.
    outline,   ///< A contour or a border: the other sample point beside it, if it is free there.
    crease     ///< Any other edge: the other sample point beside it, if a facet of its own has it.
};

/// A curve of the model, or one edge.
struct LineChain {
    std::uint32_t outline;   ///< Of the Outlines; LineTable::noOutline for a curve.
    std::uint16_t material;
};

/// A straight piece of a chain on the screen: pixels right, pixels down, depth.
struct LineSegment {
    enum class Kind : std::uint8_t {
        straight,
        middle,   ///< Only the pixel next to its middle: no piece of the chain has another.
        dot       ///< A point, `from`.
    };
    Point<3> from, to;
    std::uint32_t chain;
    std::uint32_t ownFacets[2];   ///< The first two of an edge; LineTable::noFacet where there is none.
    Kind kind;
    LineRule rule;
    bool hasMoreFacets;
    std::uint32_t index;   ///< Its own in the table.

    /// At least as many columns as rows.
    bool mostlyAcross() const noexcept { return std::abs(to[0] - from[0]) >= std::abs(to[1] - from[1]); }
};

/// The lines of a picture: chains in the order in which a later one wins over an earlier one, and their
/// segments by the first row where they may be drawn.
class LineTable {
public:
    static constexpr std::uint32_t noOutline = 0xFFFFFFFF, noFacet = 0xFFFFFFFF;

    /// Fills the table, whatever it held. `projected` are the model's vertices on the screen; the
    /// colours of the chains are appended to `shades`, which holds those of the facets. Throws
    /// std::bad_alloc.
    void collect(const Model& model, const Camera& camera, const Point<3>* projected, const LineStyle& style,
                 LargeVector<FacetShade>& shades);

    const LineChain& chain(std::uint32_t index) const noexcept { return chains[index]; }
    std::uint32_t chainCount() const noexcept { return static_cast<std::uint32_t>(chains.size()); }
    const LineSegment& segment(std::uint32_t index) const noexcept { return segments[index]; }
    std::uint32_t segmentCount() const noexcept { return static_cast<std::uint32_t>(segments.size()); }

private:
    class Collector;
    LargeVector<LineChain> chains;
    LargeVector<LineSegment> segments;
};

}   // namespace belvor
