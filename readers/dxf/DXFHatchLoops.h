#pragma once

#include "readers/dxf/DXFHatch.h"

#include <vector>

namespace belvor {

/// A closed outline in a plane: corners without repeats, the last joined to the first.
using DXFLoop2 = std::vector<Point<2>>;

/// The closed outlines of a path, curves as chords: for arcs and ellipses as many as for the entities of that
/// name, for splines one for 10 degrees of turn. Edges are joined end to end, turned around where their
/// other end is nearer; a gap is closed by a straight side. Outlines of fewer than three corners are left
/// out.
std::vector<DXFLoop2> loopsOf(const DXFHatchPath& path);

}   // namespace belvor
