#include "readers/dxf/DXF.h"

#include <array>

namespace belvor {
namespace {

constexpr std::uint16_t cornerCodes[] = {10, 20, 30, 11, 21, 31, 12, 22, 32, 13, 23, 33};

}   // namespace

/// After a 3DFACE that has been drawn: draws those that follow it and differ in their corners alone, as
/// readEntity() would. In large drawings nearly all faces come in such runs, and what is worked out for an
/// entity, its layer, material, visibility and type, is the same for all of a run.
void DXF::drawRepeats(DXFTally& tally, std::string_view type)
{
    if (!faceTries.now()) return;
    const DXFRecord& first = dxfStream->readRecord();
    if (expansions.back().block || log() || first.isExtended() || !dxfStream->expectRepeats(cornerCodes))
        return;
    const Model& model = builder.model();
    const Material& material = *model.facet(model.facetCount() - 1).material;
    const std::size_t corners = model.facet(model.facetCount() - 1).edgeCount;

    std::array<double, std::size(cornerCodes) + 1> values{};   // 0 for a missing z
    std::uint64_t drawn = 0;
    for (; dxfStream->isRepeat(values.data()); ++drawn) {
        const Point<3> face[4] = {{values[0], values[1], values[2]},
                                  {values[3], values[4], values[5]},
                                  {values[6], values[7], values[8]},
                                  {values[9], values[10], values[11]}};
        Plane plane;
        double radiusSquare;
        if (!facetPlane({face, corners}, nullptr, {}, plane, radiusSquare))
            break;   // damaged, or too far out
        dxfStream->checkProgress();
        if (!outliers.passNear(face[0], radiusSquare)) {
            outliers.begin(dxfStream->groupsOfRepeat(), model.vertexCount(), model.curvePointCount());
            outliers.add(face[0], radiusSquare);
        }
        builder.addPolygon(material, plane, {face, corners});
        dxfStream->passRepeat();
    }
    tally.drawn(type, drawn);
    faceTries.ended(drawn);
}

}   // namespace belvor
