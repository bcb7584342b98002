#pragma once

#include "calcore/Transform.h"
#include "readers/common/Reading.h"
#include "readers/dxf/DXFDispatch.h"
#include "readers/dxf/DXFLoops.h"
#include "readers/dxf/DXFPaint.h"
#include "readers/dxf/DXFPolyfaces.h"
#include "readers/dxf/DXFStream.h"
#include "readers/dxf/SkippedEntities.h"
#include "scene/Material.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace belvor {

struct DXFBlock;

/// One INSERT: a block, placed once in each cell of an array. A cell takes a point of the
/// block, less the block's base point, moved by (column × columnSpacing, row × rowSpacing, 0),
/// through placement() into the coordinates in which the INSERT itself is given.
struct DXFInsertion {
    DXFBlock* block = nullptr;            ///< Of the drawing.
    std::int32_t columns = 1, rows = 1;   ///< Not less.
    double columnSpacing = 0.0, rowSpacing = 0.0;
    bool spacingIsScaled = true;   ///< Else the block is scaled before it is moved to its cell.
    DXFPaint paint;                ///< Of the INSERT itself.
    Vector<3> scale{1, 1, 1};
    double degrees = 0.0;   ///< About z, before the tilt.
    Vector<3> position;     ///< In the tilted axes.
    DXFAxes tilt;

    std::uint64_t cells() const noexcept
    {
        return static_cast<std::uint64_t>(columns) * static_cast<std::uint64_t>(rows);
    }

    /// About z, by `degrees`.
    AffineTransform<3> rotation() const noexcept
    {
        return UniformTransform<3>::rotation(Angle::degrees(degrees));
    }
    /// From the cells to where the INSERT is given, given its rotation(); with the scale where that holds for
    /// the spacing too.
    AffineTransform<3> placement(const AffineTransform<3>& rotation) const noexcept
    {
        const AffineTransform<3> turned =
            tilt.toWorld() * UniformTransform<3>::translation(position) * rotation;
        return spacingIsScaled ? turned * NonUniformTransform<3>::scale(scale) : turned;
    }

    /// The transform of a cell, given `placed`, which placement() is the last part of.
    AffineTransform<3> cellIn(const AffineTransform<3>& placed, std::int32_t column, std::int32_t row,
                              const Point<3>& base) const noexcept
    {
        using Move = UniformTransform<3>;
        const Vector<3> offset(column * columnSpacing, row * rowSpacing, 0.0);
        if (spacingIsScaled) return placed * Move::translation(offset - base.vector());
        return placed * Move::translation(offset) * NonUniformTransform<3>::scale(scale)
               * Move::translation(-base.vector());
    }
};

/// What the points of a curve stand for.
enum class DXFCurveKind : std::uint8_t {
    chords,   ///< Itself, from point to point; a single one is a dot.
    ray,      ///< Two points: from the first one through the second without end.
    line,     ///< Two points: through both without end, both ways.
};

/// The drawing as its entities see it. They know nothing of sections, blocks or the model,
/// so that an INSERT, which has more entities read, needs none of them either.
class DXFDrawing {
public:
    DXFStream& stream() const noexcept { return records; }
    ReadingRules rules() const noexcept { return rulesOfReading; }
    DXFLog& log() const noexcept { return diagnostics; }
    /// Whether lines and curves are taken in.
    bool drawsCurves() const noexcept { return takesCurves; }
    /// The row of that type; null for types that are not drawn.
    const DXFHandler* handlerOf(std::string_view type) noexcept
    {
        if (!isSameText(recentType, type)) {
            recentHandler = belvor::handlerOf(type, rulesOfReading, takesCurves);
            recentType = type;
        }
        return recentHandler;
    }
    /// An end mark is missing, "SEQEND", before the stream's current record or, with `atEnd`, at the end of
    /// the data: it is taken as given, which the account tells.
    virtual void assume(std::string_view mark, bool atEnd) = 0;

    /// The layer of that name, added with its defaults when there is none.
    const DXFLayer& findLayer(std::string_view name)
    {
        if (!recentLayer || !isSameText(recentLayerName, name)) {
            recentLayer = &lookUpLayer(name);
            recentLayerName = name;
        }
        return *recentLayer;
    }
    Material& findMaterial(std::string_view key)
    {
        if (!recentMaterial || !isSameText(recentMaterialKey, key)) {
            recentMaterial = &lookUpMaterial(key);
            recentMaterialKey = key;
        }
        return *recentMaterial;
    }
    /// The material of the current entity, which is on `layer`, where it has none of its own.
    Material& findSurface(std::string_view layer)
    {
        return paintsSurfaces ? paintSurface() : findMaterial(layer);
    }
    /// Of the current entity, where layers or colours are handed on.
    virtual DXFPaint paint() const noexcept = 0;
    /// Gives the material of `key` a name, which a later definition may change again.
    virtual void nameMaterial(std::string_view key, std::string_view name) = 0;

    /// Adds a facet with these corners, mapped by the transform in force. `flat` gives its
    /// normal where the corners have none: the axes of its entity, or null for world +z.
    /// With `loopEnds` the corners are those of several loops, one after another: holes are loops too.
    /// `outlined`: a curve is its border.
    void addFacet(const Material& material, std::span<const Point<3>> corners, const DXFAxes* flat,
                  std::span<const std::uint32_t> loopEnds = {}, bool outlined = false)
    {
        ++given;
        placeFacet(material, corners, flat, loopEnds, outlined);
    }
    /// Adds a curve through these points, at least one, mapped by the transform in force. Its material is
    /// that of the key, or, where that is empty, that of the current entity, which is on `layer`; it is made
    /// after those of all surfaces.
    void addCurve(std::string_view materialKey, std::string_view layer, std::span<const Point<3>> points,
                  DXFCurveKind kind)
    {
        ++given;
        placeCurve(materialKey, layer, points, kind);
    }
    /// How many facets and curves have been given.
    std::uint64_t drawnSoFar() const noexcept { return given; }

    /// Those of one mesh at a time; empty.
    DXFPolyfaces& polyfaces()
    {
        polyfacesOfMesh.clear();   // of one that had a fault
        return polyfacesOfMesh;
    }

    /// Has the entities of a known block read for each cell, as soon as the current entity is done.
    virtual void readEntities(const DXFInsertion& insertion) = 0;
    /// The block of that name, or null when no BLOCK has defined it so far.
    virtual DXFBlock* findBlock(std::string_view name) = 0;

    virtual void skip(std::string_view type, SkippedEntities::Why why, std::string_view what) = 0;

protected:
    /// All must outlive the drawing. `withPaint`: a surface has the material of paint(), not that of the
    /// layer's name.
    DXFDrawing(DXFStream& stream, DXFLog& log, ReadingRules rules, bool curves, bool withPaint) noexcept
        : records(stream),
          diagnostics(log),
          rulesOfReading(rules),
          takesCurves(curves),
          paintsSurfaces(withPaint)
    {}
    ~DXFDrawing() = default;

private:
    virtual const DXFLayer& lookUpLayer(std::string_view name) = 0;
    virtual Material& lookUpMaterial(std::string_view key) = 0;
    virtual Material& paintSurface() = 0;
    virtual void placeFacet(const Material& material, std::span<const Point<3>> corners, const DXFAxes* flat,
                            std::span<const std::uint32_t> loopEnds, bool outlined) = 0;
    virtual void placeCurve(std::string_view materialKey, std::string_view layer,
                            std::span<const Point<3>> points, DXFCurveKind kind) = 0;

    DXFStream& records;
    DXFLog& diagnostics;
    const ReadingRules rulesOfReading;
    const bool takesCurves, paintsSurfaces;

    // Drawings come in runs of one type, one layer and one material. The names are views of the file.
    const DXFHandler* recentHandler = nullptr;
    std::string_view recentType;
    const DXFLayer* recentLayer = nullptr;
    std::string_view recentLayerName;
    Material* recentMaterial = nullptr;
    std::string_view recentMaterialKey;

    std::uint64_t given = 0;
    DXFPolyfaces polyfacesOfMesh;
};

}   // namespace belvor
