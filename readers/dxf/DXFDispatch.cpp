#include "readers/dxf/DXFEntities.h"
#include "readers/dxf/DXFPolylines.h"

namespace belvor {
namespace {

template <class Type>
void buildAs(const DXFEntity& entity)
{
    Type(entity).build();
}

struct Handler {
    std::string_view type;
    void (*build)(const DXFEntity&);
    bool modern = false;        // drawn by the modern reading only
    bool placesBlock = false;   // what it draws is known when its block has been read
};

/// Every type that draws something.
constexpr Handler handlers[] = {
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
};

const Handler* handlerOf(std::string_view type, ReadingRules rules) noexcept
{
    for (const Handler& handler : handlers)
        if (type == handler.type) return handler.modern && rules == ReadingRules::strict ? nullptr : &handler;
    return nullptr;
}

}   // namespace

bool DXFEntity::isDrawn(std::string_view type, ReadingRules rules) noexcept
{
    return handlerOf(type, rules) != nullptr;
}

void DXFEntity::build()
{
    using Why = SkippedEntities::Why;
    const std::string_view type = record.type();
    const Handler* const handler = handlerOf(type, drawing.rules());
    if (!handler) return drawing.skip(type, Why::typeNotDrawn, {});
    if (log()) log().line(type, " at line ", record.line());
    const std::uint64_t before = drawing.facetsSoFar();
    handler->build(*this);
    if (drawing.facetsSoFar() == before && !handler->placesBlock) drawing.skip(type, Why::noSurface, {});
}

}   // namespace belvor
