#include "imagefile/PlyFile.h"

#include "imagefile/PictureGeometry.h"
#include "imagefile/SeekableOutput.h"
#include "text/Utf8.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <vector>

namespace belvor {
namespace {

static_assert(std::endian::native == std::endian::little, "numbers are written as they lie in memory");

constexpr std::size_t vertexBytes = 3 * 8 + 3 + 2;

std::uint64_t countPoints(OmbrReader& image, void (*goOn)())
{
    std::uint64_t count = 0;
    for (int row = 0; row < image.header().height; ++row) {
        goOn();
        image.readRow(row);
        for (const std::uint32_t code : image.depth()) count += code != noDepthCode;
    }
    return count;
}

/// A name in a line of its own.
std::string inOneLine(const std::string& name)
{
    std::string line = validUtf8(name);
    for (char& c : line)
        if (static_cast<unsigned char>(c) < 0x20) c = ' ';
    return line;
}

std::string headerOfPly(const ImageHeader& about, std::uint64_t points)
{
    std::string text = "ply\nformat binary_little_endian 1.0\n";
    for (const ImageMaterial& material : about.materials)
        text += "comment material " + std::to_string(material.number) + ' ' + inOneLine(material.name) + '\n';
    text += "element vertex " + std::to_string(points) + '\n';
    for (const char* property :
         {"double x", "double y", "double z", "uchar red", "uchar green", "uchar blue", "ushort material"})
        text += std::string("property ") + property + '\n';
    return text + "end_header\n";
}

char* appendPoint(char* to, const Point<3>& point)
{
    const double numbers[] = {point[0], point[1], point[2]};
    std::memcpy(to, numbers, sizeof numbers);
    return to + sizeof numbers;
}

}   // namespace

void writePly(OmbrReader& image, OutputFile& output, void (*goOn)())
{
    const ImageHeader& about = image.header();
    const std::string text = headerOfPly(about, countPoints(image, goOn));
    writeTo(output, text.data(), text.size());
    const PictureGeometry geometry(about.camera, about.width, about.height);
    const DepthScale scale(about.camera);
    std::vector<char> vertices(vertexBytes * static_cast<std::size_t>(about.width));
    for (int row = 0; row < about.height; ++row) {
        goOn();
        image.readRow(row);
        char* to = vertices.data();
        for (std::size_t i = 0; i < image.depth().size(); ++i) {
            const std::uint32_t code = image.depth()[i];
            if (code == noDepthCode) continue;
            to = appendPoint(to, geometry.point(static_cast<double>(i), row, scale.distance(code)));
            to = std::copy_n(reinterpret_cast<const char*>(&image.rgb()[3 * i]), 3, to);
            std::memcpy(to, &image.material()[i], 2);
            to += 2;
        }
        writeTo(output, vertices.data(), static_cast<std::size_t>(to - vertices.data()));
    }
}

}   // namespace belvor
