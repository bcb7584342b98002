#pragma once

namespace belvor {

/// The scale of a monitor. The program's pixel numbers are those of 96 dots an inch; this is the one
/// place where they are turned into pixels of another scale. At 96 every number stays as it is.
struct PixelScale {
    int dotsPerInch = 96;

    /// `pixels` at 96 dots an inch, rounded to the nearest pixel; a half goes away from 0.
    constexpr int operator()(int pixels) const noexcept
    {
        return (pixels * dotsPerInch + (pixels < 0 ? -48 : 48)) / 96;
    }
    /// The same without rounding, for what is turned before it is rounded.
    constexpr double exact(double pixels) const noexcept { return pixels * dotsPerInch / 96.0; }
    friend bool operator==(const PixelScale&, const PixelScale&) noexcept = default;
};

/// The index of the largest picture that fits the scale, of those made for 16, 20, 24 and 32 pixels.
constexpr int pictureOf(PixelScale scale) noexcept
{
    return scale(16) >= 32 ? 3 : scale(16) >= 24 ? 2 : scale(16) >= 20 ? 1 : 0;
}
inline constexpr int pictureSizes[] = {16, 20, 24, 32};

}   // namespace belvor
