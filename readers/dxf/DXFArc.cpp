#include "calcore/Angle.h"
#include "readers/dxf/DXFArcs.h"
#include "readers/dxf/DXFEntities.h"

namespace belvor {

void DXFArc::build()
{
    const DXFPrimitive frame(record);
    const Point<3> centre = frame.corner(record, 10);
    const double radius = record.real(40), start = record.real(50), end = record.real(51);
    if (radius <= 0.0 || !(frame.isThick() || drawing.drawsCurves())) return;
    const double sweep = sweepBetween(start, end);
    if (drawing.drawsCurves()) {
        DXFLoop curve;
        forEachArcPoint(start, sweep, [&](double x, double y) {
            curve.push_back(frame.axes.toWorld(centre + Vector<3>(x, y, 0.0) * radius));
        });
        addOutline(curve, frame.thickness);
    }
    if (!frame.isThick()) return;
    const int chords = arcSegments(sweep, radius);
    const auto at = [&](int k) {
        const Angle angle = Angle::degrees(start + sweep * k / chords);
        return frame.axes.toWorld(centre + Vector<3>(angle.cos(), angle.sin(), 0.0) * radius);
    };
    Point<3> from = at(0);
    for (int k = 1; k <= chords; ++k) {
        const Point<3> to = at(k);
        addWall(from, to, frame.thickness);
        from = to;
    }
}

}   // namespace belvor
