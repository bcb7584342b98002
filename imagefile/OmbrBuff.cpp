#include "imagefile/OmbrBuff.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

namespace belvor {
namespace {

constexpr const char* version = "Belvor 1.1.7 (Dec 16 1997)";

CameraRecord recordOf(const Camera& camera, const Model& model)
{
    CameraRecord record = camera.describe();
    record.unitsScale = model.units().scale;
    record.unitsCode = model.units().code;
    return record;
}

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
void repeatColour(const std::uint8_t* colour, std::size_t count, std::uint8_t* pixels)
{
    std::uint8_t four[12];
    for (std::size_t i = 0; i < sizeof four; ++i) four[i] = colour[i % 3];
    for (; count >= 4; count -= 4, pixels += 12) std::memcpy(pixels, four, 12);
    std::memcpy(pixels, four, 3 * count);
}

/// The sizes as the file holds them, once they are known to fit.
struct Sizes {
    Sizes(const Model& model, int w, int h)
        : width(static_cast<std::uint16_t>(w)),
          height(static_cast<std::uint16_t>(h))
    {
        unsigned long long materials = 0;
        for (const auto& [key, material] : model.materials())
            materials += OmbrFile::materialBytes(material.name);
        OmbrFile::checkSize(w, h, materials);
    }
    std::uint16_t width, height;
};

/// The bytes of all the model's material records; each begins at an even position.
std::uint32_t materialRecords(const Model& model)
{
    unsigned long long bytes = 0;
    for (const auto& [key, material] : model.materials()) bytes += (9 + material.name.size() + 2) / 2 * 2;
    return static_cast<std::uint32_t>(bytes);
}

}   // namespace

OmbrPicture::OmbrPicture(const std::string& path, Handle<Model> scene, Handle<Camera> view, int width,
                         int height)
    : model(std::move(scene)),
      camera(std::move(view)),
      file(path, Sizes(*model, width, height).width, static_cast<std::uint16_t>(height), version,
           recordOf(*camera, *model))
{}

OmbrPicture::OmbrPicture(OutputFile& output, Handle<Model> scene, Handle<Camera> view, int width, int height)
    : model(std::move(scene)),
      camera(std::move(view)),
      file(output, Sizes(*model, width, height).width, static_cast<std::uint16_t>(height), version,
           recordOf(*camera, *model), materialRecords(*model))
{}

void OmbrPicture::writeRow(const Buffer& row)
{
    const std::span<const std::uint32_t> owners = row.owners();
    const std::size_t width = owners.size();
    std::size_t covered = 0;   // pixels up to `first` that have a surface and no depth code yet
    for (std::size_t first = 0, end = 0; first < width; first = end) {   // neighbours mostly share a facet
        const std::uint32_t owner = owners[first];
        end = endOfRun(owners, first);
        if (owner != Buffer::noFacet) {
            fillRun(first, end, row.material(owner), row.colour(owner));
            covered += end - first;
        } else {
            fillRun(first, end, 0, row.background());
            std::fill(&file.depth[first], &file.depth[end - 1] + 1, OmbrFile::noDepth);
            codeDepths(row, first - covered, first);
            covered = 0;
        }
    }
    codeDepths(row, width - covered, width);
    file.writeRow();
}

void OmbrPicture::fillRun(std::size_t first, std::size_t end, std::uint16_t material,
                          const std::uint8_t* colour)
{
    std::fill(&file.material[first], &file.material[end - 1] + 1, material);
    repeatColour(colour, end - first, &file.rgb[3 * first]);
}

void OmbrPicture::codeDepths(const Buffer& row, std::size_t first, std::size_t end)
{
    if (first == end) return;
    camera->depthCodes(row.depths().subspan(first, end - first), &file.depth[first]);
    if (!row.hasLines()) return;
    for (std::size_t i = first; i < end; ++i)   // lines may leave the depth range, surfaces cannot
        if (row.isLine(row.owners()[i])) file.depth[i] = camera->clampedDepthCode(row.depths()[i]);
}

void OmbrPicture::finish()
{
    for (const auto& [key, material] : model->materials())
        file.addMaterial(material.index, toByte(material.colour[0]), toByte(material.colour[1]),
                         toByte(material.colour[2]), material.name);
    file.close();
}

OmbrBuff::OmbrBuff(const std::string& path, Handle<Model> model, Handle<Camera> camera, int width, int height)
    : Buffer(Sizes(*model, width, height).width),   // checked before a row takes memory
      picture(path, std::move(model), std::move(camera), width, height)
{}

void OmbrBuff::lineDone(int) { picture.writeRow(*this); }

}   // namespace belvor
