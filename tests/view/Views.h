#pragma once

#include "view/SceneBuilder.h"
#include "view/ViewCommands.h"

namespace belvor::test {

/// Of a box of 2 × 4 × 6 with a corner at the origin.
inline const ModelPlace boxPlace{{1, 2, 3}, 3.74165738677394};

/// The whole model, in an image file already.
inline ViewParameters savedView(bool parallel = false)
{
    ViewParameters view = wholeModel(freshView(), ImageSize{800, 600});
    view.imageSaved = true;
    view.parallel = parallel;
    return view;
}

/// That of the drawing area, 608 × 456 pixels.
inline Handle<Camera> cameraOf(const ViewParameters& view)
{
    return buildScene(view, boxPlace, {800, 600}, 608, 456).camera;
}

}   // namespace belvor::test
