#include "view/ViewGestures.h"

#include "view/PanelRecords.h"
#include "view/ViewEdits.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

constexpr double steepest = 89.5;   // degrees: at the pole itself a view has no bearing

ViewParameters turned(const ViewParameters& view, double across, double down)
{
    SphereMarker eye = eyeMarker(view);
    eye.bearing -= across;   // the model follows the mouse, so the eye goes the other way
    if (down > 0.0) eye.elevation = std::max(eye.elevation, std::min(eye.elevation + down, steepest));
    if (down < 0.0) eye.elevation = std::min(eye.elevation, std::max(eye.elevation + down, -steepest));
    return turn(view, eye);
}

ViewParameters advanced(const ViewParameters& view, double notches)
{
    EyeSlideRecord asked = eyeSlideRecord(view);
    if (notches != 0.0) asked.eye = asked.lookAt + (asked.eye - asked.lookAt) * std::pow(0.9, notches);
    return moveAlongSight(view, asked);
}

/// How far eye and look-at point go for the picture to follow, in view space.
Vector<3> panned(const ViewParameters& view, const ViewGesture& step, const Camera& camera,
                 const UniformTransform<3>& viewToModel)
{
    const double x = camera.centreX, y = camera.centreY;
    if (view.parallel)
        return viewToModel.unapply(camera.unproject({x, y, 0.0}))
               - viewToModel.unapply(camera.unproject({x + step.across, y + step.down, 0.0}));
    // At unit distance; the same angle is longer where the look-at point is.
    return (view.lookAt - view.eye).length()
           * (camera.unproject({x, y, -camera.scale})
              - camera.unproject({x + step.across, y + step.down, -camera.scale}));
}

}   // namespace

ViewParameters gestured(const ViewParameters& view, const ViewGesture& step, const Camera& camera,
                        const UniformTransform<3>& viewToModel)
{
    switch (step.kind) {
    case ViewGesture::Kind::zoom: return zoomBy(view, std::exp2(step.down / -8.0));
    case ViewGesture::Kind::turn: return turned(view, step.across, step.down);
    case ViewGesture::Kind::advance: return advanced(view, step.down);
    case ViewGesture::Kind::pan: break;
    }
    if (step.across == 0.0 && step.down == 0.0) return view;
    ViewParameters next = view;
    const Vector<3> way = panned(view, step, camera, viewToModel);
    next.eye += way;
    next.lookAt += way;
    if (!next.finite() || next == view) return view;
    next.imageSaved = false;
    return next;
}

double turnedDegrees(int pixels, int width, int height) noexcept
{
    return 180.0 * pixels / std::max(1, std::min(width, height));
}

double wheelNotches(int delta, bool fine) noexcept { return delta / (fine ? 960.0 : 120.0); }

}   // namespace belvor
