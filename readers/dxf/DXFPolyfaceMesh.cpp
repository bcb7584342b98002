#include "readers/dxf/DXFPolylines.h"

#include <array>
#include <cstdlib>
#include <span>
#include <string>

namespace belvor {

void DXFPolyPrim::buildPolyfaceMesh()
{
    log().line("Polyline ", "face-mesh");
    std::vector<MeshFace> faces;       // added at the end: a fault leaves nothing of the mesh
    std::vector<Point<3>> positions;   // counted as they come: writers fill the counts in the header wrongly
    DXFPolyline::forEachVertex(drawing, [&](const DXFVertexEntity& vertex) {
        if (!vertex.has(DXFVertexEntity::faceMesh)) return;
        if (vertex.has(DXFVertexEntity::meshPosition)) positions.push_back(vertex.groups().pointOr(10, 0.0));
        else takeMeshFace(vertex, positions.size(), faces);
    });
    for (const MeshFace& face : faces) {
        std::array<Point<3>, 4> corners;
        for (std::size_t i = 0; i < face.count; ++i) corners[i] = positions[face.corners[i]];
        addFace(std::span<const Point<3>>(corners.data(), face.count));
    }
}

void DXFPolyPrim::takeMeshFace(const DXFVertexEntity& face, std::size_t known, std::vector<MeshFace>& faces)
{
    MeshFace taken;
    for (int code = 71; code <= 74; ++code) {
        const std::int64_t index =
            std::abs(std::int64_t{face.groups().integerOr(code, 0)});   // negative: an unseen edge
        if (index == 0) break;
        if (index > static_cast<std::int64_t>(known))
            throw BadFile(BadFile::badGroup, "PolyfaceMesh index: %s",
                          "vertex[" + std::to_string(index) + "] outside range (0.." + std::to_string(known)
                              + ")",
                          stream().fileName(), face.groups().find(code)->line);
        taken.corners[taken.count++] = static_cast<std::uint32_t>(index - 1);
    }
    if (taken.count < 3) return;                           // a bare line
    if (faces.empty() && !record.isModern()) material();   // materials are numbered as their first faces come
    faces.push_back(taken);
}

}   // namespace belvor
