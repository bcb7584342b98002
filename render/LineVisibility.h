#pragma once

#include "render/LineTable.h"
#include "render/Outlines.h"
#include "render/PixelRow.h"
#include "scene/Camera.h"
#include "scene/Model.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace belvor {

/// Whether surfaces hide a point of a line: a facet that the line does not belong to does when its plane,
/// carried from the sample point to the line's own point, is nearer.
class LineVisibility {
public:
    /// Throws std::bad_alloc.
    LineVisibility(const Model& scene, const Camera& view, const LineTable& lines, const Outlines* edges);

    /// Takes the finished surfaces of the rows `first` to `end` − 1, those of `first` in `surfaces[0]`.
    void setRows(const PixelRow* surfaces, int first, int end) noexcept
    {
        rows = surfaces;
        firstRow = first;
        endRow = end;
    }

    /// A sample point of the picture, by its column and row.
    struct Sample {
        int column, row;
        friend bool operator==(const Sample&, const Sample&) noexcept = default;
    };

    /// One that a line has, also by its width.
    struct Pixel {
        const LinePixel* line;
        Sample at;
    };

    static constexpr std::size_t mostPixels = 128;
    /// Whether the points of `count` pixels of lines, at most mostPixels, show in them. The pixels lie on the
    /// rows and in the picture; another sample point outside the picture tells nothing, any other lies on one
    /// of the rows.
    void find(const Pixel* pixels, std::size_t count, bool* shows) noexcept;

private:
    static constexpr std::uint32_t noFacet = 0xFFFFFFFF;
    static constexpr std::size_t knownFacets = 8192;
    /// How the depth of a facet's plane grows with x and y.
    struct Slopes {
        double x, y;
    };

    /// A sample point beside a pixel's point; a facet that the line does not belong to owns it.
    struct Question {
        const LinePixel* pixel;
        bool* shows;   ///< The answer for the pixel.
        Sample at;
        std::uint32_t owner;
    };
    std::size_t keepHidden(Question* questions, std::size_t count) noexcept;
    void fetch(std::size_t count) noexcept;

    /// Whether the plane of the owner hides the pixel's point.
    bool hides(const Question& question) noexcept
    {
        const auto [pixel, shows, at, owner] = question;
        if (!isKnown(owner)) learn(owner);   // two at one place
        const Slopes& slopes = slopesAt[owner % knownFacets];
        const double surface = rowOf(at).depths()[static_cast<std::size_t>(at.column)]
                               + slopes.x * (pixel->point[0] - at.column)
                               + slopes.y * (pixel->point[1] - at.row);
        const double tolerance = perspective ? 0x1p-20 * std::abs(pixel->point[2]) : parallelTolerance;
        return pixel->point[2] > surface + tolerance;
    }
    bool isKnown(std::uint32_t facet) const noexcept { return facetAt[facet % knownFacets] == facet; }
    bool holds(Sample at) const noexcept
    {
        return (at.row >= firstRow) & (at.row < endRow) & (at.column >= 0) & (at.column < rows->width());
    }
    std::uint32_t ownerAt(Sample at) const noexcept
    {
        return rowOf(at).owners()[static_cast<std::size_t>(at.column)];
    }
    const PixelRow& rowOf(Sample at) const noexcept { return rows[at.row - firstRow]; }
    /// Whether it is a facet that the line does not belong to.
    bool isForeign(const LinePixel& pixel, std::uint32_t facet) const noexcept
    {
        const bool foreign =
            (facet != noFacet) & (facet != pixel.ownFacets[0]) & (facet != pixel.ownFacets[1]);
        if (!(foreign & pixel.hasMoreFacets)) return foreign;
        return !outlines->belongsTo(table.outline(pixel.place), facet);
    }
    void learn(std::uint32_t facet) noexcept;

    const Model& model;
    const Camera& camera;
    const LineTable& table;
    const Outlines* outlines;
    const bool perspective;
    const double parallelTolerance;
    const PixelRow* rows = nullptr;
    int firstRow = 0, endRow = 0;
    std::uint32_t unknown[mostPixels];
    // Of facets that were asked for, each at a place that follows from its index:
    std::vector<std::uint32_t> facetAt;
    std::vector<Slopes> slopesAt;
};

}   // namespace belvor
