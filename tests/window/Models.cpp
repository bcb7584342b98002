#include "tests/window/Models.h"

#include "platform/Files.h"
#include "platform/Utf16.h"
#include "tests/support/Models.h"

#include <filesystem>
#include <fstream>
#include <numbers>
#include <sstream>

namespace belvor::window {

namespace {

std::string made(const std::string& name, const std::string& text)
{
    if (!std::filesystem::exists(toWide(inFolder(name)))) writeFile(inFolder(name), text);
    return inFolder(name);
}

}   // namespace

std::string inFolder(const std::string& name)
{
    static const struct Folder {
        std::filesystem::path path = std::filesystem::temp_directory_path() / "belvor window tests";
        Folder() { create_directory(path); }
        ~Folder() { remove_all(path); }
    } folder;
    return toUtf8((folder.path / toWide(name)).wstring());
}

void writeFile(const std::string& path, const std::string& bytes)
{
    std::ofstream(std::filesystem::path(toWide(path)), std::ios::binary) << bytes;
}

std::string readFile(const std::string& path)
{
    std::string bytes;
    return readWholeFile(path, bytes) ? bytes : "";
}

std::string boxModel() { return made("box.thf", test::boxText); }
std::string faceModel() { return made("face.dxf", test::drawingText(test::faceEntity)); }

std::string stackModel(int squares)
{
    std::ostringstream text;
    for (int k = 0; k < squares; ++k) {
        text << "Y 4\n";
        for (const char* corner : {"-1.5 -1.5 ", "1.5 -1.5 ", "1.5 1.5 ", "-1.5 1.5 "})
            text << corner << static_cast<double>(k) / squares << '\n';
        text << "0\n1\n1 sheet\n4 1 2 3 4\n";
    }
    return made("stack" + std::to_string(squares) + ".thf", text.str());
}

std::string sphereModel(int facets)
{
    const std::string name = "sphere" + std::to_string(facets) + ".thf";
    if (std::filesystem::exists(toWide(inFolder(name)))) return inFolder(name);
    const int rows = static_cast<int>(std::sqrt(facets / 2.0)), columns = 2 * rows;
    std::ostringstream text, sides;
    for (int j = 0; j <= rows; ++j)
        for (int i = 0; i < columns; ++i) {
            const double u = 2 * std::numbers::pi * i / columns, v = std::numbers::pi * j / rows;
            text << std::sin(v) * std::cos(u) << ' ' << std::sin(v) * std::sin(u) << ' ' << std::cos(v)
                 << '\n';
            const int a = j * columns + i + 1, b = j * columns + (i + 1) % columns + 1;
            if (j < rows)
                sides << "1 ball\n4 " << a << ' ' << a + columns << ' ' << b + columns << ' ' << b << '\n';
        }
    return made(name, "Y " + std::to_string((rows + 1) * columns) + '\n' + text.str() + "0\n"
                          + std::to_string(rows * columns) + '\n' + sides.str());
}

}   // namespace belvor::window
