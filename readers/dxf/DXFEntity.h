#pragma once

#include "readers/dxf/DXFDrawing.h"

#include <initializer_list>
#include <string_view>

namespace belvor {

/// A record met among the entities: whether it is drawn, of which material, and by whom.
/// The types derive from it and are made from it; see DXFDispatch.cpp. Lives while its
/// record is the stream's current one.
class DXFEntity {
public:
    /// Also takes in the material definition that the record may carry.
    DXFEntity(DXFDrawing& itsDrawing, const DXFRecord& itsRecord)
        : drawing(itsDrawing),
          record(itsRecord),
          layer(itsRecord.textOr(8, ""))
    {
        if (record.isExtended()) takeMaterial();
    }
    virtual ~DXFEntity() = default;

    /// Adds the entity's geometry to the drawing, by its type. Throws BadFile.
    virtual void build();
    /// Whether entities of that type can be drawn.
    static bool isDrawn(std::string_view type, ReadingRules rules, bool curves) noexcept;
    /// Whether its layer lets it be drawn.
    virtual bool isVisible()
    {
        const DXFLayer& itsLayer = drawing.findLayer(layer);
        return (!itsLayer.frozen() && !itsLayer.off()) || isKeptOn(itsLayer);
    }

    bool drawsCurves() const { return drawing.drawsCurves(); }
    /// The material of its surfaces; made when the first surface asks for it.
    const Material& material()
    {
        if (!surface)
            surface = materialKey.empty() ? &drawing.findSurface(layer) : &drawing.findMaterial(materialKey);
        return *surface;
    }

protected:
    /// Adds a curve of the entity's material, unless curves are not drawn.
    void addCurve(std::span<const Point<3>> points, DXFCurveKind kind = DXFCurveKind::chords);

    DXFEntity(const DXFEntity&) = default;   // for the types, made from what met the record

    DXFStream& stream() const { return drawing.stream(); }
    DXFLog& log() const { return drawing.log(); }

    DXFDrawing& drawing;
    const DXFRecord& record;

private:
    void takeMaterial();
    bool isKeptOn(const DXFLayer& hidden);

    std::string_view materialKey;   // views of the file: they outlive the record
    std::string_view layer;
    const Material* surface = nullptr;
};

/// An entity that adds facets and curves, in world coordinates.
class DXFGraphic : public DXFEntity {
public:
    /// A facet with the corners as they are; `hasCurve`: its border is drawn as a curve, where those are.
    void addFace(std::span<const Point<3>> corners, const DXFAxes* flat = nullptr, bool hasCurve = false);
    void addFace(std::initializer_list<Point<3>> corners, const DXFAxes* flat = nullptr)
    {
        addFace(std::span<const Point<3>>(corners.begin(), corners.size()), flat);
    }
    /// A facet of what is left of the corners without repeats, if that is three or more.
    void addLoop(DXFLoop loop, const DXFAxes* flat = nullptr);
    /// The quadrilateral a, b, b + thickness, a + thickness, if it covers any area.
    void addWall(const Point<3>& a, const Point<3>& b, const Vector<3>& thickness,
                 const DXFAxes* flat = nullptr);

    /// The outline of what a curve and its extrusion by `thickness` give: the curve alone without thickness,
    /// it and the one above when it is closed (its last point equals its first), else one closed curve.
    /// Nothing when curves are not drawn.
    void addOutline(const DXFLoop& curve, const Vector<3>& thickness = {});

    /// For long loops: reports progress, which may throw, when `count` is a multiple of some thousands.
    void pauseEvery(std::size_t count) const
    {
        constexpr std::size_t stepsBetweenReports = 4096;
        if (count % stepsBetweenReports == stepsBetweenReports - 1) stream().checkProgress();
    }

protected:
    explicit DXFGraphic(const DXFEntity& entity) : DXFEntity(entity) {}
};

/// The object coordinate system of an entity (groups 210, 220, 230), its elevation (38) and its
/// thickness (39).
class DXFPrimitive {
public:
    /// Throws BadFile.
    explicit DXFPrimitive(const DXFRecord& record);

    bool isThick() const noexcept { return thickness != Vector<3>(); }
    /// Groups code, code + 10, code + 20 of `record`, the last defaulting to the elevation.
    Point<3> corner(const DXFRecord& record, int code) const { return record.pointOr(code, elevation); }

    DXFAxes axes;
    double elevation = 0.0;
    Vector<3> thickness;   ///< World.
};

/// A flat filled outline; with thickness a closed prism.
class DXFPolygon {
public:
    /// Facets go to `entity`. Both must outlive this.
    DXFPolygon(DXFGraphic& entity, const DXFPrimitive& primitive) : graphic(entity), frame(primitive) {}

    /// World corners. Base, top, then one wall a side. `hasCurve` as for addFace(), of base and top.
    void addPrism(DXFLoop loop, bool hasCurve = false);

private:
    DXFGraphic& graphic;
    const DXFPrimitive& frame;
};

}   // namespace belvor
