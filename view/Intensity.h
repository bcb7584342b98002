#pragma once

namespace belvor {

/// The slider position, 0 to 21, that shows an intensity; 0 is off, 11 is 1.0, and ten
/// positions are a factor of ten.
int intensityToSlider(double intensity) noexcept;

/// The intensity of a slider position: 0 at position 0, else 10^((position − 11)·0.1).
double sliderToIntensity(int position) noexcept;

}   // namespace belvor
