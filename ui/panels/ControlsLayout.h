#pragma once

#include "ui/panels/Pixels.h"

#include <array>
#include <cstddef>

namespace belvor {

constexpr int controlSliders = 7;   // sky, ground, five parallel lights
constexpr int swatches = 5;         // one beside each parallel light

/// The place of a child window.
struct Place {
    int x = 0, y = 0, width = 0, height = 0;
    friend bool operator==(const Place&, const Place&) noexcept = default;
};

/// Where everything in the control strip stands. In a strip that is too low or narrow some
/// sizes come out negative and the frame upside down; nothing is then seen of those.
struct ControlsLayout {
    int gapX = 0, gapY = 0;
    Place toolbar, eyeSlide, plan, elevation, sphere;
    std::array<Place, controlSliders> sliders;
    PixelRect groupFrame, separator;
    std::array<PixelRect, swatches> colours;
};

ControlsLayout layOutControls(PixelSize client) noexcept;

}   // namespace belvor
