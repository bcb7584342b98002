#pragma once

#include "calcore/Transform.h"
#include "platform/Handle.h"
#include "scene/Camera.h"
#include "scene/Light.h"
#include "view/ViewCommands.h"
#include "view/ViewParameters.h"

namespace belvor {

/// Where a model lies, as its bounds say.
struct ModelPlace {
    Point<3> centre;       ///< In model units.
    double radius = 1.0;   ///< In model units, as reported; cameras use usableRadius() of it.

    /// View space to model space.
    UniformTransform<3> viewToModel() const noexcept;
};

/// What a render needs besides the model and the sink. Shared between threads, never changed.
struct Scene {
    Handle<Camera> camera;
    Handle<LightSet> lights;
};

/// Half the diagonal of the area that a parallel projection shows at zoom 1, in radii of the model.
inline constexpr double parallelHalfDiagonal = 4.6;

/// The camera and lights of `view` for a window (or image) of `width` × `height` pixels,
/// each at least 1. The field keeps the proportions of the image file's size. Any thread.
Scene buildScene(const ViewParameters& view, const ModelPlace& place, const ImageSize& image, int width,
                 int height);

enum class Thumbnail { plan, elevation };

/// The fixed camera and lights of a thumbnail panel of `width` × `height` pixels, each at least 1.
Scene buildThumbnailScene(Thumbnail which, const ModelPlace& place, int width, int height);

}   // namespace belvor
