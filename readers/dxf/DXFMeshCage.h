#pragma once

#include "calcore/Point.h"
#include "readers/dxf/DXFRecord.h"

#include <cstdint>
#include <vector>

namespace belvor {

/// The control mesh of a MESH record, before any smoothing.
struct DXFMeshCage {
    std::vector<Point<3>> positions;
    /// The faces one after another: the number of corners, then that many indices of positions.
    std::vector<std::uint32_t> faces;
};

/// Throws BadFile when the counts (92, 93) are not those of what follows, or a face points to no position.
DXFMeshCage readMeshCage(const DXFRecord& record);

}   // namespace belvor
