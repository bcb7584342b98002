#include "view/Intensity.h"

#include <cmath>

namespace belvor {

int intensityToSlider(double intensity) noexcept
{
    if (!(intensity >= 0.09)) return 0;
    if (intensity >= 11.22) return 21;
    return static_cast<int>(10.0 * std::log10(intensity) + 11.5);
}

double sliderToIntensity(int position) noexcept
{
    return position == 0 ? 0.0 : std::pow(10.0, (position - 11) * 0.1);
}

}   // namespace belvor
