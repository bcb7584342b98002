#pragma once

#include "platform/LargeMemory.h"
#include "render/BandLists.h"
#include "render/Bands.h"
#include "render/LineStyle.h"
#include "render/Shading.h"
#include "render/Sharing.h"
#include "scene/Model.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace belvor {

class Camera;
class Outlines;

/// What makes a line visible where a facet lies in front of it at a sample point.
enum class LineRule : std::uint8_t {
    curve,     ///< Nothing.
    outline,   ///< A contour or a border: the other sample point beside it, if it is free there.
    crease     ///< Any other edge: the other sample point beside it, if a facet of its own has it.
};

/// A straight piece of a curve, or an edge, on the screen: pixels right, pixels down, depth.
struct LineSegment {
    enum class Kind : std::uint8_t {
        nothing,   ///< A piece that the camera cannot project, or none.
        straight,
        middle,   ///< Only the pixel next to its middle: no piece of the curve has another.
        dot       ///< A point, `from`.
    };
    Point<3> from, to;
    std::uint32_t place;          ///< See LineTable.
    std::uint32_t ownFacets[2];   ///< The first two of an edge; LineTable::noFacet where there is none.
    Kind kind = Kind::nothing;
    LineRule rule;
    bool hasMoreFacets;

    /// At least as many columns as rows.
    bool mostlyAcross() const noexcept { return std::abs(to[0] - from[0]) >= std::abs(to[1] - from[1]); }
};

/// A pixel that a line has by itself, before its width adds others: the one next to its point. Short, since
/// what takes time is to write and read millions of them.
struct LinePixel {
    Point<3> point;        ///< The line's own.
    std::uint32_t place;   ///< As in LineSegment, like what follows.
    std::uint32_t ownFacets[2];
    std::int8_t toOther[2];   ///< Columns and rows to the other sample beside the point; 0 and 0: none.
    LineRule rule;
    bool hasMoreFacets : 1;
    bool repeatedDown : 1;   ///< The width repeats it upwards and downwards, else to both sides.
};

/// The lines of a picture. Every point of a curve has a place, for the piece that begins there, and behind
/// all of them every outline that may be drawn: where two lines are equally near, that of the later place
/// wins. The segments stand in lists by the bands of rows where they may have pixels; of those that have only
/// one, as most in a large model, just the pixel stands there.
class LineTable {
public:
    static constexpr std::uint32_t noFacet = 0xFFFFFFFF;

    /// Fills the table, whatever it held. `projected` are the model's vertices on the screen, `shades` those
    /// of its facets. `pause` is called now and then, on this thread, and may throw. Throws std::bad_alloc.
    /// What is given, and the outlines that `style` names, must outlive the table's use.
    void collect(const Model& model, const Camera& camera, const Point<3>* projected, const LineStyle& style,
                 const FacetShade* shades, const Bands& bands, const Sharing& sharing,
                 const std::function<void()>& pause);

    /// The material number of the line of a place.
    std::uint16_t material(std::uint32_t place) const noexcept;
    /// Red, green and blue of it.
    std::array<std::uint8_t, 3> colour(std::uint32_t place) const noexcept;
    /// Of the Outlines, for the place of an edge.
    std::uint32_t outline(std::uint32_t place) const noexcept { return place - curvePlaces; }
    /// In the order of the places: where the style has a trace; a curve ends with `nothing` or a dot.
    const LargeVector<LineSegment>& all() const noexcept { return kept; }

    /// Calls its functions with runs of segments and of pixels, a pointer and a number of at most a few
    /// hundred: all that may have pixels in a band, and maybe some more, in any order.
    template <class TakeSegments, class TakePixels>
    void forEachRun(std::size_t band, TakeSegments takeSegments, TakePixels takePixels) const
    {
        for (std::size_t level = 0; level < levelStarts.size(); ++level)
            for (const auto& part : parts) {
                part->segments.forEachRun(levelStarts[level] + (band >> level), takeSegments);
                part->pixels.forEachRun(levelStarts[level] + (band >> level), takePixels);
            }
    }

private:
    class Collector;

    void restart(const Bands& bands, unsigned threads);

    const Model* scene = nullptr;
    const FacetShade* facetShades = nullptr;
    const Outlines* outlines = nullptr;
    std::optional<std::array<std::uint8_t, 3>> commonColour;
    std::uint32_t curvePlaces = 0;
    LargeVector<std::uint32_t> curves;   // of the model, by place
    LargeVector<Point<3>> curvePoints;   // on the screen
    LargeVector<LineSegment> kept;       // by place
    // One list for each band, then one for each two of them, and so on: each segment stands in one, of the
    // fewest bands that hold all of it, so that long ones take no more room than short ones.
    std::vector<std::size_t> levelStarts;
    struct Part {
        BandLists<LineSegment> segments;
        BandLists<LinePixel> pixels;
    };
    std::vector<std::unique_ptr<Part>> parts;   // one a thread
    Bands bandsOfPicture{};
};

}   // namespace belvor
