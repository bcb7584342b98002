#include "imagefile/SvgFile.h"

#include "imagefile/ImageDescription.h"
#include "imagefile/PictureGeometry.h"
#include "imagefile/SeekableOutput.h"
#include "render/Buffer.h"
#include "render/LineTrace.h"
#include "render/Pauses.h"
#include "text/JsonText.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace belvor {
namespace {

/// Millimetres of a unit, by its code; 0 where it is not known.
constexpr double millimetres[] = {0.0, 1e-3, 1.0, 10.0, 1000.0, 1e6, 0.0254, 25.4, 304.8};

/// Text that XML allows, with its marks escaped.
std::string inXml(const std::string& text)
{
    std::string result;
    const std::string valid = validUtf8(text);
    for (std::size_t i = 0; i < valid.size(); ++i) {
        const auto byte = static_cast<unsigned char>(valid[i]);
        // U+FFFE and U+FFFF are no characters of XML.
        const bool noCharacter =
            byte == 0xEF && valid[i + 1] == '\xBF' && static_cast<unsigned char>(valid[i + 2]) >= 0xBE;
        if (noCharacter) i += 2;
        if (noCharacter || (byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r'))
            appendUtf8(result, replacementCharacter);
        else if (byte < 0x20) result += "&#" + std::to_string(byte) + ';';
        else if (byte == '&') result += "&amp;";
        else if (byte == '<') result += "&lt;";
        else if (byte == '>') result += "&gt;";
        else if (byte == '"') result += "&quot;";
        else result += valid[i];
    }
    return result;
}

std::string hexColour(const std::uint8_t* colour)
{
    std::string text = "#";
    for (int i = 0; i < 3; ++i)
        for (const int shift : {4, 0}) text += "0123456789abcdef"[colour[i] >> shift & 0xF];
    return text;
}

/// A length of so many pixels: in millimetres where the view gives pixels one that can be written. The units
/// of a model may be of any length, also 0 or beyond all numbers.
std::string lengthOf(const ImageHeader& header, int pixels)
{
    const CameraRecord& camera = header.camera;
    const double unit = camera.unitsCode < std::size(millimetres) ? millimetres[camera.unitsCode] : 0.0;
    double pixel = header.pixelSize;   // of a picture of one pixel, whose camera record has no extent
    if (pixel > 0.0 && (header.width > 1 || header.height > 1))
        pixel = PictureGeometry(camera, header.width, header.height).pixelSize();
    const double length = pixels * pixel * camera.unitsScale * unit;
    if (length > 0.0 && std::isfinite(length)) return shortestDecimal(length) + "mm";
    return std::to_string(pixels) + "px";
}

void appendPath(std::string& paths, LineTrace::Path points, Pauses& pauses)
{
    constexpr std::size_t stepsOfPoint = 16;
    for (const Point<3>& point : points) {
        pauses.step(stepsOfPoint);
        paths += &point == points.data() ? 'M' : 'L';
        paths += shortestDecimal(point[0]) + ' ' + shortestDecimal(point[1]);
    }
}

}   // namespace

/// Writes bytes as base64.
class SvgFile::Base64 {
public:
    explicit Base64(OutputFile& file) : output(file) {}

    void write(const void* bytes, std::size_t count)
    {
        const auto* const from = static_cast<const std::uint8_t*>(bytes);
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            group = group << 8 | from[i];
            if (++inGroup == 3) appendGroup(text);
        }
        writeTo(output, text.data(), text.size());
    }
    void end()
    {
        if (inGroup == 0) return;
        const int missing = 3 - inGroup;
        group <<= 8 * missing;
        std::string text;
        appendGroup(text);
        text.replace(4 - static_cast<std::size_t>(missing), std::string::npos,
                     static_cast<std::size_t>(missing), '=');
        writeTo(output, text.data(), text.size());
    }

private:
    void appendGroup(std::string& text)
    {
        constexpr const char* digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        for (int shift = 18; shift >= 0; shift -= 6) text += digits[group >> shift & 0x3F];
        group = 0;
        inGroup = 0;
    }

    OutputFile& output;
    std::uint32_t group = 0;
    int inGroup = 0;   // bytes
};

SvgFile::SvgFile(OutputFile& file, const ImageHeader& about)
    : output(file),
      header(about),
      firstRow(3 * static_cast<std::size_t>(about.width))
{}

SvgFile::~SvgFile() = default;

void SvgFile::setBackground(const std::uint8_t* colour) { std::copy_n(colour, 3, background.begin()); }

void SvgFile::write(const std::string& text) { writeTo(output, text.data(), text.size()); }

void SvgFile::begin()
{
    if (std::exchange(begun, true)) return;
    const std::string width = std::to_string(header.width), height = std::to_string(header.height);
    write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\""
          " xmlns:inkscape=\"http://www.inkscape.org/namespaces/inkscape\" version=\"1.1\" width=\""
          + lengthOf(header, header.width) + "\" height=\"" + lengthOf(header, header.height)
          + "\" viewBox=\"-0.5 -0.5 " + width + ' ' + height + "\">\n");
    write("<metadata>" + inXml(describeImage(header)) + "</metadata>\n");
    if (background != std::array<std::uint8_t, 3>{})
        write("<rect x=\"-0.5\" y=\"-0.5\" width=\"" + width + "\" height=\"" + height + "\" fill=\""
              + hexColour(background.data()) + "\"/>\n");
}

void SvgFile::beginPicture()
{
    begin();
    write("<image x=\"-0.5\" y=\"-0.5\" width=\"" + std::to_string(header.width) + "\" height=\""
          + std::to_string(header.height)
          + "\" preserveAspectRatio=\"none\" image-rendering=\"pixelated\" "
            "xlink:href=\"data:image/png;base64,");
    encoder = std::make_unique<Base64>(output);
    picture = std::make_unique<PngFile>(
        [this](const void* bytes, std::size_t count) { encoder->write(bytes, count); },
        static_cast<std::uint32_t>(header.width), static_cast<std::uint32_t>(header.height));
}

void SvgFile::endPicture()
{
    picture->finishPixels();
    picture->finish();
    encoder->end();
    write("\"/>\n");
    picture.reset();
}

ImageRow SvgFile::row() noexcept
{
    if (picture) return {picture->row(), {}, {}};
    return {firstRow, {}, {}};
}

void SvgFile::writeRow()
{
    if (!picture) {
        beginPicture();
        std::copy(firstRow.begin(), firstRow.end(), picture->row().begin());
    }
    picture->writeRow();
}

void SvgFile::addLines(const LineTrace& trace, const Buffer& owners, std::function<void()> goOn)
{
    constexpr std::size_t largestPiece = std::size_t{1} << 20;
    pause = std::move(goOn);
    lineWidth = trace.lineWidth();
    Pauses pauses(pause);
    const auto add = [&](std::uint32_t place, LineTrace::Path points) {
        const std::uint32_t owner = owners.lineOwner(place);
        Layer& layer = layers[owners.material(owner)];
        const std::array<std::uint8_t, 3> colour = owners.colour(owner);
        const bool isFirst = layer.paths.empty();
        if (isFirst || layer.paths.back().size() > largestPiece) layer.paths.emplace_back();
        std::string& paths = layer.paths.back();
        if (isFirst || layer.colour != colour) {
            if (!isFirst) paths += "\"/>\n";
            paths += "<path stroke=\"" + hexColour(colour.data()) + "\" d=\"";
            layer.colour = colour;
        }
        appendPath(paths, points, pauses);
    };
    trace.forEachPath(add, pause);
}

void SvgFile::finish()
{
    begin();
    if (picture) endPicture();
    for (const ImageMaterial& material : header.materials) {
        auto layer = layers.extract(material.number);   // a number that two materials have: the first
        if (layer.empty()) continue;
        const std::string name = inXml(material.name);
        write("<g id=\"m" + std::to_string(material.number)
              + "\" inkscape:groupmode=\"layer\" inkscape:label=\"" + name
              + "\" fill=\"none\" stroke-width=\"" + std::to_string(lineWidth)
              + "\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n<title>" + name + "</title>\n");
        for (std::string& paths : layer.mapped().paths) {
            pause();
            write(std::exchange(paths, {}));
        }
        write("\"/>\n</g>\n");
    }
    write("</svg>\n");
}

}   // namespace belvor
