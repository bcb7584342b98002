#include "tests/window/Models.h"

#include "platform/Files.h"
#include "platform/Utf16.h"
#include "platform/win32/Windows.h"
#include "tests/window/Program.h"

#include <cmath>
#include <cstdio>
#include <numbers>

namespace belvor::window {

namespace {

bool exists(const std::string& path) { return GetFileAttributesW(toWide(path).c_str()) != INVALID_FILE_ATTRIBUTES; }

std::string made(const char* name, const std::string& text)
{
    const std::string path = inFolder(name);
    if (!exists(path)) writeFile(path, text);
    return path;
}

}   // namespace

const std::string& folder()
{
    static const std::string path = [] {
        wchar_t temporary[MAX_PATH + 1];
        GetTempPathW(MAX_PATH + 1, temporary);
        std::string made = toUtf8(temporary) + "belvor window tests " + std::to_string(GetCurrentProcessId());
        CreateDirectoryW(toWide(made).c_str(), nullptr);
        return made;
    }();
    return path;
}

void removeFolder()
{
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(toWide(inFolder("*")).c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        DeleteFileW(toWide(inFolder(toUtf8(entry.cFileName))).c_str());
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    RemoveDirectoryW(toWide(folder()).c_str());
}

void writeFile(const std::string& path, const std::string& bytes)
{
    std::FILE* const file = openFile(path, "wb");
    if (!file) throw Failure("cannot write " + path);
    const bool whole = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    if (std::fclose(file) != 0 || !whole) throw Failure("cannot write " + path);
}

std::string readFile(const std::string& path)
{
    std::string bytes;
    if (!readWholeFile(path, bytes)) throw Failure("cannot read " + path);
    return bytes;
}

std::string boxModel()
{
    return made("box.thf", "Y \n8\n0 0 0\n4 0 0\n4 3 0\n0 3 0\n0 0 2\n4 0 2\n4 3 2\n0 3 2\n0\n6\n"
                           "1 floor\n4 1 4 3 2\n1 top\n4 5 6 7 8\n1 front\n4 1 2 6 5\n1 right\n4 2 3 7 6\n1 back\n4 3 4 8 7\n1 left\n4 4 1 5 8\n");
}

std::string tetrahedronModel()
{
    return made("tetrahedron.thf", "Y \n4\n1 1 1\n-1 -1 1\n-1 1 -1\n1 -1 -1\n0\n4\n1 a\n3 1 3 2\n1 b\n3 1 2 4\n1 c\n3 1 4 3\n1 d\n3 2 3 4\n");
}

std::string faceModel()
{
    return made("face.dxf", "0\nSECTION\n2\nENTITIES\n0\n3DFACE\n8\nWALL\n10\n0\n20\n0\n30\n0\n11\n4\n21\n0\n31\n0\n12\n4\n22\n3\n32\n1\n13\n0\n23\n3\n33\n1\n"
                            "0\n3DFACE\n8\nROOF\n10\n0\n20\n0\n30\n0\n11\n4\n21\n0\n31\n0\n12\n2\n22\n1\n32\n3\n13\n2\n23\n1\n33\n3\n0\nENDSEC\n0\nEOF\n");
}

std::string stackModel(int squares)
{
    std::string text = "Y \n" + std::to_string(4 * squares) + '\n', facets;
    for (int k = 0; k < squares; ++k) {
        const std::string z = std::to_string(static_cast<double>(k) / squares) + '\n';
        text += "-1.5 -1.5 " + z + "1.5 -1.5 " + z + "1.5 1.5 " + z + "-1.5 1.5 " + z;
        facets += "1 sheet\n4";
        for (int corner = 1; corner <= 4; ++corner) facets += ' ' + std::to_string(4 * k + corner);
        facets += '\n';
    }
    return made("stack.thf", text + "0\n" + std::to_string(squares) + '\n' + facets);
}

std::string sphereModel(int facets)
{
    const std::string path = inFolder("sphere" + std::to_string(facets) + ".thf");
    if (exists(path)) return path;
    const int rows = static_cast<int>(std::sqrt(facets / 2.0)), columns = 2 * rows;
    std::string text = "Y \n" + std::to_string((rows + 1) * columns) + '\n';
    char line[96];
    for (int j = 0; j <= rows; ++j)
        for (int i = 0; i < columns; ++i) {
            const double u = 2 * std::numbers::pi * i / columns, v = std::numbers::pi * j / rows;
            text.append(line, static_cast<std::size_t>(std::snprintf(line, sizeof line, "%.6f %.6f %.6f\n", std::sin(v) * std::cos(u), std::sin(v) * std::sin(u), std::cos(v))));
        }
    text += "0\n" + std::to_string(rows * columns) + '\n';
    for (int j = 0; j < rows; ++j)
        for (int i = 0; i < columns; ++i) {
            const int a = j * columns + i + 1, b = j * columns + (i + 1) % columns + 1;
            text.append(line, static_cast<std::size_t>(std::snprintf(line, sizeof line, "1 ball\n4 %d %d %d %d\n", a, a + columns, b + columns, b)));
        }
    writeFile(path, text);
    return path;
}

}   // namespace belvor::window
