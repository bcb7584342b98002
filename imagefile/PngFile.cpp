#include "imagefile/PngFile.h"

#include "calcore/BigEndian.h"
#include "imagefile/ImageDescription.h"
#include "imagefile/SeekableOutput.h"
#include "imagefile/ZlibMemory.h"
#include "text/JsonText.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace belvor {
namespace {

constexpr std::size_t pixelBytes = 3;
enum Filter : std::uint8_t { noFilter = 0, upFilter = 2 };

}   // namespace

/// Packs all rows into one stream, which is cut into chunks of the file.
struct PngFile::Packer {
    Packer()
    {
        takeMemoryFromHere(stream);
        // The fastest level: pictures with flat colours shrink nearly as well as with the best.
        if (deflateInit2(&stream, 1, Z_DEFLATED, 15, 8, Z_DEFAULT_STRATEGY) != Z_OK) throw std::bad_alloc();
        stream.next_out = packed;
        stream.avail_out = sizeof packed;
    }
    Packer(const Packer&) = delete;
    Packer& operator=(const Packer&) = delete;
    ~Packer() { deflateEnd(&stream); }

    z_stream stream{};
    std::uint8_t packed[1u << 16];
};

PngFile::PngFile(OutputFile& output, std::uint32_t width, std::uint32_t height)
    : PngFile([&output](const void* bytes, std::size_t count) { writeTo(output, bytes, count); }, width,
              height)
{}

PngFile::PngFile(Sink sink, std::uint32_t width, std::uint32_t height)
    : write(std::move(sink)),
      current(1 + pixelBytes * width),
      above(current.size()),
      noDifference(current.size()),
      packer(std::make_unique<Packer>())
{
    static constexpr std::uint8_t signature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    write(signature, sizeof signature);
    std::uint8_t header[13] = {0, 0, 0, 0, 0, 0, 0, 0, 8, 2, 0, 0, 0};   // 8 bits, red green blue
    writeBigEndian(header, width);
    writeBigEndian(header + 4, height);
    writeChunk("IHDR", header);
    current[0] = above[0] = noFilter;
    noDifference[0] = upFilter;
}

PngFile::~PngFile() = default;

void PngFile::writeChunk(const char (&type)[5], std::span<const std::uint8_t> data)
{
    std::uint8_t start[8], end[4];
    writeBigEndian(start, static_cast<std::uint32_t>(data.size()));
    std::memcpy(start + 4, type, 4);
    uLong check = crc32(0, start + 4, 4);
    if (!data.empty()) check = crc32(check, data.data(), static_cast<uInt>(data.size()));
    writeBigEndian(end, static_cast<std::uint32_t>(check));
    write(start, sizeof start);
    write(data.data(), data.size());
    write(end, sizeof end);
}

/// A row like the one above is a row of zero differences. Others are packed as they are: working out
/// their differences takes about as long as packing them, and shortens little.
void PngFile::writeRow()
{
    pack(current == above ? noDifference : current, false);
    std::swap(current, above);
}

void PngFile::pack(std::span<const std::uint8_t> bytes, bool last)
{
    z_stream& stream = packer->stream;
    stream.next_in = const_cast<std::uint8_t*>(bytes.data());   // not written to
    stream.avail_in = static_cast<uInt>(bytes.size());
    for (bool done = false; !done;) {
        const int status = deflate(&stream, last ? Z_FINISH : Z_NO_FLUSH);
        done = last ? status == Z_STREAM_END : stream.avail_in == 0 && stream.avail_out != 0;
        if (stream.avail_out != 0 && !(last && done)) continue;
        const std::size_t count = sizeof packer->packed - stream.avail_out;
        if (count != 0) writeChunk("IDAT", {packer->packed, count});
        stream.next_out = packer->packed;
        stream.avail_out = sizeof packer->packed;
    }
}

void PngFile::finishPixels() { pack({}, true); }

void PngFile::addText(std::string_view keyword, std::string_view text)
{
    static constexpr std::uint8_t plainInNoLanguage[5] = {};   // ends the keyword too
    std::vector<std::uint8_t> data(keyword.begin(), keyword.end());
    data.insert(data.end(), std::begin(plainInNoLanguage), std::end(plainInNoLanguage));
    data.insert(data.end(), text.begin(), text.end());
    writeChunk("iTXt", data);
}

void PngFile::finish() { writeChunk("IEND", {}); }

PngPicture::PngPicture(OutputFile& output, const ImageHeader& header)
    : file(output, static_cast<std::uint32_t>(header.width), static_cast<std::uint32_t>(header.height))
{
    if (!header.texts.view.empty()) texts.emplace_back("Belvor view", header.texts.view);
    if (!header.texts.hash.empty()) texts.emplace_back("Belvor hash", header.texts.hash);
    if (!header.band) return;
    texts.emplace_back("Belvor band", std::to_string(header.band->firstRow) + ' '
                                          + std::to_string(header.band->wholeHeight));
    JsonText camera;
    describeCamera(camera, header.camera);
    texts.emplace_back("Belvor camera", camera.text());
}

void PngPicture::finish()
{
    file.finishPixels();
    for (const auto& [keyword, text] : texts) file.addText(keyword, text);
    file.finish();
}

}   // namespace belvor
