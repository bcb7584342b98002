#include "readers/dxf/DXFEntities.h"

namespace belvor {

void DXFSolid::build()
{
    const Point<3> first = axes.toWorld(corner(10)), second = axes.toWorld(corner(11)),
                   third = axes.toWorld(corner(12));
    const Point<3> fourth = record.has(13) ? axes.toWorld(corner(13)) : third;
    addPrism({first, second, fourth, third});
}

}   // namespace belvor
