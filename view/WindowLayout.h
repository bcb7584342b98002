#pragma once

#include "view/PixelArea.h"
#include "view/PixelScale.h"
#include "view/ViewCommands.h"

namespace belvor {

/// What decides where the main window's children lie.
struct WindowShape {
    int width = 0, height = 0;   ///< The client area, pixels.
    int statusHeight = 0;
    bool fullScreen = false;   ///< The drawing area has the window to itself.
    bool showControls = true;
    ImageSize image;      ///< The drawing area keeps its proportions.
    PixelScale scale{};   ///< Of the monitor.
};

inline constexpr int smallestWindowWidth = 250, smallestWindowHeight = 450;   ///< At 96 dots an inch.

struct WindowLayout {
    static constexpr int controlsWidth = 176;   ///< At 96 dots an inch.
    static constexpr int statusParts = 4;

    PixelArea status;                 ///< Not moved in full screen.
    int partEnds[statusParts] = {};   ///< Right ends of the status bar's parts.
    PixelArea controls;               ///< Only to be moved when shown.
    PixelArea display;                ///< Never smaller than one pixel.
};

WindowLayout layOut(const WindowShape& shape) noexcept;

}   // namespace belvor
