// A finished row of a render as image files hold it.

#include "imagefile/ImageWriter.h"
#include "render/Buffer.h"
#include "scene/Camera.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace belvor {
namespace {

using Rgb = std::array<std::uint8_t, 3>;

/// Where the run of equal owners from `first` on ends; looks at two at a time.
std::size_t endOfRun(std::span<const std::uint32_t> owners, std::size_t first)
{
    const std::uint64_t pair = owners[first] * std::uint64_t{0x100000001};
    std::size_t end = first + 1;
    for (std::uint64_t next = 0; end + 2 <= owners.size(); end += 2) {
        std::memcpy(&next, &owners[end], sizeof next);
        if (next != pair) break;
    }
    while (end < owners.size() && owners[end] == owners[first]) ++end;
    return end;
}

/// `count` pixels of one colour, written four at a time.
void repeatColour(const Rgb& colour, std::size_t count, std::uint8_t* pixels)
{
    std::uint8_t four[12];
    for (std::size_t i = 0; i < sizeof four; ++i) four[i] = colour[i % 3];
    for (; count >= 4; count -= 4, pixels += 12) std::memcpy(pixels, four, 12);
    std::memcpy(pixels, four, 3 * count);
}

void fillRun(std::size_t first, std::size_t end, std::uint16_t material, const Rgb& colour,
             const ImageRow& into)
{
    if (!into.material.empty()) std::fill(&into.material[first], &into.material[end - 1] + 1, material);
    if (!into.rgb.empty()) repeatColour(colour, end - first, &into.rgb[3 * first]);
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
