#include "imagefile/ExrFile.h"

#include "imagefile/ExrHeader.h"
#include "imagefile/LittleEndian.h"

#include <bit>
#include <cstring>

namespace belvor {
namespace {

static_assert(std::endian::native == std::endian::little, "numbers are written as they lie in memory");

constexpr int packingLevel = 4;   // higher ones shrink a picture by some 3 % more

/// The half nearest to byte / 255, which is 0 or no smaller than 2⁻⁸.
std::uint16_t halfOf(unsigned byte) noexcept
{
    if (byte == 0) return 0;
    const auto bits = std::bit_cast<std::uint64_t>(byte / 255.0);
    const std::uint64_t rest = bits & ((std::uint64_t{1} << 42) - 1), middle = std::uint64_t{1} << 41;
    std::uint64_t half = (bits >> 42) - (std::uint64_t{1023 - 15} << 10);
    if (rest > middle || (rest == middle && half % 2 != 0)) ++half;
    return static_cast<std::uint16_t>(half);
}

std::array<std::uint16_t, 256> allHalves() noexcept
{
    std::array<std::uint16_t, 256> halves{};
    for (unsigned byte = 0; byte < 256; ++byte) halves[byte] = halfOf(byte);
    return halves;
}

std::size_t bytesPerPixel() noexcept
{
    std::size_t bytes = 0;
    for (const ExrChannel& channel : exrChannels) bytes += channel.bytes();
    return bytes;
}

/// Bytes as zlib packs them best: those at even places first, each as its difference from the one before.
void reorder(std::span<const std::uint8_t> from, std::uint8_t* to) noexcept
{
    const std::size_t half = (from.size() + 1) / 2;
    std::uint8_t before = 128;   // the first byte stands as it is
    for (std::size_t start : {std::size_t{0}, std::size_t{1}})
        for (std::size_t i = start, k = start * half; i < from.size(); i += 2, ++k) {
            to[k] = static_cast<std::uint8_t>(from[i] - before + 128);
            before = from[i];
        }
}

template <class T>
std::uint8_t* append(std::uint8_t* to, T value) noexcept
{
    std::memcpy(to, &value, sizeof value);
    return to + sizeof value;
}

}   // namespace

ExrFile::ExrFile(OutputFile& file, const ImageHeader& header)
    : output(file),
      scale(header.camera),
      matte(header.materials),
      height(header.height),
      halves(allHalves()),
      rgb(3 * static_cast<std::size_t>(header.width)),
      depth(static_cast<std::size_t>(header.width)),
      material(depth.size()),
      rowBytes(bytesPerPixel() * depth.size()),
      block(exrRowsPerBlock * rowBytes),
      reordered(block.size()),
      deflater(packingLevel, block.size()),
      blockStarts(static_cast<std::size_t>((header.height + exrRowsPerBlock - 1) / exrRowsPerBlock))
{
    const std::string begin = exrHeader(header, matte);
    output.write(begin);
    tableAt = static_cast<long long>(begin.size());
    output.write(blockStarts.data(), blockStarts.size() * sizeof blockStarts[0]);   // known at the end
    position = tableAt + static_cast<long long>(blockStarts.size() * sizeof blockStarts[0]);
}

/// The channels in the order of exrChannels.
void ExrFile::addRow(std::uint8_t* to) const
{
    const std::size_t width = depth.size();
    const auto addColour = [&](std::size_t channel) {
        for (std::size_t i = 0; i < width; ++i) to = append(to, halves[rgb[3 * i + channel]]);
    };
    addColour(2);
    std::memset(to, 0, 8 * width);   // no second material in a pixel
    to += 8 * width;
    for (std::size_t i = 0; i < width; ++i) to = append(to, material[i] == 0 ? 0.0f : 1.0f);
    for (std::size_t i = 0; i < width; ++i) to = append(to, matte.idOf(material[i]));
    addColour(1);
    for (std::size_t i = 0; i < width; ++i) to = append(to, std::uint32_t{material[i]});
    addColour(0);
    for (std::size_t i = 0; i < width; ++i) to = append(to, static_cast<float>(scale.distance(depth[i])));
    std::memcpy(to, depth.data(), 4 * width);
}

void ExrFile::writeRow()
{
    addRow(block.data() + rowsInBlock * static_cast<std::ptrdiff_t>(rowBytes));
    if (++rowsInBlock == exrRowsPerBlock || rowsDone + rowsInBlock == height) writeBlock();
}

void ExrFile::writeBlock()
{
    const std::size_t size = static_cast<std::size_t>(rowsInBlock) * rowBytes;
    reorder(std::span(block).first(size), reordered.data());
    std::span<const std::uint8_t> bytes = deflater.pack(std::span(reordered).first(size));
    if (bytes.size() >= size) bytes = std::span(block).first(size);   // as it was
    LittleEndian start;
    start.u32(static_cast<std::uint32_t>(rowsDone)).u32(static_cast<std::uint32_t>(bytes.size()));
    output.write(start.data());
    output.write(bytes.data(), bytes.size());
    blockStarts[static_cast<std::size_t>(rowsDone / exrRowsPerBlock)] = static_cast<std::uint64_t>(position);
    position += static_cast<long long>(start.data().size() + bytes.size());
    rowsDone += rowsInBlock;
    rowsInBlock = 0;
}

void ExrFile::finish()
{
    output.seek(tableAt);
    output.write(blockStarts.data(), blockStarts.size() * sizeof blockStarts[0]);
    output.finish();
}

}   // namespace belvor
