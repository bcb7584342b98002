#pragma once

#include "readers/dxf/DXFHatchLoops.h"

#include <vector>

namespace belvor {

/// An area: its outer outline first, then those of its holes.
using DXFArea = std::vector<DXFLoop2>;

/// Which outlines of a hatch are filled (group 75).
enum class DXFHatchStyle {
    oddParity = 0,   ///< An island in a hole is an area again.
    outermost = 1,   ///< The outermost areas, with their holes.
    outerOnly = 2,   ///< The outermost outlines, without holes.
};

/// The areas of outlines that do not cross, by which lies in which. Outlines that are told apart only at the
/// cost of too much work (thousands within each other) become one area of all of them, in which even-odd
/// filling gives the areas of odd parity.
std::vector<DXFArea> areasOf(std::vector<DXFLoop2> outlines, DXFHatchStyle style);

}   // namespace belvor
