#pragma once

#include "calcore/Extent.h"
#include "view/SceneBuilder.h"
#include "view/ViewCommands.h"
#include "view/ViewParameters.h"

#include <optional>
#include <string_view>

namespace belvor {

/// The parallel views that have names, by the side that the eye is on: front is −y, left is −x, plan is +z,
/// isoNE is (+1, +1, +1).
enum class StandardView { plan, below, front, back, left, right, isoNE, isoNW, isoSE, isoSW };
inline constexpr int standardViewCount = 10;

/// "plan", "iso-ne" and so on.
const char* nameOf(StandardView view) noexcept;
/// The view of that name, in any case; none when there is no such name.
std::optional<StandardView> standardViewNamed(std::string_view name) noexcept;

/// `current` with eye, look-at point, zoom and projection of a standard view; the lights are kept. The eye
/// looks at the middle of the model; +z is up, in the plan +y, in the view from below −y. The picture holds
/// `box`, the extent of the model in model units, as projected, and 2 % more on the tighter side. A model
/// without size has the field of a radius of 1. Positions and zoom are numbers that a parameter file keeps,
/// so that the view is the same once it is saved and loaded. Infinite where the model is too large
/// (finite()).
ViewParameters standardView(const ViewParameters& current, StandardView which, const Extent<3>& box,
                            const ModelPlace& place, const ImageSize& image);

/// The zoom at which a parallel view of a model of that radius has pixels of `unitsPerPixel` model units.
double zoomForScale(double unitsPerPixel, double radius, const ImageSize& image) noexcept;

}   // namespace belvor
