#include "view/SceneBuilder.h"

#include "view/Direction.h"

#include <cmath>

namespace belvor {
namespace {

Colour grey(double level) { return {level, level, level}; }

}   // namespace

UniformTransform<3> ModelPlace::viewToModel() const noexcept
{
    return UniformTransform<3>::translation(centre - Point<3>::origin())
           * UniformTransform<3>::scale(usableRadius(radius));
}

Scene buildScene(const ViewParameters& view, const ModelPlace& place, const ImageSize& image, int width,
                 int height)
{
    const Handle<LightSet> lights = makeHandle<LightSet>();
    lights->set(1, makeHandle<AmbientLight>(grey(view.skyIntensity), grey(view.groundIntensity)));
    std::size_t slot = 2;
    for (const ParallelLightSetting& light : view.lights)
        if (light.intensity != 0.0)   // a setting says where the light comes from, a light where it goes
            lights->set(slot++, makeHandle<ParallelLight>(light.bearing + 180.0, -light.elevation,
                                                          grey(light.intensity)));

    const double imageWidth = image.width, imageHeight = image.height;
    const double diagonal = std::sqrt(imageWidth * imageWidth + imageHeight * imageHeight);
    double fieldWidth = 2.0 * imageWidth * view.zoom / diagonal,
           fieldHeight = 2.0 * imageHeight * view.zoom / diagonal;
    const double radius = usableRadius(place.radius);
    if (view.parallel) {
        fieldWidth = fieldWidth * parallelHalfDiagonal * radius;
        fieldHeight = fieldHeight * parallelHalfDiagonal * radius;
    }
    const Vector<3> sight = view.lookAt - view.eye;
    const CameraView camera{static_cast<std::uint32_t>(width),
                            static_cast<std::uint32_t>(height),
                            place.viewToModel()(view.eye),
                            bearing(sight),
                            elevation(sight),
                            fieldWidth,
                            fieldHeight,
                            place.centre,
                            radius};
    if (view.parallel) return {makeHandle<ParallelCamera>(camera), lights};
    return {makeHandle<PerspectiveCamera>(camera), lights};
}

Scene buildThumbnailScene(Thumbnail which, const ModelPlace& place, int width, int height)
{
    const Handle<LightSet> lights = makeHandle<LightSet>();
    lights->set(1, makeHandle<AmbientLight>(grey(0.4), grey(0.1)));
    lights->set(2, makeHandle<ParallelLight>(150.0, -60.0, grey(0.6)));
    const double radius = usableRadius(place.radius);
    const CameraView camera{static_cast<std::uint32_t>(width),
                            static_cast<std::uint32_t>(height),
                            place.centre,
                            180.0,
                            which == Thumbnail::plan ? -90.0 : 0.0,
                            4.0 * radius,
                            4.0 * radius,
                            place.centre,
                            radius};
    return {makeHandle<ParallelCamera>(camera), lights};
}

}   // namespace belvor
