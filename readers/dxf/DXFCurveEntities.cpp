#include "calcore/Angle.h"
#include "readers/dxf/DXFArcs.h"
#include "readers/dxf/DXFBSpline.h"
#include "readers/dxf/DXFEntities.h"
#include "readers/dxf/DXFFitCurve.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace belvor {
namespace {

/// The groups of a record that belong to its part of that name: from there to the end.
std::span<const DXFGroup> partOf(const DXFRecord& record, std::string_view name) noexcept
{
    const auto groups = record.groups();
    const auto start = std::find_if(groups.begin(), groups.end(), [name](const DXFGroup& group) {
        return group.code == 100 && group.text.starts_with(name);
    });
    return groups.subspan(static_cast<std::size_t>(start - groups.begin()));
}

/// Points of which the x, y and z come in groups one after another.
class PointList {
public:
    /// Throws BadFile for a point without a y.
    void take(const DXFRecord& record, const DXFGroup& group, int firstCode)
    {
        const double value = record.realOf(group);
        if (group.code == firstCode) {
            finish(record, firstCode);
            points.push_back({value, 0.0, 0.0});
            complete = false;
        } else if (!points.empty()) {
            points.back()[(group.code - firstCode) / 10] = value;
            complete |= group.code == firstCode + 10;
        }
    }
    void finish(const DXFRecord& record, int firstCode) const
    {
        if (!complete) record.failNeeding(firstCode + 10);
    }

    DXFLoop points;

private:
    bool complete = true;
};

struct SplineGroups {
    SplineGroups(const DXFRecord& record, std::span<const DXFGroup> groups)
    {
        for (const DXFGroup& group : groups) switch (group.code) {
            case 70: closed = (record.integerOf(group) & 1) != 0; break;
            case 71: degree = record.integerOf(group); break;
            case 40: knots.push_back(record.realOf(group)); break;
            case 41: weights.push_back(record.realOf(group)); break;
            case 10:
            case 20:
            case 30: controls.take(record, group, 10); break;
            case 11:
            case 21:
            case 31: fit.take(record, group, 11); break;
            case 12:
            case 22:
            case 32: startTangent.take(record, group, 12); break;
            case 13:
            case 23:
            case 33: endTangent.take(record, group, 13); break;
            }
        controls.finish(record, 10);
        fit.finish(record, 11);
        startTangent.finish(record, 12);
        endTangent.finish(record, 13);
        if (weights.size() != controls.points.size()) weights.clear();
    }

    bool closed = false;
    int degree = 3;
    std::vector<double> knots, weights;
    PointList controls, fit, startTangent, endTangent;
};

std::optional<Vector<3>> directionIn(const PointList& list)
{
    if (list.points.empty() || list.points.front() == Point<3>::origin()) return {};
    return list.points.front().vector();
}

/// A spline that its knots do not fit goes through its fit points, else straight from one control point to
/// the next.
DXFLoop pointsOf(const SplineGroups& groups)
{
    constexpr int chordsPerSpan = 16;
    const DXFBSpline<3> spline{groups.degree, groups.knots, groups.controls.points, groups.weights};
    if (!spline.isUsable()) {
        if (groups.fit.points.size() > 1) {
            const DXFCurveEnds ends{groups.closed, directionIn(groups.startTangent),
                                    directionIn(groups.endTangent)};
            return curveThrough(groups.fit.points, ends, chordsPerSpan);
        }
        DXFLoop points = groups.controls.points;
        if (groups.closed && points.size() > 2 && points.front() != points.back())
            points.push_back(points.front());
        return points;
    }
    const auto degree = static_cast<std::size_t>(groups.degree);
    DXFLoop points{spline.at(degree, groups.knots[degree])};
    for (std::size_t k = degree; k < spline.controls.size(); ++k) {
        const double low = spline.knots[k], high = spline.knots[k + 1];
        if (!(high > low)) continue;
        for (int i = 1; i <= chordsPerSpan; ++i)
            points.push_back(
                spline.at(k, i == chordsPerSpan ? high : low + (high - low) * i / chordsPerSpan));
    }
    return points;
}

}   // namespace

void DXFPoint::build()
{
    const DXFPrimitive frame(record);
    const Point<3> at = frame.corner(record, 10);
    if (frame.isThick()) addCurve(DXFLoop{at, at + frame.thickness});
    else addCurve(DXFLoop{at});
}

void DXFSplineEntity::build()
{
    const DXFLoop points = pointsOf(SplineGroups(record, record.groups()));
    if (points.size() > 1) addCurve(points);
}

void DXFHelix::build()
{
    const auto groups = partOf(record, "AcDbHelix");
    const auto before = record.groups().first(record.groups().size() - groups.size());
    const DXFLoop points = pointsOf(SplineGroups(record, before));
    if (points.size() > 1) addCurve(points);
    else buildByAxis(groups);
}

void DXFHelix::buildByAxis(std::span<const DXFGroup> groups)
{
    constexpr double mostTurns = 5000.0;
    PointList foot, start, direction;
    double radiusAtEnd = 0.0, turns = 0.0, rise = 0.0;
    bool rightHanded = true;
    for (const DXFGroup& group : groups) switch (group.code) {
        case 10:
        case 20:
        case 30: foot.take(record, group, 10); break;
        case 11:
        case 21:
        case 31: start.take(record, group, 11); break;
        case 12:
        case 22:
        case 32: direction.take(record, group, 12); break;
        case 40: radiusAtEnd = record.realOf(group); break;
        case 41: turns = record.realOf(group); break;
        case 42: rise = record.realOf(group); break;
        case 290: rightHanded = group.text != "0" && record.integerOf(group) != 0; break;
        }
    if (foot.points.empty() || start.points.empty() || !(turns > 0.0 && turns <= mostTurns)) return;
    const Vector<3> axis =
        direction.points.empty() ? Vector<3>(0, 0, 1) : DXFAxes(direction.points.front().vector()).z();
    const Vector<3> out = start.points.front() - foot.points.front();
    const Vector<3> spoke = out - axis * dot(out, axis);
    const double radius = spoke.length();
    if (!(radius > 0.0)) return;
    const Vector<3> x = spoke.unit(), y = rightHanded ? axis.cross(x) : x.cross(axis);
    const Point<3> centre = start.points.front() - spoke;
    const int chords = static_cast<int>(std::ceil(turns * 180.0 - 1e-6));
    DXFLoop curve;
    for (int k = 0; k <= chords; ++k) {
        pauseEvery(static_cast<std::size_t>(k));
        const double part = static_cast<double>(k) / chords;
        const Angle at = Angle::degrees(360.0 * turns * part);
        const double length = radius + (radiusAtEnd - radius) * part;
        curve.push_back(centre + axis * (rise * turns * part) + (x * at.cos() + y * at.sin()) * length);
    }
    addCurve(curve);
}

void DXFEndless::build()
{
    const Point<3> start = record.pointOr(10, 0.0), direction = record.pointOr(11, 0.0);
    if (direction == Point<3>::origin()) return;
    addCurve(DXFLoop{start, start + direction.vector()},
             is(record.type(), "RAY") ? DXFCurveKind::ray : DXFCurveKind::line);
}

}   // namespace belvor
