#include "readers/dxf/DXFPolylines.h"

#include <array>
#include <cstdlib>
#include <span>
#include <string>

namespace belvor {

void DXFPolyPrim::buildPolyfaceMesh()
{
    log().line("Polyline ", "face-mesh");
    std::vector<Point<3>> positions;   // counted as they come: writers fill the counts in the header wrongly
    DXFPolyline::forEachVertex(drawing, [&](const DXFVertexEntity& vertex) {
        if (!vertex.has(DXFVertexEntity::faceMesh)) return;
        if (vertex.has(DXFVertexEntity::meshPosition)) positions.push_back(vertex.groups().pointOr(10, 0.0));
        else addMeshFace(vertex, positions);
    });
}

void DXFPolyPrim::addMeshFace(const DXFVertexEntity& face, const std::vector<Point<3>>& positions)
{
    std::array<Point<3>, 4> corners;
    std::size_t count = 0;
    for (int code = 71; code <= 74; ++code) {
        const std::int64_t index =
            std::abs(std::int64_t{face.groups().integerOr(code, 0)});   // negative: an unseen edge
        if (index == 0) break;
        if (index > static_cast<std::int64_t>(positions.size()))
            throw BadFile(BadFile::badGroup, "PolyfaceMesh index: %s",
                          "vertex[" + std::to_string(index) + "] outside range (0.."
                              + std::to_string(positions.size()) + ")",
                          stream().fileName(), face.groups().find(code)->line);
        corners[count++] = positions[static_cast<std::size_t>(index - 1)];
    }
    if (count >= 3) addFace(std::span<const Point<3>>(corners.data(), count));   // fewer are a bare line
}

}   // namespace belvor
