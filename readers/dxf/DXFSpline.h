#pragma once

#include "readers/dxf/DXFHatchLoops.h"

namespace belvor {

/// The chords of a spline edge from its first to its last point: in each span of its knots one for 10 degrees
/// that its control points turn, at most 36. A spline that its knots do not fit (their count is that of the
/// control points + degree + 1, they never fall) or of a degree beyond 15 is its fit points, or its
/// control points, joined by straight lines.
DXFLoop2 splineChords(const DXFHatchEdge& spline);

}   // namespace belvor
