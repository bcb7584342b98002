// belvor-image info, verify and at: what one file holds.

#include "calcore/Number.h"
#include "imagefile/ImageDescription.h"
#include "imagefile/PictureGeometry.h"
#include "imagetool/Command.h"
#include "text/JsonText.h"

#include <algorithm>
#include <cstdint>
#include <map>

namespace belvor {
namespace {

void describeMaterials(JsonText& json, const std::vector<ImageMaterial>& materials,
                       const std::vector<std::uint64_t>& pixels)
{
    json.key("materials").beginList();
    for (const auto& [number, colour, name] : materials) {
        json.beginObject().key("number").value(number).key("name").value(name).key("colour").beginList();
        for (const std::uint8_t channel : colour) json.value(channel);
        json.endList().key("pixels").value(pixels[number]).endObject();
    }
    json.endList();
}

struct Pixel {
    int column, row;
};

Pixel pixelOf(const std::string& word, const ImageHeader& header)
{
    const std::size_t comma = word.find(',');
    const std::string_view text = word;
    std::int32_t column = 0, row = 0;
    if (comma == word.npos || !isLong(text.substr(0, comma), column) || !isLong(text.substr(comma + 1), row))
        throw WrongUse(Text::badPixel, {word});
    if (column < 0 || row < 0 || column >= header.width || row >= header.wholeHeight())
        throw WrongUse(Text::pixelOutside,
                       {word, std::to_string(header.width), std::to_string(header.wholeHeight())});
    const int last = header.firstRow() + header.height - 1;
    if (row < header.firstRow() || row > last)
        throw WrongUse(Text::rowNotInBand, {word, std::to_string(header.firstRow()), std::to_string(last)});
    return {column, row};
}

const ImageMaterial* materialOf(const ImageHeader& header, std::uint16_t number)
{
    const auto found =
        std::find_if(header.materials.begin(), header.materials.end(),
                     [number](const ImageMaterial& material) { return material.number == number; });
    return found == header.materials.end() ? nullptr : &*found;
}

/// What the pixel shows, as one line.
std::string lineOf(OmbrReader& image, const Pixel& pixel)
{
    const ImageHeader& header = image.header();
    image.readRow(pixel.row - header.firstRow());
    const auto column = static_cast<std::size_t>(pixel.column);
    const std::uint32_t code = image.depth()[column];
    if (code == noDepthCode) return "null\n";
    const double distance = DepthScale(header.camera).distance(code);
    const PictureGeometry geometry(header.camera, header.width, header.wholeHeight());
    const Point<3> point = geometry.point(pixel.column, pixel.row, distance);
    const double numbers[] = {point[0], point[1], point[2]};
    JsonText json;
    json.beginObject().key("pixel").beginList().value(pixel.column).value(pixel.row).endList();
    json.key("point").numbers(numbers).key("distance").value(distance).key("material");
    if (const ImageMaterial* const material = materialOf(header, image.material()[column]))
        json.value(material->name);
    else json.null();
    return json.endObject().text() + '\n';
}

void needWords(const Words& words, std::size_t least, std::size_t most, const char* command)
{
    if (words.size() < least || words.size() > most) throw WrongUse(Text::wrongWords, {command});
}

}   // namespace

Answer showInfo(const Words& words)
{
    needWords(words, 1, 1, "info");
    OpenImage image(words[0]);
    const ImageHeader& header = image->header();
    std::vector<std::uint64_t> pixels(65536);
    for (int row = 0; row < header.height; ++row) {
        checkForStop();
        image->readRow(row);
        for (const std::uint16_t number : image->material()) ++pixels[number];
    }
    JsonText json;
    json.beginObject().key("width").value(header.width).key("height").value(header.wholeHeight());
    json.key("rows").beginList().value(header.firstRow()).value(header.firstRow() + header.height).endList();
    json.key("camera");
    describeCamera(json, header.camera);
    json.key("units");
    describeUnits(json, header.camera);
    json.key("software").value(image->software()).key("empty").value(pixels[0]);
    describeMaterials(json, header.materials, pixels);
    printAnswer(json.endObject().text() + '\n');
    return Answer::yes;
}

Answer verifyImage(const Words& words)
{
    needWords(words, 1, 1, "verify");
    FileSource source(words[0]);
    try {
        OmbrReader image(source);
        image.checkRows([](int) { checkForStop(); });
    } catch (const OmbrFault& fault) {
        JsonText json;
        json.beginObject().key("fault").value(fault.what()).key("offset").value(fault.offset());
        printAnswer(json.endObject().text() + '\n');
        return Answer::no;
    }
    return Answer::yes;
}

Answer showPoints(const Words& words)
{
    needWords(words, 2, words.max_size(), "at");
    OpenImage image(words[0]);
    std::vector<Pixel> pixels;
    for (std::size_t i = 1; i < words.size(); ++i) pixels.push_back(pixelOf(words[i], image->header()));
    std::string lines;
    for (const Pixel& pixel : pixels) lines += lineOf(*image, pixel);
    printAnswer(lines);
    return Answer::yes;
}

}   // namespace belvor
