#include "imagefile/OmbrBuff.h"

#include <cstring>
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

/// The sizes as the file holds them, once they are known to fit.
struct Sizes {
    Sizes(const Model& model, int w, int h) : width(static_cast<std::uint16_t>(w)), height(static_cast<std::uint16_t>(h))
    {
        unsigned long long materials = 0;
        for (const auto& [key, material] : model.materials()) materials += OmbrFile::materialBytes(material.name);
        OmbrFile::checkSize(w, h, materials);
    }
    std::uint16_t width, height;
};

}   // namespace

OmbrPicture::OmbrPicture(const std::string& path, Handle<Model> scene, Handle<Camera> view, int width, int height)
    : model(std::move(scene)), camera(std::move(view)),
      file(path, Sizes(*model, width, height).width, static_cast<std::uint16_t>(height), version, recordOf(*camera, *model))
{
}

void OmbrPicture::writeRow(const Buffer& row)
{
    const int width = row.width();
    std::uint32_t owner = Buffer::noFacet;   // of the pixel before: neighbours mostly share a facet
    std::uint16_t number = 0;
    std::uint8_t colour[3] = {0, 0, 0};
    for (int i = 0; i < width; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (row.owner(i) != owner) {
            owner = row.owner(i);
            const Facet* const facet = owner == Buffer::noFacet ? nullptr : &row.facet(owner);
            number = facet ? facet->material->index : std::uint16_t{0};
            for (std::size_t c = 0; c < 3; ++c) colour[c] = facet ? facet->colour[c] : std::uint8_t{0};
        }
        file.depth[at] = owner == Buffer::noFacet ? OmbrFile::noDepth : camera->depthCode(row.depth(i));
        file.material[at] = number;
        std::memcpy(&file.rgb[3 * at], colour, 3);
    }
    file.writeRow();
}

void OmbrPicture::finish()
{
    for (const auto& [key, material] : model->materials())
        file.addMaterial(material.index, toByte(material.colour[0]), toByte(material.colour[1]), toByte(material.colour[2]),
                         material.name);
    file.close();
}

OmbrBuff::OmbrBuff(const std::string& path, Handle<Model> model, Handle<Camera> camera, int width, int height)
    : Buffer(width), picture(path, std::move(model), std::move(camera), width, height)
{
}

void OmbrBuff::lineDone(int) { picture.writeRow(*this); }

}   // namespace belvor
