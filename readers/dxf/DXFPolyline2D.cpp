#include "readers/dxf/DXFPolylines.h"

#include <optional>

namespace belvor {

void DXFPolyline2D::build()
{
    log().line("Polyline ", "2D", has(closed) ? " (closed)" : "");
    const double startWidth = record.realOr(40, 0.0), endWidth = record.realOr(41, 0.0);
    std::optional<double> z;
    if (const DXFGroup* own = record.find(30)) z = record.realOf(*own);

    std::vector<StripVertex> vertices, withoutFrame;
    bool splineFitted = false;
    forEachVertex([&](const DXFVertexEntity& vertex) {
        const DXFRecord& groups = vertex.groups();
        if (vertices.empty() && !z && groups.has(30)) z = groups.real(30);
        vertices.push_back({{groups.real(10), groups.real(20)},
                            groups.realOr(40, startWidth),
                            groups.realOr(41, endWidth),
                            groups.realOr(42, 0.0)});
        if (!vertex.has(DXFVertexEntity::frameControl)) withoutFrame.push_back(vertices.back());
        splineFitted |= vertex.has(DXFVertexEntity::splineFit);
    });
    addStrip(splineFitted ? withoutFrame : vertices,
             z.value_or(elevation));   // the frame only steers the curve
}

void DXFPolyline2D::addStrip(const std::vector<StripVertex>& vertices, double z)
{
    const std::vector<StripSegment> segments =
        stripSegments(vertices, has(closed), [this](std::size_t i) { pauseEvery(i); });
    StripJoint before;
    if (has(closed) && !segments.empty()) before = StripJoint(segments.back(), segments.front());
    const StripJoint ends = before;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        pauseEvery(i);
        const StripJoint after = i + 1 < segments.size() ? StripJoint(segments[i], segments[i + 1]) : ends;
        addSegment(segments[i], before, after, z);
        before = after;
    }
}

void DXFPolyline2D::addThinChord(const Point<3>& from, const Point<3>& to)
{
    if (isThick()) addWall(from, to, thickness, &axes);
}

void DXFPolyline2D::addSegment(const StripSegment& segment, const StripJoint& before, const StripJoint& after,
                               double z)
{
    struct Station {
        Point<3> centre, left, right;
    };
    const auto world = [&](const Point<2>& p) { return axes.toWorld({p[0], p[1], z}); };
    const auto at = [&](int k) {
        StripStation station = segment.station(k);
        const StripJoint* const joint = k == 0 ? &before : k == segment.chords() ? &after : nullptr;
        if (joint && joint->meets) station = {station.centre, joint->left, joint->right};
        return Station{world(station.centre), world(station.left), world(station.right)};
    };
    const Station first = at(0);
    Station from = first;
    for (int k = 1; k <= segment.chords(); ++k) {
        const Station to = at(k);
        if (segment.isThin()) {
            addThinChord(from.centre, to.centre);
        } else {
            DXFLoop quad{from.left, from.right, to.right, to.left};
            addLoop(quad, &axes);
            if (isThick()) {
                for (Point<3>& corner : quad) corner += thickness;
                addLoop(quad, &axes);
                addWall(from.left, to.left, thickness, &axes);
                addWall(from.right, to.right, thickness, &axes);
            }
        }
        from = to;
    }
    if (segment.isThin() || !isThick()) return;
    if (!before.shared) addWall(first.left, first.right, thickness, &axes);
    if (!after.shared) addWall(from.left, from.right, thickness, &axes);
}

}   // namespace belvor
