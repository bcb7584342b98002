#pragma once

#include "view/ViewParameters.h"

namespace belvor {

/// The size of the picture written to the image file, in pixels.
struct ImageSize {
    int width = 800, height = 600;
};

/// The whole model as seen from −x, −y and above: the distance at which a sphere of radius
/// 1 just fits the narrower side of the picture. Lights and projection are kept.
ViewParameters wholeModel(const ViewParameters& current, const ImageSize& image);
/// The zoom value grown by √2.
ViewParameters increaseZoomAngle(const ViewParameters& current);
/// The look-at point moved to the model's centre; the eye stays.
ViewParameters centreLookAt(const ViewParameters& current);

}   // namespace belvor
