#include "ui/panels/ControlsLayout.h"

namespace belvor {

ControlsLayout layOutControls(PixelSize client, PixelScale scale) noexcept
{
    const int toolbarWidth = scale(24), toolbarHeight = scale(92), sphereButtons = scale(32),
              sliderHeight = scale(18);
    const int w = client.width, h = client.height;

    int gapX = w >= scale(112) ? scale(6) : w / 14;
    const int gapY = h >= scale(216) ? scale(6) : h / 27;
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
    layout.separator = {x, y + scale(70), x + side, y + scale(74)};
    for (int i = 0; i < controlSliders; ++i)
        layout.sliders[static_cast<std::size_t>(i)] = {
            x + scale(2), y + scale(34) + sliderHeight * i + (i >= 2 ? scale(2) : 0), side - scale(4),
            sliderHeight};
    for (int k = 0; k < swatches; ++k)   // they stick out of the frame
        layout.colours[static_cast<std::size_t>(k)] = {x + side - scale(2), y + scale(74) + sliderHeight * k,
                                                       x + side + scale(6), y + scale(88) + sliderHeight * k};
    for (std::size_t i = 0; i < layout.ambientMarks.size(); ++i) {
        const int top = layout.sliders[i].y + scale(2);
        layout.ambientMarks[i] = {x + side - scale(2), top, x + side + scale(6), top + scale(14)};
    }
    layout.height = layout.sliders.back().y + sliderHeight + scale(2) + gapY;
    return layout;
}

bool ControlsLayout::exceeds(int clientHeight) const noexcept
{
    const PixelArea& last = sliders.back();
    return last.y + last.height / 2 > clientHeight;
}

void ControlsLayout::scroll(int by) noexcept
{
    groupFrame.bottom = height - gapY;
    for (PixelArea* const area : {&toolbar, &eyeSlide, &plan, &elevation, &sphere}) area->y -= by;
    for (PixelArea& area : sliders) area.y -= by;
    const auto move = [by](PixelRect& area) {
        area.top -= by;
        area.bottom -= by;
    };
    move(groupFrame);
    move(separator);
    for (PixelRect& area : colours) move(area);
    for (PixelRect& area : ambientMarks) move(area);
}

}   // namespace belvor
