#include "readers/dxf/DXFDispatch.h"

#include "readers/dxf/DXFEntities.h"
#include "readers/dxf/DXFPolylines.h"

namespace belvor {
namespace {

template <class Type>
void buildAs(const DXFEntity& entity)
{
    Type(entity).build();
}

/// Every type that draws something.
constexpr DXFHandler handlers[] = {
    {"3DFACE", buildAs<DXFFace>},
    {"ARC", buildAs<DXFArc>},
    {"CIRCLE", buildAs<DXFCircle>},
    {"ELLIPSE", buildAs<DXFEllipse>},
    {"INSERT", buildAs<DXFInsert>, false, true},
    {"LINE", buildAs<DXFLine>},
    {"3DLINE", buildAs<DXFLine>},
    {"LWPOLYLINE", buildAs<DXFLWPolyline>},
    {"POLYLINE", buildAs<DXFPolyline>},
    {"SOLID", buildAs<DXFSolid>},
    {"TRACE", buildAs<DXFSolid>},
    {"MESH", buildAs<DXFMesh>, true},
    {"HATCH", buildAs<DXFHatchFill>, true},
    {"DIMENSION", buildAs<DXFPicturedByBlock>, true, true},
    {"ARC_DIMENSION", buildAs<DXFPicturedByBlock>, true, true},
    {"LARGE_RADIAL_DIMENSION", buildAs<DXFPicturedByBlock>, true, true},
    {"ACAD_TABLE", buildAs<DXFPicturedByBlock>, true, true},
    {"HATCH", buildAs<DXFHatchFill>, false, false, true},
    {"POINT", buildAs<DXFPoint>, false, false, true},
    {"SPLINE", buildAs<DXFSplineEntity>, false, false, true},
    {"HELIX", buildAs<DXFHelix>, false, false, true},
    {"RAY", buildAs<DXFEndless>, false, false, true},
    {"XLINE", buildAs<DXFEndless>, false, false, true},
};

}   // namespace

const DXFHandler* handlerOf(std::string_view type, ReadingRules rules, bool curves) noexcept
{
    for (const DXFHandler& handler : handlers) {
        if (type.size() != handler.type.size() || type[0] != handler.type[0] || type != handler.type)
            continue;
        const bool passedOver =
            (handler.modern && rules == ReadingRules::strict) || (handler.onlyCurves && !curves);
        if (!passedOver) return &handler;
    }
    return nullptr;
}

bool mayBeCurve(std::string_view type) noexcept
{
    const DXFHandler* const handler = handlerOf(type, ReadingRules::modern, true);
    if (!handler || handler->placesBlock) return false;
    const auto build = handler->build;
    return build != buildAs<DXFFace> && build != buildAs<DXFSolid> && build != buildAs<DXFMesh>;
}

}   // namespace belvor
