#pragma once

#include "calcore/Transform.h"
#include "scene/Camera.h"
#include "view/ViewParameters.h"

#include <cstdint>

namespace belvor {

/// One step of what the wheel and the middle and right button do in the drawing area and on the eye slide.
struct ViewGesture {
    enum class Kind : std::uint32_t {
        zoom,   ///< `down` notches of the wheel away from the user: closer by the eighth root of two each.
        turn,   ///< The eye about the look-at point: by `across` and `down` degrees of the picture's motion.
        advance,   ///< The eye along the line of sight: each of `down` notches takes a tenth of the way to
                   ///< the look-at point on the eye slide.
        pan,       ///< Eye and look-at point together: the picture follows by `across` and `down` pixels.
    };
    Kind kind = Kind::zoom;
    double across = 0.0, down = 0.0;   ///< To the right and down, as seen in the picture.
    std::uint32_t number = 0;          ///< Steps of one gesture have the same; never 0.
};

/// The view after that step. A step that moves nothing, or would make a number infinite, answers the
/// view as it was, bit for bit. `camera` is the one that the drawing area was last drawn with. The
/// eye does not pass over the poles, since the picture would turn upside down.
ViewParameters gestured(const ViewParameters& view, const ViewGesture& step, const Camera& camera,
                        const UniformTransform<3>& viewToModel);

/// Degrees that a turn makes of `pixels`: half a circle is as long as the shorter side of the picture.
double turnedDegrees(int pixels, int width, int height) noexcept;

/// Notches of a wheel's report of `delta`, of which 120 are a notch; an eighth of them with `fine`.
double wheelNotches(int delta, bool fine) noexcept;

}   // namespace belvor
