#pragma once

#include "platform/Files.h"
#include "platform/Utf16.h"
#include "tests/support/Models.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace belvor::window {

/// The path of a file in the folder of this run, which has a blank in its name and goes at the end.
inline std::string inFolder(const std::string& name)
{
    static const struct Folder {
        std::filesystem::path path = std::filesystem::temp_directory_path() / "belvor window tests";
        Folder() { create_directory(path); }
        ~Folder() { remove_all(path); }
    } folder;
    return toUtf8((folder.path / toWide(name)).wstring());
}

/// Writes a file of any name; its path.
inline std::string writeFile(const std::string& path, const std::string& bytes)
{
    std::ofstream(std::filesystem::path(toWide(path)), std::ios::binary) << bytes;
    return path;
}
/// Empty when it cannot be read.
inline std::string readFile(const std::string& path)
{
    std::string bytes;
    return readWholeFile(path, bytes) ? bytes : "";
}

// Files in the folder, made once.

/// Things: a box, every side of another material.
inline std::string boxModel()
{
    static const std::string path = writeFile(inFolder("box.thf"), test::boxText);
    return path;
}
/// DXF: a face.
inline std::string faceModel()
{
    static const std::string path = writeFile(inFolder("face.dxf"), test::drawingText(test::faceEntity));
    return path;
}

/// Things: that many squares, level, one above the other from 0 to 1, `reach` from their middles to their
/// sides, round the third axis and up to 1.5 from it. With 1.5 all cover each other: every row is slow to
/// draw.
inline std::string sheetsModel(int squares, double reach)
{
    const std::string path = inFolder("sheets" + std::to_string(squares) + ".thf");
    if (std::filesystem::exists(toWide(path))) return path;
    std::ostringstream text;
    for (int k = 0; k < squares; ++k) {
        text << "Y 4\n";
        for (const auto& [right, up] :
             {std::pair{-reach, -reach}, {reach, -reach}, {reach, reach}, {-reach, reach}})
            text << (1.5 - reach) * std::cos(k) + right << ' ' << (1.5 - reach) * std::sin(k) + up << ' '
                 << static_cast<double>(k) / squares << '\n';
        text << "0\n1\n1 sheet\n4 1 2 3 4\n";
    }
    return writeFile(path, text.str());
}

}   // namespace belvor::window
