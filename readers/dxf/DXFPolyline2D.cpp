#include "readers/dxf/DXFPolylines.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace belvor {

void DXFPolyline2D::build()
{
    const DXFPolylineHead head(record);
    log().line("Polyline ", "2D", head.has(DXFPolylineHead::closed) ? " (closed)" : "");
    const double startWidth = record.realOr(40, 0.0), endWidth = record.realOr(41, 0.0);
    std::optional<double> z;
    if (const DXFGroup* own = record.find(30)) z = record.realOf(*own);

    std::vector<StripVertex> vertices, withoutFrame;
    bool splineFitted = false;
    DXFPolyline::forEachVertex(drawing, [&](const DXFVertexEntity& vertex) {
        const DXFRecord& groups = vertex.groups();
        if (vertices.empty() && !z && groups.has(30)) z = groups.real(30);
        vertices.push_back({{groups.real(10), groups.real(20)},
                            groups.realOr(40, startWidth),
                            groups.realOr(41, endWidth),
                            groups.realOr(42, 0.0)});
        if (!vertex.has(DXFVertexEntity::frameControl)) withoutFrame.push_back(vertices.back());
        splineFitted |= vertex.has(DXFVertexEntity::splineFit);
    });
    // The control points only steer the curve.
    DXFStripSurface(*this, head)
        .add(splineFitted ? withoutFrame : vertices, z.value_or(head.frame.elevation));
}

void DXFStripSurface::add(const std::vector<StripVertex>& vertices, double z)
{
    const bool closed = head.has(DXFPolylineHead::closed);
    std::vector<StripSegment> segments =
        stripSegments(vertices, closed, [this](std::size_t i) { graphic.pauseEvery(i); });
    if (graphic.drawsCurves()) {
        const bool onlyCurve = !head.frame.isThick()
                               && std::all_of(segments.begin(), segments.end(),
                                              [](const StripSegment& each) { return each.isThin(); });
        if (onlyCurve) return addOutlines(std::move(segments), closed, z);   // there can be millions
        addOutlines(segments, closed, z);
    }
    StripJoint before;
    if (closed && !segments.empty()) before = StripJoint(segments.back(), segments.front());
    const StripJoint ends = before;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        graphic.pauseEvery(i);
        const StripJoint after = i + 1 < segments.size() ? StripJoint(segments[i], segments[i + 1]) : ends;
        addSegment(segments[i], before, after, z);
        before = after;
    }
}

/// Segments whose outlines go over into one another.
struct DXFStripSurface::Run {
    const std::vector<StripSegment>& segments;
    std::size_t first, end;
    bool ring;   ///< The last goes over into the first.

    StripJoint joint(std::size_t before) const noexcept
    {
        if (before + 1 < end) return {segments[before], segments[before + 1]};
        return ring ? StripJoint(segments[before], segments[first]) : StripJoint();
    }
};

/// Strips end where neighbours do not share their corners: each has an outline of its own.
void DXFStripSurface::addOutlines(std::vector<StripSegment> segments, bool closed, double z)
{
    const auto goesOn = [&](std::size_t i) {
        const StripSegment &before = segments[i], &after = segments[(i + 1) % segments.size()];
        return (before.isThin() && after.isThin()) || StripJoint(before, after).shared;
    };
    for (StripSegment& segment : segments) segment.refine();
    bool ring = closed && !segments.empty();
    for (std::size_t i = 0; ring && i < segments.size(); ++i) {
        graphic.pauseEvery(i);
        if (goesOn(i)) continue;
        std::rotate(segments.begin(), segments.begin() + static_cast<std::ptrdiff_t>(i + 1), segments.end());
        ring = false;
    }
    for (std::size_t first = 0, end = 0; first < segments.size(); first = end) {
        for (end = first + 1; end < segments.size() && goesOn(end - 1);) ++end;
        addOutline({segments, first, end, ring}, z);
    }
}

void DXFStripSurface::addOutline(const Run& run, double z)
{
    const Vector<3>& thickness = head.frame.thickness;
    DXFLoop centre, left, right;
    const auto add = [&](DXFLoop& loop, const Point<2>& p) {
        const Point<3> point = head.frame.axes.toWorld({p[0], p[1], z});
        if (loop.empty() || loop.back() != point) loop.push_back(point);
    };
    for (std::size_t i = run.first; i < run.end; ++i) {
        graphic.pauseEvery(i);
        const StripSegment& segment = run.segments[i];
        const StripJoint before = run.joint(i == run.first ? run.end - 1 : i - 1), after = run.joint(i);
        for (int k = 0; k <= segment.chords(); ++k) {
            const StripStation station = segment.station(k);
            const StripJoint* const joint = k == 0 ? &before : k == segment.chords() ? &after : nullptr;
            add(centre, station.centre);
            if (segment.isThin()) continue;   // so is all of the run
            add(left, joint && joint->meets ? joint->left : station.left);
            add(right, joint && joint->meets ? joint->right : station.right);
        }
    }
    if (run.segments[run.first].isThin()) return graphic.addOutline(centre, thickness);
    if (run.ring) {
        // The inner side of a ring without a hole is a point: its arcs bend inside half their width.
        const double breadth = (right.front() - left.front()).length();
        for (DXFLoop* const side : {&left, &right}) {
            const auto isAtFront = [&](const Point<3>& point) {
                return (point - side->front()).length() <= 1e-6 * breadth;
            };
            if (std::all_of(side->begin(), side->end(), isAtFront)) continue;
            if (side->front() != side->back()) side->push_back(side->front());
            graphic.addOutline(*side, thickness);
        }
        return;
    }
    left.insert(left.end(), right.rbegin(), right.rend());
    left.push_back(left.front());
    graphic.addOutline(left, thickness);
}

void DXFStripSurface::addSegment(const StripSegment& segment, const StripJoint& before,
                                 const StripJoint& after, double z)
{
    const DXFAxes& axes = head.frame.axes;
    const Vector<3>& thickness = head.frame.thickness;
    const bool isThick = head.frame.isThick();
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
            if (isThick) graphic.addWall(from.centre, to.centre, thickness, &axes);
        } else {
            DXFLoop quad{from.left, from.right, to.right, to.left};
            graphic.addLoop(quad, &axes);
            if (isThick) {
                for (Point<3>& corner : quad) corner += thickness;
                graphic.addLoop(quad, &axes);
                graphic.addWall(from.left, to.left, thickness, &axes);
                graphic.addWall(from.right, to.right, thickness, &axes);
            }
        }
        from = to;
    }
    if (segment.isThin() || !isThick) return;
    if (!before.shared) graphic.addWall(first.left, first.right, thickness, &axes);
    if (!after.shared) graphic.addWall(from.left, from.right, thickness, &axes);
}

}   // namespace belvor
