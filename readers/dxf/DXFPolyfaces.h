#pragma once

#include "calcore/Point.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace belvor {

/// What the records of a polyface mesh say. The next mesh has the same memory again, which is quicker than
/// fresh memory: there are drawings of many such meshes.
struct DXFPolyfaces {
    struct Face {
        std::array<std::uint32_t, 4> corners;
        std::size_t count = 0;
    };
    std::vector<Face> faces;           // added at the end: a fault leaves nothing of the mesh
    std::vector<Point<3>> positions;   // counted as they come: writers fill the counts in the header wrongly

    void clear()
    {
        constexpr std::size_t large = std::size_t{1} << 17;
        if (faces.capacity() > large || positions.capacity() > large) *this = {};   // not kept for long
        faces.clear();
        positions.clear();
    }
};

}   // namespace belvor
