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

    /// Whether `point` of a line shows in the pixel `drawn`, which lies in the picture on one of
    /// the rows. `other` is the other sample point beside it, equal to `drawn` when there is
    /// none; one outside the picture tells nothing, any other lies on one of the rows.
    bool shows(const LineSegment& segment, const Point<3>& point, Sample drawn, Sample other) noexcept
    {
        if (!hides(segment, point, drawn)) return true;
        if (segment.rule == LineRule::curve || other == drawn || !holds(other)) return false;
        if (segment.rule == LineRule::outline) return !hides(segment, point, other);
        const std::uint32_t owner = ownerAt(other);
        return owner != noFacet && isOwn(segment, owner);
    }

    /// Puts the facets whose planes shows() may ask for behind the `count` ones in `facets`, at most two;
    /// returns the new count. Without a branch: which are known can hardly be foretold.
    std::size_t addUnknown(const LineSegment& segment, Sample drawn, Sample other, std::uint32_t* facets,
                           std::size_t count) const noexcept
    {
        const bool asksOther = segment.rule == LineRule::outline && holds(other);
        for (const Sample sample : {drawn, asksOther ? other : drawn}) {
            const std::uint32_t owner = ownerAt(sample);
            facets[count] = owner;
            count += (owner != noFacet) & (known[owner % knownFacets].facet != owner);
        }
        return count;
    }
    /// Gets the planes of facets from memory, all at the same time.
    void fetch(const std::uint32_t* facets, std::size_t count) const noexcept
    {
        for (std::size_t i = 0; i < count; ++i) {
            const Plane& plane = model.facet(facets[i]).plane;
            const double first = plane.normal()[0],
                         last = plane.offset();   // may lie on two lines of the cache
            asm volatile("" : : "m"(first), "m"(last));
        }
    }

private:
    static constexpr std::uint32_t noFacet = 0xFFFFFFFF;
    static constexpr std::size_t knownFacets = 8192;
    /// How the depth of a facet's plane grows with x and y.
    struct Slopes {
        double x, y;
        std::uint32_t facet = noFacet;
    };

    bool hides(const LineSegment& segment, const Point<3>& point, Sample at) noexcept
    {
        const PixelRow& row = rowOf(at);
        const std::uint32_t owner = ownerAt(at);
        if (owner == noFacet || isOwn(segment, owner)) return false;
        Slopes& slopes = known[owner % knownFacets];
        if (owner != slopes.facet) slopes = slopesOf(owner);
        const double surface = row.depths()[static_cast<std::size_t>(at.column)]
                               + slopes.x * (point[0] - at.column) + slopes.y * (point[1] - at.row);
        const double tolerance = perspective ? 0x1p-20 * std::abs(point[2]) : parallelTolerance;
        return point[2] > surface + tolerance;
    }
    bool holds(Sample at) const noexcept
    {
        return at.row >= firstRow && at.row < endRow && at.column >= 0 && at.column < rows->width();
    }
    std::uint32_t ownerAt(Sample at) const noexcept
    {
        return rowOf(at).owners()[static_cast<std::size_t>(at.column)];
    }
    const PixelRow& rowOf(Sample at) const noexcept { return rows[at.row - firstRow]; }
    bool isOwn(const LineSegment& segment, std::uint32_t facet) const noexcept
    {
        return facet == segment.ownFacets[0] || facet == segment.ownFacets[1]
               || (segment.hasMoreFacets && outlines->belongsTo(table.outline(segment.place), facet));
    }
    Slopes slopesOf(std::uint32_t facet) const noexcept;

    const Model& model;
    const Camera& camera;
    const LineTable& table;
    const Outlines* outlines;
    const bool perspective;
    const double parallelTolerance;
    const PixelRow* rows = nullptr;
    int firstRow = 0, endRow = 0;
    std::vector<Slopes> known;   // of facets that were asked for, each at a place that follows from its index
};

}   // namespace belvor
