#include "readers/dxf/DXFEntities.h"
#include "readers/dxf/DXFMeshCage.h"

namespace belvor {

void DXFMesh::build()
{
    const DXFMeshCage cage = readMeshCage(record);
    DXFLoop loop;
    for (std::size_t at = 0; at < cage.faces.size();) {
        const std::size_t end = at + 1 + cage.faces[at];
        loop.clear();
        while (++at < end) loop.push_back(cage.positions[cage.faces[at]]);
        if (loop.size() >= 3) addFace(loop);   // fewer are a bare line
    }
}

}   // namespace belvor
