#include "readers/dxf/DXFPolylines.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <span>
#include <string>

namespace belvor {
namespace {

constexpr std::uint16_t positionCodes[] = {10, 20, 30}, cornerCodesOfMesh[] = {71, 72, 73, 74};

}   // namespace

inline void DXFPolyPrim::addMeshFace(const DXFPolyfaces::Face& face, DXFPolyfaces& mesh)
{
    if (face.count < 3) return;   // a bare line
    if (mesh.faces.empty() && !record.isModern())
        material();   // materials are numbered as their first faces come
    mesh.faces.push_back(face);
}

void DXFPolyPrim::buildPolyfaceMesh()
{
    log().line("Polyline ", "face-mesh");
    DXFPolyfaces& mesh = drawing.polyfaces();
    DXFPatternTries tries;
    DXFPolyline::forEachVertex(drawing, [&](const DXFVertexEntity& vertex) {
        if (!vertex.has(DXFVertexEntity::faceMesh)) return;
        const bool isPosition = vertex.has(DXFVertexEntity::meshPosition);
        if (isPosition) mesh.positions.push_back(vertex.groups().pointOr(10, 0.0));
        else takeMeshFace(vertex, mesh);
        if (log() || vertex.groups().isExtended() || !tries.now()) return;
        tries.ended(isPosition ? takePositionRepeats(mesh) : takeFaceRepeats(mesh));
    });
    for (const DXFPolyfaces::Face& face : mesh.faces) {
        std::array<Point<3>, 4> corners;
        for (std::size_t i = 0; i < face.count; ++i) corners[i] = mesh.positions[face.corners[i]];
        addFace(std::span<const Point<3>>(corners.data(), face.count));
    }
    mesh.clear();
}

void DXFPolyPrim::takeMeshFace(const DXFVertexEntity& face, DXFPolyfaces& mesh)
{
    const std::size_t known = mesh.positions.size();
    DXFPolyfaces::Face taken;
    for (const int code : cornerCodesOfMesh) {
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
    addMeshFace(taken, mesh);
}

/// The positions after one that has been read, as long as they differ from it in their numbers alone. In
/// large meshes nearly all records come in such runs. Returns how many.
std::uint64_t DXFPolyPrim::takePositionRepeats(DXFPolyfaces& mesh)
{
    if (!stream().expectRepeats(positionCodes)) return 0;
    std::array<double, std::size(positionCodes) + 1> values{};   // 0 for a missing z
    std::uint64_t taken = 0;
    for (; stream().isRepeat(values.data()); ++taken) {
        if (!std::isfinite(values[0]) || !std::isfinite(values[1]) || !std::isfinite(values[2])) break;
        stream().checkProgress();
        mesh.positions.emplace_back(values[0], values[1], values[2]);
        stream().passRepeat();
    }
    return taken;
}

/// The same for faces. One with a fault is left to be read by itself.
std::uint64_t DXFPolyPrim::takeFaceRepeats(DXFPolyfaces& mesh)
{
    if (!stream().expectRepeats(cornerCodesOfMesh)) return 0;
    const auto known = static_cast<double>(mesh.positions.size());
    std::array<double, std::size(cornerCodesOfMesh) + 1> values{};   // 0 for a missing corner
    std::uint64_t taken = 0;
    for (; stream().isRepeat(values.data()); ++taken) {
        DXFPolyfaces::Face face;
        bool outside = false;
        for (std::size_t i = 0; i < std::size(cornerCodesOfMesh) && values[i] != 0.0; ++i) {
            const double index = std::fabs(values[i]);   // negative: an unseen edge
            outside |= index > known;
            face.corners[face.count++] = static_cast<std::uint32_t>(index) - 1;
        }
        if (outside) break;
        stream().checkProgress();
        addMeshFace(face, mesh);
        stream().passRepeat();
    }
    return taken;
}

}   // namespace belvor
