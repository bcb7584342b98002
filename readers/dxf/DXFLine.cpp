#include "readers/dxf/DXFEntities.h"

namespace belvor {

void DXFLine::build()
{
    const Point<3> start = corner(10), end = corner(11);
    if (!isThick()) return;
    log().line("Extrude line by", " ", thickness);
    addWall(start, end, thickness);
}

}   // namespace belvor
