#pragma once

#include <string>

namespace belvor::window {

/// A folder for the files of this run, with a blank in its name; emptied by removeFolder().
const std::string& folder();
inline std::string inFolder(const std::string& name) { return folder() + '\\' + name; }
void removeFolder();

void writeFile(const std::string& path, const std::string& bytes);
std::string readFile(const std::string& path);

/// Files in the folder, made at the first call.
std::string boxModel();            ///< Things: a box, four of its faces in different materials.
std::string tetrahedronModel();    ///< Things: another small solid.
std::string faceModel();           ///< DXF: one 3DFACE and a line.
/// Things: that many squares, 3 by 3, close one above the other: every row is slow to draw.
std::string stackModel(int squares);
/// Things: a sphere of about that many facets.
std::string sphereModel(int facets);

}   // namespace belvor::window
