#pragma once

#include "ui/panels/Pixels.h"
#include "view/PanelRecords.h"

#include <vector>

namespace belvor {

/// The scale of the eye slide in its client area, between the two buttons: −1 at the top.
struct SlideScale {
    int x = 0;   ///< The centre line.
    int top = 0, bottom = 0;
    PixelScale pixels;   ///< Of the monitor.

    /// `buttonHeight`: of each of the two buttons at the ends.
    SlideScale(PixelSize client, int buttonHeight, PixelScale monitor = {}) noexcept;

    /// False when the area is too small to show a scale: draw nothing, take no mouse.
    bool usable() const noexcept { return bottom > top; }
    int toPixel(double position) const noexcept;
    /// For a usable scale; beyond −1 and 1 outside it.
    double toPosition(int y) const noexcept;
};

/// The drag that a press at (x, y) starts.
MarkerDrag hitMarker(const EyeSlideRecord& record, const SlideScale& scale, int x, int y,
                     bool shift) noexcept;

/// Where the markers of a drag are shown while the mouse is at height y.
struct SlideGhost {
    bool eye = false, lookAt = false;
    int eyeY = 0, lookAtY = 0;
    friend bool operator==(const SlideGhost&, const SlideGhost&) noexcept = default;
};
SlideGhost slideGhost(const EyeSlideRecord& record, MarkerDrag drag, const SlideScale& scale, int y) noexcept;

/// What to ask for when a drag ends at height y. Positions are within −1 and 1.
EyeSlideRecord draggedSlide(const EyeSlideRecord& record, MarkerDrag drag, const SlideScale& scale,
                            int y) noexcept;

/// What to ask for when a drag moves its marker by pixels down, from where it is exactly.
EyeSlideRecord nudgedSlide(const EyeSlideRecord& record, MarkerDrag drag, const SlideScale& scale,
                           int down) noexcept;

/// What to ask for after a click on a button: a tenth of the viewing distance, or half of it
/// with `large`; towards the look-at point or away from it. With `keepDistance` both move.
EyeSlideRecord steppedSlide(const EyeSlideRecord& record, bool retreat, bool large,
                            bool keepDistance) noexcept;

/// The bar that shows the model's extent; `barWidth` pixels wide.
PixelRect extentBar(const EyeSlideRecord& record, const SlideScale& scale, PixelSize client,
                    int barWidth) noexcept;

/// The centre line, open about the markers.
std::vector<PixelLine> slideLine(const EyeSlideRecord& record, const SlideScale& scale);

}   // namespace belvor
