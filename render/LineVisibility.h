#pragma once

#include "render/Outlines.h"
#include "scene/Camera.h"
#include "scene/Model.h"

#include <cstdint>
#include <span>

namespace belvor {

struct LineSegment;
class LineTable;

/// Owners and depths of one row of finished surfaces; empty for a row outside the picture.
struct SurfaceRow {
    std::span<const std::uint32_t> owners;
    std::span<const double> depths;
};

/// Whether surfaces hide a point of a line.
class LineVisibility {
public:
    LineVisibility(const Model& scene, const Camera& view, const LineTable& lines,
                   const Outlines* edges) noexcept;

    /// Takes two rows, the upper one with that index.
    void setRows(int upperIndex, const SurfaceRow& upper, const SurfaceRow& lower) noexcept;

    /// A sample point of the picture, by its column and row.
    struct Sample {
        int column, row;
        friend bool operator==(const Sample&, const Sample&) noexcept = default;
    };

    /// Whether `point` of a line shows in the pixel `drawn`, which lies in the picture on one of
    /// the two rows. `other` is the other sample point beside it, equal to `drawn` when there is
    /// none; one outside the picture tells nothing.
    bool shows(const LineSegment& segment, const Point<3>& point, Sample drawn, Sample other) const noexcept;

private:
    static constexpr std::uint32_t noFacet = 0xFFFFFFFF;
    bool hides(const LineSegment& segment, const Point<3>& point, Sample at) const noexcept;
    bool holds(Sample at) const noexcept;
    const SurfaceRow& rowOf(Sample at) const noexcept { return rows[at.row - upperRow]; }
    bool isOwn(const LineSegment& segment, std::uint32_t facet) const noexcept;

    const Model& model;
    const Camera& camera;
    const LineTable& table;
    const Outlines* outlines;
    const bool perspective;
    const double parallelTolerance;
    int upperRow = 0;
    SurfaceRow rows[2];
    // The slopes of the facet that was asked for last.
    mutable std::uint32_t slopesOf = noFacet;
    mutable double slopeX = 0.0, slopeY = 0.0;
};

}   // namespace belvor
