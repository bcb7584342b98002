#include "readers/dxf/DXFPolylines.h"

namespace belvor {

void DXFPolyline::build()
{
    const DXFPolylineHead head(record);
    if (head.has(DXFPolylineHead::faceMesh) || head.has(DXFPolylineHead::mesh)) DXFPolyPrim(*this).build();
    else if (head.has(DXFPolylineHead::spatial)) DXFPolyline3D(*this).build();
    else DXFPolyline2D(*this).build();
}

void DXFPolyline3D::build()
{
    const DXFPolylineHead head(record);
    log().line("Polyline ", "3D", head.has(DXFPolylineHead::closed) ? " (closed)" : "");
    DXFPolyline::forEachVertex(drawing, [](const DXFVertexEntity& vertex) {
        if (vertex.groups().isModern()) vertex.groups().pointOr(10, 0.0);   // a damaged one is found out
    });
}

}   // namespace belvor
