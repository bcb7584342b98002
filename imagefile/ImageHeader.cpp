#include "imagefile/ImageHeader.h"

namespace belvor {

ImageHeader headerOf(const Model& model, const Camera& camera, int width, int height)
{
    ImageHeader header{width, height, camera.describe(), {}, {}, {}, {}};
    header.camera.unitsScale = model.units().scale;
    header.camera.unitsCode = model.units().code;
    if (header.camera.kind != 0) header.pixelSize = 1.0 / camera.scale;
    header.materials.reserve(model.materials().size());
    for (const auto& [key, material] : model.materials()) {
        const Colour& colour = material.colour;
        header.materials.push_back(
            {material.index, {toByte(colour[0]), toByte(colour[1]), toByte(colour[2])}, material.name});
    }
    ModelBounds& bounds = header.bounds.emplace();
    model.bounds(bounds.centre, bounds.radius);
    return header;
}

}   // namespace belvor
