#pragma once

#include "readers/dxf/DXFLoops.h"

#include <optional>
#include <span>

namespace belvor {

/// Where a curve through points starts and ends.
struct DXFCurveEnds {
    bool closed = false;
    std::optional<Vector<3>> startTangent, endTangent;   ///< Directions; of an open one.
};

/// The smooth curve through all points, as `chordsPerSpan` chords from each to the next: cubic between
/// points, by the length of the chords between them, of continuous curvature; at ends without a tangent it is
/// not curved. Points that equal the one before them do not count; a closed curve ends with its first point.
DXFLoop curveThrough(std::span<const Point<3>> points, const DXFCurveEnds& ends, int chordsPerSpan);

}   // namespace belvor
