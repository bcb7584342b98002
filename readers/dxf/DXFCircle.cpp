#include "calcore/Angle.h"
#include "readers/dxf/DXFArcs.h"
#include "readers/dxf/DXFEntities.h"

namespace belvor {

void DXFCircle::build()
{
    const DXFPrimitive frame(record);
    // In the strict reading the elevation of old files is no substitute for z.
    const Point<3> centre = record.isModern() ? frame.corner(record, 10) : record.point(10);
    const double radius = record.real(40);
    if (radius <= 0.0) return;
    if (drawing.drawsCurves()) {
        DXFLoop curve;
        forEachArcPoint(0.0, 360.0, [&](double x, double y) {
            curve.push_back(frame.axes.toWorld(centre + Vector<3>(x, y, 0.0) * radius));
        });
        addOutline(curve, frame.thickness);
    }
    const int sides = arcSegments(360.0, radius);
    DXFLoop ring;
    for (int k = 0; k < sides; ++k) {
        const Angle at = Angle::degrees(360.0 * k / sides);
        ring.push_back(frame.axes.toWorld(centre + Vector<3>(at.cos(), at.sin(), 0.0) * radius));
    }
    DXFPolygon(*this, frame).addPrism(std::move(ring), true);
}

}   // namespace belvor
