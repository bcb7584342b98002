#include "readers/dxf/DXFAxes.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

/// Also for vectors whose squared length does not fit a double.
Vector<3> direction(const Vector<3>& v) noexcept
{
    const double largest = std::max({std::fabs(v[0]), std::fabs(v[1]), std::fabs(v[2])});
    if (largest == 0.0) return {0, 0, 1};
    if (largest > 1e-100 && largest < 1e100) return v.unit();
    return Vector<3>(v[0] / largest, v[1] / largest, v[2] / largest).unit();
}

}   // namespace

DXFAxes::DXFAxes(const Vector<3>& extrusion) noexcept : zAxis(direction(extrusion))
{
    constexpr double nearlyUpright = 1.0 / 64.0;
    const bool upright = std::fabs(zAxis[0]) < nearlyUpright && std::fabs(zAxis[1]) < nearlyUpright;
    xAxis = (upright ? Vector<3>(0, 1, 0) : Vector<3>(0, 0, 1)).cross(zAxis).unit();
    yAxis = zAxis.cross(xAxis);
    world = zAxis == Vector<3>(0, 0, 1);
}

DXFAxes DXFAxes::of(const DXFRecord& record)
{
    if (!record.hasPoint(210)) return {};
    const Point<3> extrusion = record.isModern() ? record.pointOr(210, 0.0) : record.point(210);
    return DXFAxes(extrusion.vector());
}

}   // namespace belvor
