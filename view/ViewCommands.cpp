#include "view/ViewCommands.h"

#include "calcore/Trigonometry.h"

#include <algorithm>
#include <cmath>

namespace belvor {

ViewParameters wholeModel(const ViewParameters& current, const ImageSize& image)
{
    constexpr double zoom = 0.364;   // about tan 20°
    const double width = image.width, height = image.height;
    const double narrower = std::min(width, height) / std::sqrt(width * width + height * height);
    const double distance = 1.0 / sine(arctangent(zoom * narrower));
    ViewParameters view = current;
    view.zoom = zoom;
    view.eye = Point<3>::origin() + distance * Vector<3>(-1.75, -1.75, 1.43).unit();
    view.lookAt = Point<3>::origin();
    view.imageSaved = false;
    return view;
}

ViewParameters increaseZoomAngle(const ViewParameters& current)
{
    ViewParameters view = current;
    view.zoom = std::sqrt(2.0) * current.zoom;
    view.imageSaved = false;
    return view;
}

ViewParameters centreLookAt(const ViewParameters& current)
{
    ViewParameters view = current;
    view.lookAt = Point<3>::origin();
    view.imageSaved = false;
    return view;
}

}   // namespace belvor
