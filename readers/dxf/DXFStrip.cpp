#include "readers/dxf/DXFStrip.h"

#include "calcore/Angle.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

Vector<2> leftOf(const Vector<2>& direction) noexcept { return {-direction[1], direction[0]}; }

double cross(const Vector<2>& a, const Vector<2>& b) noexcept { return a[0] * b[1] - a[1] * b[0]; }

}   // namespace

StripSegment::StripSegment(const StripVertex& from, const Point<2>& to) noexcept
    : start(from.at),
      end(to),
      startWidth(from.startWidth),
      endWidth(from.endWidth),
      bulge(from.bulge),
      length((to - from.at).length()),
      along((to - from.at).unit()),
      bent(isBent(from.bulge))
{
    if (!bent) return;
    arc = bulgeArc(start, end, bulge);
    bent = std::isfinite(arc.radius) && arc.radius > 0.0;
}

void StripSegment::refine() noexcept
{
    if (bent) arc.chords = curveChords(toDegrees(std::fabs(arc.sweep)));
}

StripStation StripSegment::station(int k) const noexcept
{
    const double half = 0.5 * (startWidth + (endWidth - startWidth) * k / chords());
    const Point<2>& vertex = k == 0 ? start : end;
    if (!bent) return {vertex, vertex + leftOf(along) * half, vertex - leftOf(along) * half};

    const Vector<2> spoke = arc.spoke(k);
    const double inside = arc.radius - half;
    const Point<2> inner = inside <= 1e-9 * arc.radius ? arc.centre : arc.centre + spoke * inside;
    const Point<2> outer = arc.centre + spoke * (arc.radius + half);
    const Point<2> centre = k == 0 || k == arc.chords ? vertex : arc.centre + spoke * arc.radius;
    return bulge > 0.0 ? StripStation{centre, inner, outer} : StripStation{centre, outer, inner};
}

/// The direction of travel at one end: an arc's leaves its chord by half its turn.
Vector<2> StripSegment::tangent(bool atEnd) const noexcept
{
    if (!bent) return along;
    const double b = atEnd ? bulge : -bulge;
    const double cosine = (1.0 - b * b) / (1.0 + b * b), sine = 2.0 * b / (1.0 + b * b);
    return {along[0] * cosine - along[1] * sine, along[0] * sine + along[1] * cosine};
}

StripJoint::StripJoint(const StripSegment& before, const StripSegment& after) noexcept
{
    const double width = before.endWidth;
    if (!(width > 0.0) || width != after.startWidth) return;
    const Vector<2> arriving = before.tangent(true), leaving = after.tangent(false);
    const double cosine = dot(arriving, leaving);
    if (std::fabs(cross(arriving, leaving)) < 1e-9 && cosine > 0.0) {
        const StripStation last = before.station(before.chords()), next = after.station(0);
        shared = true;
        meets = (last.left - next.left).length() < 1e-6 * width
                && (last.right - next.right).length() < 1e-6 * width;
        left = last.left;
        right = last.right;
        return;
    }
    constexpr double cosineOfSharpest = -0.8660254;   // a turn of 150 degrees
    if (before.bent || after.bent || cosine < cosineOfSharpest) return;
    const double reach =
        width / 2.0 * std::sqrt((1.0 - cosine) / (1.0 + cosine));   // of the mitre, along either side
    if (reach > std::min(before.length, after.length)) return;
    const Vector<2> mitre = (leftOf(arriving) + leftOf(leaving)) * (width / 2.0 / (1.0 + cosine));
    shared = meets = true;
    left = after.start + mitre;
    right = after.start - mitre;
}

std::vector<StripSegment> stripSegments(const std::vector<StripVertex>& vertices, bool closed,
                                        const std::function<void(std::size_t)>& pause)
{
    std::vector<StripSegment> segments;
    segments.reserve(vertices.size());   // never moved: there can be millions
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const bool last = i + 1 == vertices.size();
        if (last && !closed) break;
        pause(i);
        const Point<2>& to = vertices[last ? 0 : i + 1].at;
        if (vertices[i].at != to) segments.emplace_back(vertices[i], to);
    }
    return segments;
}

}   // namespace belvor
