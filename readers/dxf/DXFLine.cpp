#include "readers/dxf/DXFEntities.h"

namespace belvor {

void DXFLine::build()
{
    const DXFPrimitive frame(record);
    const Point<3> start = frame.corner(record, 10), end = frame.corner(record, 11);
    addOutline({start, end}, frame.thickness);
    if (!frame.isThick()) return;
    log().line("Extrude line by", " ", frame.thickness);
    addWall(start, end, frame.thickness);
}

}   // namespace belvor
