#pragma once

#include "readers/dxf/DXFArcs.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace belvor {

// The plane geometry of polylines with width: the outline of each segment and how
// neighbours join. Everything is in the polyline's own plane.

struct StripVertex {
    Point<2> at;
    double startWidth = 0.0, endWidth = 0.0;   ///< Of the segment that starts here.
    double bulge = 0.0;
};

/// Where one chord of a segment ends: on its centre line and on both sides of the direction
/// of travel.
struct StripStation {
    Point<2> centre, left, right;
};

/// A stretch between two vertices that do not coincide.
class StripSegment {
public:
    StripSegment(const StripVertex& from, const Point<2>& to) noexcept;

    int chords() const noexcept { return bent ? arc.chords : 1; }
    /// From now on an arc has chords of at most 2 degrees.
    void refine() noexcept;
    bool isThin() const noexcept { return startWidth == 0.0 && endWidth == 0.0; }
    /// `k` from 0 to chords().
    StripStation station(int k) const noexcept;

private:
    friend struct StripJoint;
    Vector<2> tangent(bool atEnd) const noexcept;

    Point<2> start, end;
    double startWidth, endWidth, bulge;
    double length;     // of the straight line
    Vector<2> along;   // its unit vector
    bool bent;
    BulgeArc arc{};
};

/// How a segment goes over into the next: shared at a mitre and where one runs on smoothly
/// from the other; otherwise both ends are square.
struct StripJoint {
    StripJoint() noexcept = default;
    StripJoint(const StripSegment& before, const StripSegment& after) noexcept;

    bool shared = false;
    /// Both segments end on the two points left and right. Not so at an arc that bends inside
    /// half the width: its inner side is its centre.
    bool meets = false;
    Point<2> left, right;
};

/// The segments of a polyline; those whose ends coincide are left out. `pause` is called with
/// the index of each vertex and may throw.
std::vector<StripSegment> stripSegments(const std::vector<StripVertex>& vertices, bool closed,
                                        const std::function<void(std::size_t)>& pause);

}   // namespace belvor
