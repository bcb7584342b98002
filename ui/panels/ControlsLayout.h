#pragma once

#include "ui/panels/Pixels.h"
#include "view/PixelArea.h"
#include "view/PixelScale.h"

#include <array>
#include <cstddef>

namespace belvor {

constexpr int controlSliders = 7;   // sky, ground, five parallel lights
constexpr int swatches = 5;         // one beside each parallel light

/// Where everything in the control strip lies, in pixels of the strip's client area. In a strip
/// that is too low or narrow some sizes are negative and the frame ends above its beginning;
/// nothing is then seen of those.
struct ControlsLayout {
    int gapX = 0, gapY = 0;   ///< Between the parts.
    PixelArea toolbar, eyeSlide, plan, elevation, sphere;
    std::array<PixelArea, controlSliders> sliders;   ///< In the order of their control numbers.
    PixelRect groupFrame;                            ///< About the sliders.
    PixelRect separator;   ///< Its top edge divides the sky and ground sliders from the lights.
    std::array<PixelRect, swatches> colours;   ///< Of the lights, from light 1 on.
    std::array<PixelRect, 2> ambientMarks;     ///< The same place beside the sky and the ground slider.
    int height = 0;   ///< Of everything, from the top of the first to the bottom of the last.

    /// Whether the last slider could not be reached in a strip of that height.
    bool exceeds(int clientHeight) const noexcept;
    /// Ends the frame below the last slider and moves everything up by so many pixels.
    void scroll(int by) noexcept;
};

/// The layout for a strip of that size, in pixels of the monitor. Any thread.
ControlsLayout layOutControls(PixelSize client, PixelScale scale = {}) noexcept;

}   // namespace belvor
