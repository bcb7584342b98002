#include "readers/dxf/DXFEntities.h"

namespace belvor {

void DXFSolid::build()
{
    const DXFPrimitive frame(record);
    const auto corner = [&](int code) { return frame.axes.toWorld(frame.corner(record, code)); };
    const Point<3> first = corner(10), second = corner(11), third = corner(12);
    const Point<3> fourth = record.hasPoint(13) ? corner(13) : third;
    DXFPolygon(*this, frame).addPrism({first, second, fourth, third});
}

}   // namespace belvor
