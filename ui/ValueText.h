#pragma once

#include "view/SceneBuilder.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace belvor {

// What a drag sets, in words, for the tip beside the pointer. `decimalPoint` is the decimal separator
// of the user's country. All texts are UTF-8.

/// The light of slider 0 to 6 at position 0 to 21.
std::string intensityText(std::size_t slider, int position, std::string_view decimalPoint);
/// Both in degrees; shown without fractions, the bearing within a half turn.
std::string directionText(double bearing, double elevation);
/// A point of the plan or elevation panel in panel units, shown in radii of the model.
std::string panelPointText(Thumbnail panel, double h, double v, std::string_view decimalPoint);
/// A position on the eye slide, shown as a distance from the model's centre.
std::string slideText(double position, std::string_view decimalPoint);
/// What the zoom value is multiplied by.
std::string zoomText(double factor, std::string_view decimalPoint);

}   // namespace belvor
