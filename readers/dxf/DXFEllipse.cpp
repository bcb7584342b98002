#include "calcore/Angle.h"
#include "readers/dxf/DXFArcs.h"
#include "readers/dxf/DXFEntities.h"

#include <cmath>
#include <numbers>

namespace belvor {

void DXFEllipse::build()
{
    constexpr double turn = 2.0 * std::numbers::pi;
    const DXFPrimitive frame(record);
    const Point<3> centre = record.pointOr(10, 0.0);
    const Vector<3> major = record.pointOr(11, 0.0).vector();
    const Vector<3> minor = frame.axes.z().cross(major) * record.real(40);
    const double start = record.realOr(41, 0.0), end = record.realOr(42, turn);
    const double sweep = std::fabs(end - start);
    const bool full = sweep == 0.0 || std::fabs(sweep - turn) <= 1e-6;
    if (major == Vector<3>()) return;
    if (drawing.drawsCurves()) {
        DXFLoop curve;
        const double degrees = full ? 360.0 : sweepBetween(toDegrees(start), toDegrees(end));
        forEachArcPoint(toDegrees(start), degrees,
                        [&](double x, double y) { curve.push_back(centre + major * x + minor * y); });
        addOutline(curve);
    }
    if (!full) return;

    const int sides = arcSegments(360.0, major.length());
    DXFLoop ring;
    for (int k = 0; k < sides; ++k) {
        const Angle at = Angle::radians(turn * k / sides);
        ring.push_back(centre + major * at.cos() + minor * at.sin());
    }
    addFace(ring, &frame.axes, true);
}

}   // namespace belvor
