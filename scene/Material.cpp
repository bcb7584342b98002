#include "scene/Material.h"

#include <cmath>
#include <utility>

namespace belvor {

MaterialSequence& MaterialSequence::ofProgram() noexcept
{
    static MaterialSequence sequence;
    return sequence;
}

Material MaterialSequence::next(std::string name)
{
    const std::uint16_t index = nextIndex();
    return {index, nextColour(), std::move(name)};
}

std::uint16_t MaterialSequence::nextIndex() noexcept
{
    const std::uint16_t index = counter++;
    if (counter == 0) counter = 1;
    return index;
}

Colour MaterialSequence::nextColour() noexcept
{
    static const double step = (std::sqrt(5.0) - 1.0) * 0.5 * 3.0;
    hue += step;
    if (hue >= 3.0) hue -= 3.0;
    const int sector = static_cast<int>(hue);
    const double fraction = hue - sector;
    constexpr double divisor = 2.0;   // keeps every component at or above one half
    const double high = (divisor - 1.0 + fraction) / divisor;
    const double low = (divisor - fraction) / divisor;
    switch (sector) {
    case 0: return {1.0, high, low};
    case 1: return {low, 1.0, high};
    default: return {high, low, 1.0};
    }
}

}   // namespace belvor
