#include "readers/dxf/DXFAreas.h"
#include "readers/dxf/DXFEntities.h"
#include "readers/dxf/DXFHatchLines.h"

#include <utility>

namespace belvor {
namespace {

DXFHatchStyle styleOf(int group75) noexcept
{
    return group75 == 1   ? DXFHatchStyle::outermost
           : group75 == 2 ? DXFHatchStyle::outerOnly
                          : DXFHatchStyle::oddParity;
}

std::vector<DXFArea> areasOf(const DXFHatch& hatch)
{
    std::vector<DXFLoop2> outlines;
    for (const DXFHatchPath& path : hatch.paths)
        for (DXFLoop2& loop : loopsOf(path)) outlines.push_back(std::move(loop));
    return areasOf(std::move(outlines), styleOf(hatch.style));
}

}   // namespace

void DXFHatchFill::build()
{
    const bool isModern = drawing.rules() == ReadingRules::modern;
    if (!isModern && record.integerOr(70, 0) == 1) return;   // the strict reading takes only patterns
    const DXFHatch hatch = readHatch(record);
    if (hatch.filled) addAreas(hatch);
    else if (drawsCurves()) addPatterns(hatch);
}

void DXFHatchFill::addAreas(const DXFHatch& hatch)
{
    const DXFAxes axes = DXFAxes::of(record);
    for (const DXFArea& area : areasOf(hatch)) {
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

void DXFHatchFill::addPatterns(const DXFHatch& hatch)
{
    DXFHatchLines lines([this](std::size_t steps) { pauseEvery(steps); });
    for (const DXFArea& area : areasOf(hatch))
        for (const DXFHatchPattern& pattern : hatch.patterns)
            if (!lines.add(area, pattern)) return;
    const DXFAxes axes = DXFAxes::of(record);
    const auto inWorld = [&](const Point<2>& p) { return axes.toWorld({p[0], p[1], hatch.elevation}); };
    for (const DXFHatchLines::Dash& dash : lines.dashes()) {
        if (dash.from == dash.to) addCurve(DXFLoop{inWorld(dash.from)});
        else addCurve(DXFLoop{inWorld(dash.from), inWorld(dash.to)});
    }
}

}   // namespace belvor
