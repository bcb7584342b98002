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
    DXFLoop points, withoutFrame;
    bool splineFitted = false;
    DXFPolyline::forEachVertex(drawing, [&](const DXFVertexEntity& vertex) {
        if (!vertex.groups().isModern() && !drawsCurves()) return;
        const Point<3> at = vertex.groups().pointOr(10, 0.0);   // a damaged one is found out
        if (!drawsCurves()) return;
        points.push_back(at);
        if (!vertex.has(DXFVertexEntity::frameControl)) withoutFrame.push_back(at);
        splineFitted |= vertex.has(DXFVertexEntity::splineFit);
    });
    if (splineFitted) points.swap(withoutFrame);   // the control points only steer the curve
    if (head.has(DXFPolylineHead::closed) && points.size() > 1 && points.front() != points.back())
        points.push_back(points.front());
    if (points.size() > 1) addCurve(points);
}

}   // namespace belvor
