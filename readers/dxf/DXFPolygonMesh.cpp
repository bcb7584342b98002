#include "readers/dxf/DXFPolylines.h"

namespace belvor {

void DXFPolyPrim::build()
{
    if (head.has(DXFPolylineHead::faceMesh)) buildPolyfaceMesh();
    else buildPolygonMesh();
}

void DXFPolyPrim::buildPolygonMesh()
{
    std::int32_t m = record.integerOr(71, 0), n = record.integerOr(72, 0);
    const std::int32_t fittedM = record.integerOr(73, 0), fittedN = record.integerOr(74, 0);
    const int startLine = record.line();

    std::vector<Point<3>> points, fitted;
    DXFPolyline::forEachVertex(drawing, [&](const DXFVertexEntity& vertex) {
        const Point<3> position = vertex.groups().pointOr(10, 0.0);
        points.push_back(position);
        if (head.has(DXFPolylineHead::smoothed) && vertex.has(DXFVertexEntity::splineFit))
            fitted.push_back(position);
    });
    if (!fitted.empty()) {   // the others only steer the surface
        points.swap(fitted);
        m = fittedM;
        n = fittedN;
    }
    log().line("Polyline ", "mesh", head.has(DXFPolylineHead::closed) ? " (closed)" : "", ", N=", n,
               " M=", m);
    if (static_cast<std::int64_t>(m) * n != static_cast<std::int64_t>(points.size()))
        throw BadFile(BadFile::badGroup, "PolygonMesh ends with wrong number of vertices", {},
                      stream().fileName(), startLine);
    addCells(points, m, n);
}

/// `points` holds m rows of n.
void DXFPolyPrim::addCells(const std::vector<Point<3>>& points, std::int32_t m, std::int32_t n)
{
    if (m < 2 || n < 2) return;
    const auto at = [&](std::int32_t i, std::int32_t j) {
        return points[static_cast<std::size_t>(i % m) * static_cast<std::size_t>(n)
                      + static_cast<std::size_t>(j % n)];
    };
    const std::int32_t cellsInM = head.has(DXFPolylineHead::closed) ? m : m - 1,
                       cellsInN = head.has(DXFPolylineHead::closedInN) ? n : n - 1;
    std::size_t cells = 0;
    for (std::int32_t i = 0; i < cellsInM; ++i)
        for (std::int32_t j = 0; j < cellsInN; ++j, pauseEvery(++cells))
            addFace({at(i, j), at(i + 1, j), at(i + 1, j + 1), at(i, j + 1)});
}

}   // namespace belvor
