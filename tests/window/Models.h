#pragma once

#include <string>

namespace belvor::window {

/// The path of a file in the folder of this run, which has a blank in its name and goes at the end.
std::string inFolder(const std::string& name);

void writeFile(const std::string& path, const std::string& bytes);
std::string readFile(const std::string& path);   ///< Empty when it cannot be read.

/// Files in the folder, made at the first call.
std::string boxModel();    ///< Things: a box, every side of another material.
std::string faceModel();   ///< DXF: a face.
/// Things: that many squares, 3 by 3, close one above the other: every row is slow to draw.
std::string stackModel(int squares);
/// Things: a sphere of about that many facets.
std::string sphereModel(int facets);

}   // namespace belvor::window
