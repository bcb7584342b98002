#pragma once

#include "errors/BadFile.h"
#include "readers/dxf/DXFEntity.h"
#include "readers/dxf/DXFPolyfaces.h"
#include "readers/dxf/DXFStrip.h"

#include <vector>

namespace belvor {

/// A VERTEX record: a corner of the POLYLINE before it, or a face of a polyface mesh.
class DXFVertexEntity final : public DXFEntity {
public:
    enum Flag { splineFit = 8, frameControl = 16, meshPosition = 64, faceMesh = 128 };

    DXFVertexEntity(DXFDrawing& model, const DXFRecord& vertex)
        : DXFEntity(model, vertex),
          flags(vertex.integerOr(70, 0))
    {}

    bool has(Flag flag) const noexcept { return (flags & flag) != 0; }
    /// The record's groups, while it is the current one.
    const DXFRecord& groups() const noexcept { return record; }

private:
    std::int32_t flags;
};

/// What a POLYLINE record of any kind says of itself. Its VERTEX records replace it as the stream's current
/// record, so this is taken before they are read.
struct DXFPolylineHead {
    enum Flag { closed = 1, smoothed = 4, spatial = 8, mesh = 16, closedInN = 32, faceMesh = 64 };

    /// Throws BadFile.
    explicit DXFPolylineHead(const DXFRecord& record) : frame(record), flags(record.integerOr(70, 0)) {}
    bool has(Flag flag) const noexcept { return (flags & flag) != 0; }

    DXFPrimitive frame;
    std::int32_t flags;
};

/// A POLYLINE record: built as one of the kinds below.
class DXFPolyline final : public DXFGraphic {
public:
    explicit DXFPolyline(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;

    /// Calls use(vertex) for the VERTEX records up to the SEQEND or the end of the data.
    /// At any other record the strict reading throws BadFile; the modern one takes the SEQEND as given.
    template <class Use>
    static void forEachVertex(DXFDrawing& drawing, Use use)
    {
        DXFStream& stream = drawing.stream();
        while (stream.nextRecord()) {
            if (is(stream.type(), "SEQEND")) return;
            if (!is(stream.type(), "VERTEX")) {
                if (drawing.rules() == ReadingRules::strict)
                    throw BadFile(BadFile::badGroup, "DXFVertex constructed with non-VERTEX group", {},
                                  stream.fileName(), stream.line());
                drawing.assume("SEQEND", false);
                stream.readRecord();
                return stream.pushBack();
            }
            use(DXFVertexEntity(drawing, stream.readRecord()));
        }
        drawing.assume("SEQEND", true);
    }
};

/// The surfaces of a polyline in a plane: with width a filled strip, with thickness its walls. And its curve,
/// or the outlines of the strip.
class DXFStripSurface {
public:
    /// Facets go to `entity`. Both must outlive this.
    DXFStripSurface(DXFGraphic& entity, const DXFPolylineHead& polyline) : graphic(entity), head(polyline) {}

    void add(const std::vector<StripVertex>& vertices, double z);

private:
    struct Run;
    void addOutlines(std::vector<StripSegment> segments, bool closed, double z);
    void addOutline(const Run& run, double z);
    void addSegment(const StripSegment& segment, const StripJoint& before, const StripJoint& after, double z);

    DXFGraphic& graphic;
    const DXFPolylineHead& head;
};

/// A polyline in a plane.
class DXFPolyline2D final : public DXFGraphic {
public:
    explicit DXFPolyline2D(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

/// The same in one record.
class DXFLWPolyline final : public DXFGraphic {
public:
    explicit DXFLWPolyline(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

/// A curve in space: has no surface.
class DXFPolyline3D final : public DXFGraphic {
public:
    explicit DXFPolyline3D(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

/// The two meshes.
class DXFPolyPrim final : public DXFGraphic {
public:
    explicit DXFPolyPrim(const DXFEntity& entity) : DXFGraphic(entity), head(record) {}
    void build() override;

private:
    void buildPolygonMesh();   // DXFPolygonMesh.cpp
    void addCells(const std::vector<Point<3>>& points, std::int32_t m, std::int32_t n);
    void buildPolyfaceMesh();   // DXFPolyfaceMesh.cpp
    void takeMeshFace(const DXFVertexEntity& face, DXFPolyfaces& mesh);
    void addMeshFace(const DXFPolyfaces::Face& face, DXFPolyfaces& mesh);
    std::uint64_t takePositionRepeats(DXFPolyfaces& mesh);
    std::uint64_t takeFaceRepeats(DXFPolyfaces& mesh);

    const DXFPolylineHead head;
};

}   // namespace belvor
