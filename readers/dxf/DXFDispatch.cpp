#include "readers/dxf/DXFEntities.h"
#include "readers/dxf/DXFPolylines.h"

#include <algorithm>
#include <iterator>

namespace belvor {
namespace {

template <class Type>
void buildAs(const DXFEntity& entity)
{
    Type(entity).build();
}

/// Every type that draws something.
constexpr struct {
    std::string_view type;
    void (*build)(const DXFEntity&);
} handlers[] = {
    {"3DFACE", buildAs<DXFFace>},       {"ARC", buildAs<DXFArc>},
    {"CIRCLE", buildAs<DXFCircle>},     {"ELLIPSE", buildAs<DXFEllipse>},
    {"INSERT", buildAs<DXFInsert>},     {"LINE", buildAs<DXFLine>},
    {"3DLINE", buildAs<DXFLine>},       {"LWPOLYLINE", buildAs<DXFLWPolyline>},
    {"POLYLINE", buildAs<DXFPolyline>}, {"SOLID", buildAs<DXFSolid>},
    {"TRACE", buildAs<DXFSolid>},
};

}   // namespace

bool DXFEntity::isDrawn(std::string_view type) noexcept
{
    return std::any_of(std::begin(handlers), std::end(handlers),
                       [type](const auto& handler) { return handler.type == type; });
}

void DXFEntity::build()
{
    using Why = SkippedEntities::Why;
    const std::string_view type = record.type();
    for (const auto& handler : handlers) {
        if (type != handler.type) continue;
        if (log()) log().line(type, " at line ", record.line());
        const std::uint64_t before = drawing.facetsSoFar();
        handler.build(*this);
        if (drawing.facetsSoFar() == before && !is(type, "INSERT")) drawing.skip(type, Why::noSurface, {});
        return;
    }
    drawing.skip(type, Why::typeNotDrawn, {});
}

}   // namespace belvor
