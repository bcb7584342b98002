#include "ui/panels/ControlsLayout.h"

namespace belvor {

ControlsLayout layOutControls(PixelSize client) noexcept
{
    constexpr int toolbarWidth = 24, toolbarHeight = 92, sphereButtons = 32, sliderHeight = 18;
    const int w = client.width, h = client.height;

    int gapX = w >= 112 ? 6 : w / 14;
    const int gapY = h >= 216 ? 6 : h / 27;
    int column = 3 * (w - 3 * gapX) / 11;   // the left one
    int side = w - 3 * gapX - column;       // of a square panel
    const int room = h / 3 - gapY;
    if (room < side) {   // limited by the height: the left column takes the rest
        side = room;
        gapX = (w - column - side) / 3;
        column = w - 3 * gapX - side;
    }

    ControlsLayout layout;
    layout.gapX = gapX;
    layout.gapY = gapY;
    layout.toolbar = {(column - toolbarWidth) / 2 + gapX, 0, toolbarWidth, toolbarHeight};
    layout.eyeSlide = {gapX, 2 * gapX + toolbarHeight, column,
                       h - 3 * gapY - toolbarHeight};   // gapX below the toolbar too
    const int x = column + 2 * gapX, pitch = side + gapY;
    layout.plan = {x, 0, side, side};
    layout.elevation = {x, pitch, side, side};
    layout.sphere = {x, 2 * pitch, side, side + sphereButtons};
    const int y = 3 * pitch;
    layout.groupFrame = {x, y + sphereButtons, x + side, h - gapY};
    layout.separator = {x, y + 70, x + side, y + 74};
    for (int i = 0; i < controlSliders; ++i)
        layout.sliders[static_cast<std::size_t>(i)] = {x + 2, y + 34 + sliderHeight * i + (i >= 2 ? 2 : 0),
                                                       side - 4, sliderHeight};
    for (int k = 0; k < swatches; ++k)   // they stick out of the frame
        layout.colours[static_cast<std::size_t>(k)] = {x + side - 2, y + 74 + sliderHeight * k, x + side + 6,
                                                       y + 88 + sliderHeight * k};
    return layout;
}

}   // namespace belvor
