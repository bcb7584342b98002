#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace belvor {

/// Red, green and blue; 1.0 is full.
using Colour = std::array<double, 3>;

/// What a facet is made of.
struct Material {
    std::uint16_t index = 0;   ///< The material's number in an image file, never 0.
    Colour colour{};           ///< Reflectance.
    std::string name;
};

/// trunc(value × 256), 0 for 0 and below (and for what is not a number), 255 for 1 and above.
constexpr std::uint8_t toByte(double value) noexcept
{
    if (!(value > 0.0)) return 0;
    return value >= 1.0 ? std::uint8_t{255} : static_cast<std::uint8_t>(value * 256.0);
}

/// Gives every new material of a program run its number and colour. Numbers count up from 1
/// in 16 bits and start again at 1 after 65535: 0 means "no surface" in an image file. Hues
/// advance by the golden ratio, so that neighbours differ well. Used by one thread at a time.
class MaterialSequence {
public:
    /// The sequence of this program run.
    static MaterialSequence& ofProgram() noexcept;

    Material next(std::string name);
    /// The next number alone, for a material that brings its colour: the hues do not advance.
    std::uint16_t nextIndex() noexcept;
    /// As at program start.
    void reset() noexcept { *this = MaterialSequence(); }

private:
    Colour nextColour() noexcept;

    std::uint16_t counter = 1;
    double hue = 0.0;   // 0 to 3
};

}   // namespace belvor
