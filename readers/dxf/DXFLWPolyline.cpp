#include "readers/dxf/DXFPolylines.h"

namespace belvor {

void DXFLWPolyline::build()
{
    const DXFPolylineHead head(record);
    const double everyWidth = record.realOr(43, 0.0);
    if (log()) log().line("LWPolyline ", "width ", everyWidth, " thickness ", record.realOr(39, 0.0));

    std::vector<StripVertex> vertices;
    const DXFGroup* x = record.find(10);   // each starts a vertex; what follows belongs to it
    const DXFGroup* const end = record.groups().data() + record.groups().size();
    for (std::size_t vertex = 1; x; ++vertex) {
        pauseEvery(vertex);
        const DXFGroup* const next = record.next(*x, 10);
        StripVertex corner;
        const DXFGroup* y = nullptr;
        int yCount = 0;
        for (const DXFGroup* group = x + 1; group != (next ? next : end); ++group) {
            switch (group->code) {
            case 20:
                y = y ? y : group;
                ++yCount;
                break;
            case 40: corner.startWidth = record.realOf(*group); break;
            case 41: corner.endWidth = record.realOf(*group); break;
            case 42: corner.bulge = record.realOf(*group); break;
            }
        }
        if (!y) record.failNeeding(20);
        if (yCount > 1 && record.isModern()) record.failNeeding(10);   // of the vertex with the other y
        corner.at = {record.realOf(*x), record.realOf(*y)};
        if (everyWidth != 0.0) corner.startWidth = corner.endWidth = everyWidth;
        vertices.push_back(corner);
        x = next;
    }
    DXFStripSurface(*this, head).add(vertices, head.frame.elevation);
}

}   // namespace belvor
