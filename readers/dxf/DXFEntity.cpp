#include "readers/dxf/DXFEntity.h"

#include "readers/dxf/DXFDispatch.h"

namespace belvor {
namespace {

/// The text of the first group of that code in a run; empty when there is none.
std::string_view firstText(std::span<const DXFGroup> run, int code) noexcept
{
    for (const DXFGroup& group : run)
        if (group.code == code) return group.text;
    return {};
}

}   // namespace

/// Of extended data.
void DXFEntity::takeMaterial()
{
    if (const auto definition = record.extendedData("AVE_MATERIAL"); !definition.empty()) {
        materialKey = record.textOr(5, "");
        drawing.findMaterial(materialKey);
        const std::string_view name = firstText(definition, 1000);
        drawing.nameMaterial(materialKey, name);
        log().line("Define material ", materialKey, " as ", name);
    } else if (const auto finish = record.extendedData("AVE_FINISH"); !finish.empty()) {
        materialKey = firstText(finish, 1005);
        drawing.findMaterial(materialKey);
    }
}

/// Whether it is drawn although its layer is frozen or off.
bool DXFEntity::isKeptOn(const DXFLayer& itsLayer)
{
    const bool drawn =
        is(record.type(), "INSERT") && !itsLayer.frozen();   // its entities have layers of their own
    if (log())
        log().line(drawn ? "keeping " : "skipping ", record.type(), " ", record.textOr(2, ""),
                   itsLayer.frozen() ? ", frozen-layer " : ", OFF-layer ", layer, " at line ", record.line());
    if (!drawn)
        drawing.skip(record.type(),
                     itsLayer.frozen() ? SkippedEntities::Why::layerFrozen : SkippedEntities::Why::layerOff,
                     layer);
    return drawn;
}

bool DXFEntity::isDrawn(std::string_view type, ReadingRules rules, bool curves) noexcept
{
    return handlerOf(type, rules, curves) != nullptr;
}

void DXFEntity::build()
{
    using Why = SkippedEntities::Why;
    const std::string_view type = record.type();
    const DXFHandler* const handler = drawing.handlerOf(type);
    if (!handler) return drawing.skip(type, Why::typeNotDrawn, {});
    if (log()) log().line(type, " at line ", record.line());
    const std::uint64_t before = drawing.drawnSoFar();
    handler->build(*this);
    if (drawing.drawnSoFar() == before && !handler->placesBlock) drawing.skip(type, Why::noSurface, {});
}

void DXFEntity::addCurve(std::span<const Point<3>> points, DXFCurveKind kind)
{
    if (!points.empty() && drawing.drawsCurves()) drawing.addCurve(materialKey, layer, points, kind);
}

void DXFGraphic::addOutline(const DXFLoop& curve, const Vector<3>& thickness)
{
    if (curve.empty() || !drawing.drawsCurves()) return;
    if (thickness == Vector<3>()) return addCurve(curve);
    DXFLoop above = curve;
    for (Point<3>& point : above) point += thickness;
    if (curve.size() > 1 && curve.front() == curve.back()) {
        addCurve(curve);
        return addCurve(above);
    }
    DXFLoop round = curve;
    round.insert(round.end(), above.rbegin(), above.rend());
    round.push_back(curve.front());
    addCurve(round);
}

void DXFGraphic::addFace(std::span<const Point<3>> corners, const DXFAxes* flat, bool hasCurve)
{
    drawing.addFacet(material(), corners, flat, {}, hasCurve && drawing.drawsCurves());
}

void DXFGraphic::addLoop(DXFLoop loop, const DXFAxes* flat)
{
    dropRepeats(loop);
    if (loop.size() >= 3) addFace(loop, flat);
}

void DXFGraphic::addWall(const Point<3>& a, const Point<3>& b, const Vector<3>& height, const DXFAxes* flat)
{
    if (!makesWall(a, b, height)) return;
    const Point<3> quad[] = {a, b, b + height, a + height};
    addFace(quad, flat);
}

DXFPrimitive::DXFPrimitive(const DXFRecord& record) : axes(DXFAxes::of(record))
{
    elevation = record.realOr(38, 0.0);
    thickness = axes.z() * record.realOr(39, 0.0);
}

void DXFPolygon::addPrism(DXFLoop loop, bool hasCurve)
{
    dropRepeats(loop);
    if (loop.size() < 3) return;
    graphic.addFace(loop, &frame.axes, hasCurve);
    if (!frame.isThick()) return;
    DXFLoop top = loop;
    for (Point<3>& corner : top) corner += frame.thickness;
    graphic.addFace(top, &frame.axes, hasCurve);
    for (std::size_t i = 0; i < loop.size(); ++i)
        graphic.addWall(loop[i], loop[(i + 1) % loop.size()], frame.thickness, &frame.axes);
}

}   // namespace belvor
