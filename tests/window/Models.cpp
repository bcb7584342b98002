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

std::string made(const char* name, const std::string& text)
{
    const std::string path = inFolder(name);
    writeFile(path, text);
    return path;
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

std::string boxModel()
{
    static const std::string path = made("box.thf", test::boxText);
    return path;
}

std::string faceModel()
{
    static const std::string path = made("face.dxf", test::drawingText(test::faceEntity));
    return path;
}

std::string stackModel(int squares)
{
    std::ostringstream text, facets;
    text << "Y " << 4 * squares << '\n';
    for (int k = 0; k < squares; ++k) {
        const double z = static_cast<double>(k) / squares;
        for (const char* corner : {"-1.5 -1.5 ", "1.5 -1.5 ", "1.5 1.5 ", "-1.5 1.5 "})
            text << corner << z << '\n';
        facets << "1 sheet\n4 " << 4 * k + 1 << ' ' << 4 * k + 2 << ' ' << 4 * k + 3 << ' ' << 4 * k + 4
               << '\n';
    }
    text << "0\n" << squares << '\n' << facets.str();
    return made("stack.thf", text.str());
}

std::string sphereModel(int facets)
{
    const std::string name = "sphere" + std::to_string(facets) + ".thf";
    if (std::filesystem::exists(toWide(inFolder(name)))) return inFolder(name);
    const int rows = static_cast<int>(std::sqrt(facets / 2.0)), columns = 2 * rows;
    std::ostringstream text;
    text << "Y " << (rows + 1) * columns << '\n';
    for (int j = 0; j <= rows; ++j)
        for (int i = 0; i < columns; ++i) {
            const double u = 2 * std::numbers::pi * i / columns, v = std::numbers::pi * j / rows;
            text << std::sin(v) * std::cos(u) << ' ' << std::sin(v) * std::sin(u) << ' ' << std::cos(v)
                 << '\n';
        }
    text << "0\n" << rows * columns << '\n';
    for (int j = 0; j < rows; ++j)
        for (int i = 0; i < columns; ++i) {
            const int a = j * columns + i + 1, b = j * columns + (i + 1) % columns + 1;
            text << "1 ball\n4 " << a << ' ' << a + columns << ' ' << b + columns << ' ' << b << '\n';
        }
    return made(name.c_str(), text.str());
}

}   // namespace belvor::window
