#pragma once

#include "render/Bands.h"
#include "render/EdgeTable.h"
#include "render/FacetStepper.h"
#include "render/LineRow.h"
#include "render/LineStyle.h"
#include "render/LineTable.h"
#include "render/PixelRow.h"
#include "render/Shading.h"

#include <cstdint>
#include <vector>

namespace belvor {

/// All that a render computes: where vertices lie on the screen, which edges cross which rows,
/// how facets are lit. Owned by the caller of render(); several frames may draw one model at the
/// same time. Used again for the next picture, of any model, it saves allocating its memory:
/// fresh memory can cost more than the work done in it. Used by one thread at a time; a render
/// lets others work for it and returns when they are done.
class Frame {
public:
    explicit Frame(const Sharing& threads = {}) : sharing(threads) {}

    /// Draws `model` into `buffer`, row 0 at the top first, one lineDone() a row, on
    /// the calling thread. `camera` has
    /// the picture's height, `buffer` its width; `style` says which lines are drawn over the
    /// surfaces. Throws Reporter::Abandoned soon after
    /// `progress` answers true, std::bad_alloc, and what `buffer` throws; the frame can be
    /// used again afterwards.
    void render(const Model& model, const Camera& camera, const LightSet& lighting, Buffer& buffer,
                Reporter& progress, const LineStyle& style = {});

    /// Whether the last render reached its last row; only then may the following be asked.
    bool complete() const noexcept { return ended; }

    /// Red, green and blue of the facet of that index.
    const std::uint8_t* colour(std::uint32_t facet) const noexcept { return shades[facet].colour; }
    /// Whether the eye saw the side of the facet that its normal points away from.
    bool reversed(std::uint32_t facet) const noexcept { return shades[facet].reversed; }
    /// A vertex on the screen: pixels right, pixels down, depth.
    const Point<3>& projected(std::uint32_t vertex) const noexcept { return vertices.points[vertex]; }
    /// The box around all projected vertices, nothing for a model without any.
    Extent<3> screenExtent() const noexcept;

private:
    /// The surfaces of a band with its margins, and its lines where the picture has any.
    struct BandRows {
        std::vector<PixelRow> surfaces;
        std::vector<LineRow> lines;
    };
    class BandPainter;

    void project(const Model& model, const Camera& camera, int width, Reporter& progress);
    Bands chooseBands(const Model& model, int width, int height, const LineStyle& style) noexcept;
    void collectLines(const Model& model, const Camera& camera, Buffer& buffer, const LineStyle& style,
                      Reporter& progress);
    void drawBands(const Model& model, const Camera& camera, Buffer& buffer, Reporter& progress,
                   const LineStyle& style);

    const Sharing sharing;
    ProjectedVertices vertices;
    EdgeTable edges;
    Bands bands{};                        // what a thread takes at a time
    unsigned drawingThreads = 1;          // that take bands
    std::vector<FacetStepper> steppers;   // one a thread
    std::vector<BandRows> slots;          // of finished bands
    LargeVector<FacetShade> shades;
    LineTable lines;
    bool ended = false;
    double brightness = 1.0;   // the brightest channel of the last shading
};

}   // namespace belvor
