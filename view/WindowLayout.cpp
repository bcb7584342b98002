#include "view/WindowLayout.h"

#include <algorithm>
#include <cstdint>

namespace belvor {
namespace {

int rounded(double positive) { return std::max(1, static_cast<int>(positive + 0.5)); }

/// The largest area of the image's proportions within `space`, in its middle.
PixelArea fitted(const PixelArea& space, const ImageSize& image)
{
    PixelArea area = space;
    if (std::int64_t{space.width} * image.height > std::int64_t{space.height} * image.width)
        area.width = rounded(double(space.height) * image.width / image.height);
    else area.height = rounded(double(space.width) * image.height / image.width);
    area.x += (space.width - area.width) / 2;
    area.y += (space.height - area.height) / 2;
    return area;
}

}   // namespace

WindowLayout layOut(const WindowShape& shape) noexcept
{
    WindowLayout layout;
    PixelArea space{0, 0, shape.width, shape.height};
    if (!shape.fullScreen) {
        space.height -= shape.statusHeight;
        layout.status = {0, space.height, shape.width, shape.statusHeight};
        for (int part = 0; part < WindowLayout::statusParts - 1; ++part)
            layout.partEnds[part] = (part + 2) * shape.width / 5;
        layout.partEnds[WindowLayout::statusParts - 1] = shape.width;
    }
    if (!shape.fullScreen && shape.showControls) {
        const int strip = shape.scale(WindowLayout::controlsWidth);
        space.width -= strip;
        layout.controls = {space.width, 0, strip, space.height};
    }
    space.width = std::max(space.width, 1);
    space.height = std::max(space.height, 1);
    layout.display = fitted(space, shape.image);
    return layout;
}

}   // namespace belvor
