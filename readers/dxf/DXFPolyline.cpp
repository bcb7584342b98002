#include "readers/dxf/DXFPolylines.h"

namespace belvor {

void DXFPolyline::build()
{
    if (has(faceMesh) || has(mesh)) DXFPolyPrim(*this).build();
    else if (has(spatial)) DXFPolyline3D(*this).build();
    else DXFPolyline2D(*this).build();
}

void DXFPolyline3D::build()
{
    log().line("Polyline ", "3D", has(closed) ? " (closed)" : "");
    forEachVertex([](const DXFVertexEntity&) {});
}

}   // namespace belvor
