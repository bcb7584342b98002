#include "calcore/Angle.h"
#include "readers/dxf/DXFArcs.h"
#include "readers/dxf/DXFEntities.h"

namespace belvor {

void DXFArc::build()
{
    const Point<3> centre = corner(10);
    const double radius = record.real(40), start = record.real(50), end = record.real(51);
    if (radius <= 0.0 || !isThick()) return;
    const double sweep = sweepBetween(start, end);
    const int chords = arcSegments(sweep, radius);
    const auto at = [&](int k) {
        const Angle angle = Angle::degrees(start + sweep * k / chords);
        return axes.toWorld(centre + Vector<3>(angle.cos(), angle.sin(), 0.0) * radius);
    };
    Point<3> from = at(0);
    for (int k = 1; k <= chords; ++k) {
        const Point<3> to = at(k);
        addWall(from, to, thickness);
        from = to;
    }
}

}   // namespace belvor
