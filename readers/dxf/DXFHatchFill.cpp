#include "readers/dxf/DXFAreas.h"
#include "readers/dxf/DXFEntities.h"

#include <utility>

namespace belvor {
namespace {

DXFHatchStyle styleOf(int group75) noexcept
{
    return group75 == 1   ? DXFHatchStyle::outermost
           : group75 == 2 ? DXFHatchStyle::outerOnly
                          : DXFHatchStyle::oddParity;
}

}   // namespace

void DXFHatchFill::build()
{
    const DXFHatch hatch = readHatch(record);
    if (!hatch.filled) return;
    const DXFAxes axes = DXFAxes::of(record);
    std::vector<DXFLoop2> outlines;
    for (const DXFHatchPath& path : hatch.paths)
        for (DXFLoop2& loop : loopsOf(path)) outlines.push_back(std::move(loop));
    for (const DXFArea& area : areasOf(std::move(outlines), styleOf(hatch.style))) {
        DXFLoop corners;
        std::vector<std::uint32_t> loopEnds;
        for (const DXFLoop2& loop : area) {
            for (const Point<2>& corner : loop)
                corners.push_back(axes.toWorld({corner[0], corner[1], hatch.elevation}));
            loopEnds.push_back(static_cast<std::uint32_t>(corners.size()));
        }
        if (loopEnds.size() == 1) loopEnds.clear();
        drawing.addFacet(material(), corners, &axes, loopEnds);
    }
}

}   // namespace belvor
