#include "imagefile/OmbrReader.h"

#include "imagefile/TiffDirectory.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace belvor {
namespace {

static_assert(std::endian::native == std::endian::little, "numbers are read as they lie in memory");

constexpr std::uint64_t singleDirectory = 2 + 9 * 12 + 4, colourDirectory = 2 + 14 * 12 + 4;
constexpr std::uint64_t materialBlock = 16, bandBlock = 16, depthBlock = 212, colourBlock = 8;
constexpr std::uint64_t mostMaterialBytes = std::uint64_t{256} << 20;   // far more than any drawing has
constexpr std::size_t longestText = 4096;

constexpr std::uint64_t madeEven(std::uint64_t position) { return position + position % 2; }

/// One image's strips as its directory tells of them.
struct Strips {
    std::uint64_t arrays;   // where they stand: offsets, then byte counts
    std::uint32_t inRecord, bytes;
    std::uint16_t samples;

    void addTo(TiffDirectory& directory, std::uint32_t rows) const
    {
        const auto at = static_cast<std::uint32_t>(arrays);
        directory.add(273, TiffDirectory::longInteger, rows, rows == 1 ? 8 + inRecord : at);
        directory.addShort(277, samples);
        directory.addShort(278, 1);
        const std::uint32_t counts = rows == 1 ? bytes : bytes | bytes << 16;
        directory.add(279, TiffDirectory::shortInteger, rows, rows <= 2 ? counts : at + 4 * rows);
    }
};

TiffDirectory beginDirectory(const ImageHeader& about)
{
    TiffDirectory directory;
    directory.addShort(256, static_cast<std::uint16_t>(about.width));
    directory.addShort(257, static_cast<std::uint16_t>(about.height));
    return directory;
}

std::string singleChannel(const ImageHeader& about, const Strips& strips, std::uint16_t bits,
                          std::uint64_t block, std::uint64_t next)
{
    TiffDirectory directory = beginDirectory(about);
    directory.addShort(258, bits);
    directory.addShort(259, 1);
    strips.addTo(directory, static_cast<std::uint32_t>(about.height));
    directory.add(34953, TiffDirectory::longInteger, 1, static_cast<std::uint32_t>(block));
    return directory.bytes(static_cast<std::uint32_t>(next));
}

std::string blockStart(std::uint32_t channel) { return LittleEndian().u32(channel).u16(1).u16(0).data(); }

}   // namespace

/// Where the parts of a file behind its material records begin; each image's private block follows its
/// strip arrays, its directory the block.
struct OmbrReader::Layout {
    Layout(std::uint64_t begin, std::uint64_t height, std::size_t lengthOfText, bool isBand)
        : material(begin),
          textLength(lengthOfText)
    {
        materialBlockAt = material + 6 * height;
        materialDirectory = materialBlockAt + materialBlock;
        depth = materialDirectory + singleDirectory;
        if (isBand) bandBlockAt = depth + 6 * height;
        depthBlockAt = depth + 6 * height + (isBand ? bandBlock : 0);
        depthDirectory = depthBlockAt + depthBlock;
        bits = depthDirectory + singleDirectory;
        colour = bits + 6;
        resolutions = colour + 6 * height;
        text = resolutions + 16;
        colourBlockAt = madeEven(text + textLength + 1);
        directory = colourBlockAt + colourBlock;
    }
    std::uint64_t material, materialBlockAt, materialDirectory, depth, depthBlockAt, depthDirectory;
    std::uint64_t bits, colour, resolutions, text, colourBlockAt, directory;
    std::uint64_t bandBlockAt = 0;   // 0: none
    std::size_t textLength;
};

void OmbrReader::need(std::uint64_t at, std::uint64_t count) const
{
    if (at > source.size() || count > source.size() - at) throw OmbrFault(at, Text::ombrEndsEarly);
}

std::uint16_t OmbrReader::u16(std::uint64_t at)
{
    std::uint16_t value = 0;
    need(at, sizeof value);
    source.read(at, &value, sizeof value);
    return value;
}

std::uint32_t OmbrReader::u32(std::uint64_t at)
{
    std::uint32_t value = 0;
    need(at, sizeof value);
    source.read(at, &value, sizeof value);
    return value;
}

void OmbrReader::expect(std::uint64_t at, const std::string& bytes, Text fault)
{
    need(at, bytes.size());
    std::string found(bytes.size(), '\0');
    source.read(at, found.data(), found.size());
    const auto differs = std::mismatch(found.begin(), found.end(), bytes.begin()).first;
    if (differs != found.end())
        throw OmbrFault(at + static_cast<std::uint64_t>(differs - found.begin()), fault);
}

OmbrReader::OmbrReader(ByteSource& bytes) : source(bytes)
{
    expect(0, std::string("II*\0", 4), Text::ombrNoHeader);
    const Layout layout = findLayout();
    checkColour(layout);
    checkDepth(layout);
    checkMaterial(layout);
    readMaterials(layout);
    if (source.size() != layout.directory + colourDirectory)
        throw OmbrFault(layout.directory + colourDirectory, Text::ombrBytesBehind);
    const auto width = static_cast<std::size_t>(about.width);
    depths = {reinterpret_cast<const std::uint32_t*>(record.data()), width};
    numbers = {reinterpret_cast<const std::uint16_t*>(record.data() + 4 * width), width};
    colours = {record.data() + 6 * width, 3 * width};
}

void OmbrReader::readSize(std::uint64_t directory)
{
    expect(directory, LittleEndian().u16(14).u16(256).u16(3).u32(1).data(), Text::ombrBadDirectory);
    expect(directory + 14, LittleEndian().u16(257).u16(3).u32(1).data(), Text::ombrBadDirectory);
    about.width = u16(directory + 10);
    about.height = u16(directory + 22);
    constexpr int largestWidth = 16383;
    if (about.width < 1 || about.width > largestWidth) throw OmbrFault(directory + 10, Text::ombrBadSize);
    if (about.height < 1) throw OmbrFault(directory + 22, Text::ombrBadSize);
    const std::size_t stride = (9 * static_cast<std::size_t>(about.width) + 3) / 4 * 4;
    need(8, stride * static_cast<std::uint64_t>(about.height));
    record.resize(stride);
}

/// The places follow from the size, the length of the text and the material image's directory.
OmbrReader::Layout OmbrReader::findLayout()
{
    const std::uint64_t directory = u32(4);
    if (directory == 0) throw OmbrFault(4, Text::ombrNotClosed);
    need(directory, colourDirectory);
    readSize(directory);
    const std::uint64_t textEntry = directory + 2 + 12 * 12;
    expect(textEntry, LittleEndian().u16(305).u16(2).data(), Text::ombrBadDirectory);
    const std::size_t textLength = u32(textEntry + 4);
    if (textLength > longestText) throw OmbrFault(textEntry + 4, Text::ombrBadDirectory);
    const std::uint64_t depthDirectory = u32(directory + colourDirectory - 4);
    const std::uint64_t materialDirectory = u32(depthDirectory + singleDirectory - 4);
    const auto height = static_cast<std::uint64_t>(about.height);
    const std::uint64_t before = materialBlock + 6 * height;
    if (materialDirectory < rowAt(about.height) + before)
        throw OmbrFault(depthDirectory + singleDirectory - 4, Text::ombrBadDirectory);
    // A band's block stands before the depth image's, which names it.
    const bool isBand = depthDirectory >= depthBlock && u32(depthDirectory - depthBlock + 8) != 0;
    const Layout layout(materialDirectory - before, height, textLength, isBand);
    if (layout.depthDirectory != depthDirectory)
        throw OmbrFault(directory + colourDirectory - 4, Text::ombrBadDirectory);
    if (layout.directory != directory) throw OmbrFault(textEntry + 4, Text::ombrBadDirectory);
    return layout;
}

void OmbrReader::expectStrips(std::uint64_t at, std::uint32_t inRecord, std::uint32_t bytes)
{
    LittleEndian offsets, counts;
    for (int row = 0; row < about.height; ++row) {
        offsets.u32(static_cast<std::uint32_t>(rowAt(row)) + inRecord);
        counts.u16(static_cast<std::uint16_t>(bytes));
    }
    expect(at, offsets.data() + counts.data(), Text::ombrBadStrips);
}

void OmbrReader::checkColour(const Layout& layout)
{
    const auto width = static_cast<std::uint32_t>(about.width);
    const Strips strips{layout.colour, 6 * width, 3 * width, 3};
    const auto at = [](std::uint64_t position) { return static_cast<std::uint32_t>(position); };
    TiffDirectory directory = beginDirectory(about);
    directory.add(258, TiffDirectory::shortInteger, 3, at(layout.bits));
    directory.addShort(259, 1);
    directory.addShort(262, 2);
    strips.addTo(directory, static_cast<std::uint32_t>(about.height));
    directory.add(282, TiffDirectory::rational, 1, at(layout.resolutions));
    directory.add(283, TiffDirectory::rational, 1, at(layout.resolutions + 8));
    directory.addShort(296, 2);
    directory.add(305, TiffDirectory::ascii, static_cast<std::uint32_t>(layout.textLength), at(layout.text));
    directory.add(34953, TiffDirectory::longInteger, 1, at(layout.colourBlockAt));
    expect(layout.directory, directory.bytes(at(layout.depthDirectory)), Text::ombrBadDirectory);
    expect(layout.bits, LittleEndian().u16(8).u16(8).u16(8).data(), Text::ombrBadDirectory);
    expectStrips(layout.colour, strips.inRecord, strips.bytes);
    expect(layout.resolutions, LittleEndian().u32(100).u32(1).u32(100).u32(1).data(), Text::ombrBadDirectory);
    const std::uint64_t textEnd = layout.text + layout.textLength;
    expect(textEnd, std::string(static_cast<std::size_t>(layout.colourBlockAt - textEnd), '\0'),
           Text::ombrBadDirectory);
    expect(layout.colourBlockAt, blockStart(0), Text::ombrBadBlock);
    madeBy.resize(layout.textLength);
    source.read(layout.text, madeBy.data(), madeBy.size());
}

void OmbrReader::checkDepth(const Layout& layout)
{
    const auto width = static_cast<std::uint32_t>(about.width);
    const Strips strips{layout.depth, 0, 4 * width, 1};
    expect(layout.depthDirectory,
           singleChannel(about, strips, 32, layout.depthBlockAt, layout.materialDirectory),
           Text::ombrBadDirectory);
    expectStrips(layout.depth, strips.inRecord, strips.bytes);
    const auto band = static_cast<std::uint32_t>(layout.bandBlockAt);
    expect(layout.depthBlockAt, blockStart(1) + LittleEndian().u32(band).data(), Text::ombrBadBlock);
    if (band != 0) readBand(layout.bandBlockAt);
    readCamera(layout.depthBlockAt + 12);
}

void OmbrReader::readBand(std::uint64_t block)
{
    constexpr std::uint32_t largestHeight = 65535;
    expect(block, blockStart(3), Text::ombrBadBlock);
    const std::uint32_t first = u32(block + 8), whole = u32(block + 12);
    if (whole > largestHeight) throw OmbrFault(block + 12, Text::ombrBadBlock);
    if (first > whole || whole - first < static_cast<std::uint32_t>(about.height))
        throw OmbrFault(block + 8, Text::ombrBadBlock);
    about.band = ImageHeader::Band{static_cast<int>(first), static_cast<int>(whole)};
}

void OmbrReader::readCamera(std::uint64_t block)
{
    CameraRecord& camera = about.camera;
    camera.kind = u32(block);
    if (camera.kind > 1) throw OmbrFault(block, Text::ombrBadCamera);
    double numbersOf[24];
    need(block + 4, sizeof numbersOf + 4);
    source.read(block + 4, numbersOf, sizeof numbersOf);
    for (std::size_t i = 0; i < std::size(numbersOf); ++i)
        if (!std::isfinite(numbersOf[i])) throw OmbrFault(block + 4 + 8 * i, Text::ombrBadCamera);
    const auto vector = [&numbersOf](std::size_t i) {
        return Vector<3>(numbersOf[3 * i], numbersOf[3 * i + 1], numbersOf[3 * i + 2]);
    };
    camera.eye = Point<3>() + vector(0);
    camera.right = vector(1);
    camera.up = vector(2);
    camera.forward = vector(3);
    camera.vertical = vector(4);
    camera.firstPixel = vector(5);
    camera.lastPixel = vector(6);
    camera.near = numbersOf[21];
    camera.far = numbersOf[22];
    camera.unitsScale = numbersOf[23];
    if (camera.vertical != Vector<3>(0, 0, 1)) throw OmbrFault(block + 4 + 8 * 12, Text::ombrBadCamera);
    if (camera.far < camera.near) throw OmbrFault(block + 4 + 8 * 22, Text::ombrBadCamera);
    camera.unitsCode = u32(block + 4 + sizeof numbersOf);
    if (camera.unitsCode > 8) throw OmbrFault(block + 4 + sizeof numbersOf, Text::ombrBadCamera);
}

void OmbrReader::checkMaterial(const Layout& layout)
{
    const auto width = static_cast<std::uint32_t>(about.width);
    const Strips strips{layout.material, 4 * width, 2 * width, 1};
    expect(layout.materialDirectory, singleChannel(about, strips, 16, layout.materialBlockAt, 0),
           Text::ombrBadDirectory);
    expectStrips(layout.material, strips.inRecord, strips.bytes);
    expect(layout.materialBlockAt, blockStart(2), Text::ombrBadBlock);
}

/// The records lie one after another between the rows and the material image.
void OmbrReader::readMaterials(const Layout& layout)
{
    std::uint64_t at = rowAt(about.height), last = 0;
    if (layout.material - at > mostMaterialBytes) throw OmbrFault(at, Text::ombrBadMaterial);
    while (at < layout.material) {
        last = std::exchange(at, readMaterial(at, layout.material, last));
    }
    if (u32(layout.materialBlockAt + 8) != about.materials.size())
        throw OmbrFault(layout.materialBlockAt + 8, Text::ombrBadBlock);
    if (u32(layout.materialBlockAt + 12) != last)
        throw OmbrFault(layout.materialBlockAt + 12, Text::ombrBadBlock);
}

/// Where the record ends. `end` is where all of them do.
std::uint64_t OmbrReader::readMaterial(std::uint64_t at, std::uint64_t end, std::uint64_t previous)
{
    constexpr std::uint64_t numbersOfRecord = 9;
    if (end - at < numbersOfRecord + 1) throw OmbrFault(at, Text::ombrBadMaterial);
    if (u32(at) != previous) throw OmbrFault(at, Text::ombrBadMaterial);
    ImageMaterial material{u16(at + 4), {}, {}};
    if (material.number == 0) throw OmbrFault(at + 4, Text::ombrBadMaterial);
    source.read(at + 6, material.colour.data(), 3);
    std::uint64_t next = at + numbersOfRecord;
    for (bool ended = false; !ended;) {
        char piece[256];
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(sizeof piece, end - next));
        if (count == 0) throw OmbrFault(end, Text::ombrBadMaterial);
        source.read(next, piece, count);
        const std::size_t length = std::find(piece, piece + count, '\0') - piece;
        material.name.append(piece, length);
        ended = length < count;
        next += length + ended;
    }
    if (next % 2 != 0) expect(next++, std::string(1, '\0'), Text::ombrBadMaterial);
    about.materials.push_back(std::move(material));
    return next;
}

void OmbrReader::readRow(int row) { source.read(rowAt(row), record.data(), record.size()); }

OmbrReader::RowRules OmbrReader::rowRules() const
{
    RowRules rules{std::vector<bool>(65536), false, {}};
    for (const ImageMaterial& material : about.materials) rules.known[material.number] = true;
    return rules;
}

void OmbrReader::checkRow(int row, RowRules& rules)
{
    readRow(row);
    const std::size_t width = depths.size();
    for (std::size_t i = 0; i < width; ++i) {
        const bool empty = depths[i] == noDepthCode;
        const std::uint64_t materialAt = rowAt(row) + 4 * width + 2 * i,
                            colourAt = rowAt(row) + 6 * width + 3 * i;
        if (empty != (numbers[i] == 0)) throw OmbrFault(materialAt, Text::ombrHalfEmpty);
        if (!empty && !rules.known[numbers[i]]) throw OmbrFault(materialAt, Text::ombrNoRecord);
        if (!empty) continue;
        const std::uint8_t* const colour = &colours[3 * i];
        if (!rules.hasEmpty) std::copy_n(colour, 3, rules.empty);
        rules.hasEmpty = true;
        if (!std::equal(colour, colour + 3, rules.empty)) throw OmbrFault(colourAt, Text::ombrHalfEmpty);
    }
    for (std::size_t i = 9 * width; i < record.size(); ++i)
        if (record[i] != 0) throw OmbrFault(rowAt(row) + i, Text::ombrBytesBehindRow);
}

}   // namespace belvor
