#include "imagefile/OmbrFile.h"

#include "imagefile/TiffDirectory.h"
#include "platform/Files.h"
#include "resources/Texts.h"

#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <utility>

namespace belvor {
namespace {

static_assert(std::endian::native == std::endian::little, "rows are written as they lie in memory");

/// Tags of an image directory.
enum Tag : std::uint16_t {
    imageWidth = 256,
    imageLength = 257,
    bitsPerSample = 258,
    compression = 259,
    photometricInterpretation = 262,
    stripOffsets = 273,
    samplesPerPixel = 277,
    rowsPerStrip = 278,
    stripByteCounts = 279,
    xResolution = 282,
    yResolution = 283,
    resolutionUnit = 296,
    software = 305,
    privateBlock = 34953,
};

/// What an image holds, as its private block says.
enum BlockKind : std::uint32_t { colourChannel = 0, depthChannel = 1, materialChannel = 2, bandRows = 3 };

LittleEndian blockOf(BlockKind kind)
{
    LittleEndian block;
    block.u32(kind).u16(1).u16(0);
    return block;
}

void addVector(LittleEndian& bytes, const Vector<3>& v) { bytes.f64(v[0]).f64(v[1]).f64(v[2]); }

std::uint32_t strideOf(long long width) { return static_cast<std::uint32_t>((9 * width + 3) / 4 * 4); }

/// `count` numbers that lie in a row record from byte `at` on.
template <class T>
std::span<T> numbersIn(std::vector<unsigned char>& record, std::size_t at, std::size_t count)
{
    return {reinterpret_cast<T*>(record.data() + at), count};
}

}   // namespace

/// Where the strips of one image are written down.
struct OmbrFile::Channel {
    std::uint32_t offsets, counts;   // of the two arrays, in the file
    std::uint32_t firstOffset;       // the arrays' first values
    std::uint16_t byteCount;

    /// Arrays of at most four bytes stand in the entry itself.
    void addTo(TiffDirectory& directory, std::uint16_t samples, std::uint16_t rows) const
    {
        directory.add(stripOffsets, TiffDirectory::longInteger, rows, rows == 1 ? firstOffset : offsets);
        directory.addShort(samplesPerPixel, samples);
        directory.addShort(rowsPerStrip, 1);
        const std::uint32_t inlineCounts = rows == 1 ? byteCount : byteCount | std::uint32_t{byteCount} << 16;
        directory.add(stripByteCounts, TiffDirectory::shortInteger, rows, rows <= 2 ? inlineCounts : counts);
    }
};

OmbrFile::Error::Error() : Error(errno) {}
OmbrFile::Error::Error(int code) : Error(std::strerror(code), code) {}
OmbrFile::Busy::Busy() : Error(textOf(Text::fileBeingWritten), EBUSY) {}

void OmbrFile::checkSize(long long width, long long height, unsigned long long materialBytes)
{
    constexpr unsigned long long directories = 1024;   // more than all that has a constant size
    const bool good =
        width >= 1 && width <= largestWidth && height >= 1 && height <= largestHeight
        && static_cast<unsigned long long>(strideOf(width)) * static_cast<unsigned long long>(height)
                   + 18ull * static_cast<unsigned long long>(height) + directories + materialBytes
               <= std::numeric_limits<std::uint32_t>::max();
    if (!good) throw Error(EFBIG);
}

namespace {

/// Runs `action` on an output file, whose failures become this class's.
template <class Action>
auto onOutput(Action action) -> decltype(action())
try {
    return action();
} catch (const OutputFile::Busy&) {
    throw OmbrFile::Busy();
} catch (const FileError& error) {
    throw OmbrFile::Error(error.code());
}

constexpr std::uint32_t headerBytes = 8;

constexpr std::uint32_t madeEven(std::uint32_t position) { return position + position % 2; }

/// Where the directory of the colour image stands in a file with so many bytes of material records.
std::uint32_t colourDirectoryAt(std::uint32_t width, std::uint32_t height, std::uint32_t materialRecords,
                                std::size_t versionLength, bool isBand)
{
    const std::uint32_t bandBlock = isBand ? 16 : 0;
    constexpr std::uint32_t materialBlock = 16, depthBlock = 212, directory = 2 + 9 * 12 + 4, bits = 6,
                            resolutions = 16, colourBlock = 8;
    const std::uint32_t strips = (4 + 2) * height;
    const std::uint32_t versionAt = headerBytes + height * strideOf(width) + materialRecords + strips
                                    + materialBlock + directory + strips + bandBlock + depthBlock + directory
                                    + bits + strips + resolutions;
    return madeEven(versionAt + static_cast<std::uint32_t>(versionLength) + 1) + colourBlock;
}

}   // namespace

OmbrFile::OmbrFile(const std::string& path, std::uint16_t w, std::uint16_t h, std::string versionText,
                   const CameraRecord& view)
    : record(strideOf(w)),
      depth(numbersIn<std::uint32_t>(record, 0, w)),
      material(numbersIn<std::uint16_t>(record, 4u * w, w)),
      rgb(record.data() + 6u * w, 3u * w),
      ownOutput(onOutput([&path] { return std::make_unique<OutputFile>(path); })),
      output(*ownOutput),
      width(w),
      height(h),
      version(std::move(versionText)),
      camera(view)
{
    writeHeader(0);
}

OmbrFile::OmbrFile(OutputFile& target, std::uint16_t w, std::uint16_t h, std::string versionText,
                   const CameraRecord& view, std::uint32_t materialRecords,
                   const std::optional<ImageHeader::Band>& rows)
    : record(strideOf(w)),
      depth(numbersIn<std::uint32_t>(record, 0, w)),
      material(numbersIn<std::uint16_t>(record, 4u * w, w)),
      rgb(record.data() + 6u * w, 3u * w),
      output(target),
      width(w),
      height(h),
      version(std::move(versionText)),
      camera(view),
      band(rows)
{
    writeHeader(colourDirectoryAt(w, h, materialRecords, version.size(), band.has_value()));
}

OmbrFile::~OmbrFile()
{
    if (closed) return;
    try {
        if (!failed) writeDirectories();
        if (!failed && ownOutput && !ownOutput->replacesContent()) ownOutput->commit();
    } catch (...) {
        // A destructor cannot report it: a caller that needs to know calls close() first.
    }
}

void OmbrFile::fail()
{
    failed = true;
    throw Error();
}

void OmbrFile::write(const void* bytes, std::size_t count)
{
    if (std::fwrite(bytes, 1, count, output.stream()) != count) fail();
    written += static_cast<std::uint32_t>(count);
}

void OmbrFile::writeHeader(std::uint32_t directory)
{
    firstDirectory = directory;
    write(LittleEndian().u16(0x4949).u16(42).u32(directory).data());
    dataStart = position();
}

void OmbrFile::writeRow() { write(record.data(), record.size()); }

void OmbrFile::addMaterial(std::uint16_t index, std::uint8_t red, std::uint8_t green, std::uint8_t blue,
                           const std::string& name)
{
    const std::uint32_t at = position();
    LittleEndian bytes;
    bytes.u32(lastMaterial).u16(index).u8(red).u8(green).u8(blue).text(name, at);
    write(bytes.data());
    lastMaterial = at;
    ++materialCount;
}

void OmbrFile::close()
{
    if (std::exchange(closed, true)) return;
    if (failed) throw Error(EIO);   // what is missing has been told
    writeDirectories();
    if (ownOutput) onOutput([this] { output.commit(); });
}

void OmbrFile::writeDirectories()
{
    const std::uint32_t colourDirectory = writeColourImage(writeDepthImage(writeMaterialImage()));
    if (colourDirectory == firstDirectory) return;
    if (!seekFile(output.stream(), 4)) fail();
    write(LittleEndian().u32(colourDirectory).data());
}

/// Writes the strip arrays of an image whose pixels lie `inRecord` bytes into each row record.
OmbrFile::Channel OmbrFile::writeStrips(std::uint32_t inRecord, std::uint16_t byteCount)
{
    const std::uint32_t offsetsAt = position();
    LittleEndian offsets, counts;
    for (std::uint32_t row = 0; row < height; ++row)
        offsets.u32(dataStart + row * strideOf(width) + inRecord);
    for (std::uint32_t row = 0; row < height; ++row) counts.u16(byteCount);
    write(offsets.data());
    const std::uint32_t countsAt = position();
    write(counts.data());
    return {offsetsAt, countsAt, dataStart + inRecord, byteCount};
}

namespace {

void addSize(TiffDirectory& directory, std::uint16_t width, std::uint16_t height)
{
    directory.addShort(imageWidth, width);
    directory.addShort(imageLength, height);
}

}   // namespace

std::uint32_t OmbrFile::writeMaterialImage()
{
    const Channel strips = writeStrips(4u * width, static_cast<std::uint16_t>(2 * width));
    return writeSingleChannel(16, strips, blockOf(materialChannel).u32(materialCount).u32(lastMaterial), 0);
}

std::uint32_t OmbrFile::writeDepthImage(std::uint32_t next)
{
    const Channel strips = writeStrips(0, static_cast<std::uint16_t>(4 * width));
    const std::uint32_t bandAt = band ? position() : 0;
    if (band)
        write(blockOf(bandRows)
                  .u32(static_cast<std::uint32_t>(band->firstRow))
                  .u32(static_cast<std::uint32_t>(band->wholeHeight))
                  .data());
    LittleEndian block = blockOf(depthChannel);
    block.u32(bandAt).u32(camera.kind);
    addVector(block, camera.eye.vector());
    for (const Vector<3>* v : {&camera.right, &camera.up, &camera.forward, &camera.vertical,
                               &camera.firstPixel, &camera.lastPixel})
        addVector(block, *v);
    block.f64(camera.near).f64(camera.far).f64(camera.unitsScale).u32(camera.unitsCode);
    return writeSingleChannel(32, strips, block, next);
}

/// The private block and the directory of an image of one sample a pixel; the directory's offset.
std::uint32_t OmbrFile::writeSingleChannel(std::uint16_t bits, const Channel& strips,
                                           const LittleEndian& block, std::uint32_t next)
{
    const std::uint32_t blockAt = position();
    write(block.data());
    TiffDirectory directory;
    addSize(directory, width, height);
    directory.addShort(bitsPerSample, bits);
    directory.addShort(compression, 1);
    strips.addTo(directory, 1, height);
    directory.add(privateBlock, TiffDirectory::longInteger, 1, blockAt);
    const std::uint32_t at = position();
    write(directory.bytes(next));
    return at;
}

std::uint32_t OmbrFile::writeColourImage(std::uint32_t next)
{
    const std::uint32_t bits = position();
    write(LittleEndian().u16(8).u16(8).u16(8).data());
    const Channel strips = writeStrips(6u * width, static_cast<std::uint16_t>(3 * width));
    const std::uint32_t resolutions = position();
    write(LittleEndian().u32(100).u32(1).u32(100).u32(1).data());
    const std::uint32_t versionAt = position();
    write(LittleEndian().text(version, versionAt).data());
    const std::uint32_t block = position();
    write(blockOf(colourChannel).data());
    TiffDirectory directory;
    addSize(directory, width, height);
    directory.add(bitsPerSample, TiffDirectory::shortInteger, 3, bits);
    directory.addShort(compression, 1);
    directory.addShort(photometricInterpretation, 2);
    strips.addTo(directory, 3, height);
    directory.add(xResolution, TiffDirectory::rational, 1, resolutions);
    directory.add(yResolution, TiffDirectory::rational, 1, resolutions + 8);
    directory.addShort(resolutionUnit, 2);
    directory.add(software, TiffDirectory::ascii, static_cast<std::uint32_t>(version.size()), versionAt);
    directory.add(privateBlock, TiffDirectory::longInteger, 1, block);
    const std::uint32_t at = position();
    write(directory.bytes(next));
    return at;
}

}   // namespace belvor
