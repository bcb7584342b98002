#include "ui/display/WindowBuffer.h"

namespace belvor {

WindowBuffer::WindowBuffer(HWND shownIn, Handle<DibSection> target, bool showRows)
    : Buffer(target->width()),
      window(shownIn),
      dib(std::move(target)),
      progressive(showRows)
{}

WindowBuffer::~WindowBuffer()
{
    if (!progressive) InvalidateRect(window, nullptr, FALSE);
}

void WindowBuffer::lineDone(int row)
{
    if (!cleared) dib->fill(classBrush(window));
    cleared = true;
    if (row < 0 || row >= dib->height()) return;

    std::uint8_t* pixel = dib->row(row);
    for (int column = 0; column < width(); ++column, pixel += 3) {
        const std::uint32_t nearest = owner(column);
        if (nearest == noFacet) continue;   // the background shows
        const auto shade = colour(nearest);
        pixel[0] = shade[2];
        pixel[1] = shade[1];
        pixel[2] = shade[0];
    }
    if (!progressive) return;
    const WindowDC dc(window);
    if (dc) dib->copyRows(dc.get(), row, row + 1);   // without it the next paint shows the row
}

}   // namespace belvor
