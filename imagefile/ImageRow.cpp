// A finished row of a render as image files hold it.

#include "imagefile/ImageWriter.h"
#include "render/Buffer.h"
#include "scene/Camera.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace belvor {
namespace {

using Rgb = std::array<std::uint8_t, 3>;

static_assert(std::endian::native == std::endian::little, "pixels are written several at a time");

std::uint64_t pairAt(const std::uint32_t* owners)
{
    std::uint64_t pair = 0;
    std::memcpy(&pair, owners, sizeof pair);
    return pair;
}

/// Where the run of equal owners from `first` on ends; looks at four at a time.
std::size_t endOfRun(std::span<const std::uint32_t> owners, std::size_t first)
{
    const std::uint64_t pair = owners[first] * std::uint64_t{0x100000001};
    std::size_t end = first + 1;
    for (; end + 4 <= owners.size(); end += 4) {
        const std::uint64_t low = pairAt(&owners[end]) ^ pair, high = pairAt(&owners[end + 2]) ^ pair;
        if ((low | high) == 0) continue;
        const std::uint64_t different = low != 0 ? low : high;
        return end + (low != 0 ? 0 : 2) + (static_cast<std::uint32_t>(different) == 0);
    }
    while (end < owners.size() && owners[end] == owners[first]) ++end;
    return end;
}

/// Fills the pixels `first` to `end` − 1 of a row with eight equal ones at a time, which `eight` holds. Those
/// behind them, where the row has as many, are filled too: the runs that follow write over them.
template <std::size_t words>
void repeat(const std::uint64_t (&eight)[words], std::size_t first, std::size_t end, std::size_t width,
            void* row)
{
    constexpr std::size_t pixelsAtOnce = 8, bytesOfPixel = words;
    auto* to = static_cast<std::uint8_t*>(row) + bytesOfPixel * first;
    const auto writeEight = [&eight](std::uint8_t* pixels) {   // word by word: they are in registers
        for (std::size_t i = 0; i < words; ++i) std::memcpy(pixels + 8 * i, &eight[i], 8);
    };
    std::size_t left = end - first;
    for (; left >= pixelsAtOnce; left -= pixelsAtOnce, to += 8 * words) writeEight(to);
    if (end - left + pixelsAtOnce <= width) writeEight(to);
    else std::memcpy(to, eight, bytesOfPixel * left);
}

void fillRun(std::size_t first, std::size_t end, std::uint16_t material, const Rgb& colour,
             const ImageRow& into)
{
    if (!into.material.empty()) {
        const std::uint64_t four = material * std::uint64_t{0x0001000100010001}, eight[] = {four, four};
        repeat(eight, first, end, into.material.size(), into.material.data());
    }
    if (!into.rgb.empty()) {
        const std::uint64_t one =
            std::uint32_t{colour[0]} | std::uint32_t{colour[1]} << 8 | std::uint32_t{colour[2]} << 16;
        const std::uint64_t two = one | one << 24;
        const std::uint64_t eight[] = {two | one << 48, one >> 16 | two << 8 | one << 56,
                                       one >> 8 | two << 16};
        repeat(eight, first, end, into.rgb.size() / 3, into.rgb.data());
    }
}

void codeDepths(const Buffer& row, const Camera& camera, std::size_t first, std::size_t end,
                std::span<std::uint32_t> codes)
{
    if (first == end || codes.empty()) return;
    camera.depthCodes(row.depths().subspan(first, end - first), &codes[first]);
    if (!row.hasLines()) return;
    for (std::size_t i = first; i < end; ++i)   // lines may leave the depth range, surfaces cannot
        if (row.isLine(row.owners()[i])) codes[i] = camera.clampedDepthCode(row.depths()[i]);
}

}   // namespace

void fillRow(const Buffer& row, const Camera& camera, const ImageRow& into)
{
    const std::span<const std::uint32_t> owners = row.owners();
    const std::size_t width = owners.size();
    std::size_t covered = 0;   // pixels up to `first` that have a surface and no depth code yet
    for (std::size_t first = 0, end = 0; first < width; first = end) {   // neighbours mostly share a facet
        const std::uint32_t owner = owners[first];
        end = endOfRun(owners, first);
        if (owner != Buffer::noFacet) {
            fillRun(first, end, row.material(owner), row.colour(owner), into);
            covered += end - first;
        } else {
            fillRun(first, end, 0, row.background(), into);
            if (!into.depth.empty()) std::fill(&into.depth[first], &into.depth[end - 1] + 1, noDepthCode);
            codeDepths(row, camera, first - covered, first, into.depth);
            covered = 0;
        }
    }
    codeDepths(row, camera, width - covered, width, into.depth);
}

}   // namespace belvor
