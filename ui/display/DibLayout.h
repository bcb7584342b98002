#pragma once

namespace belvor {

/// Bytes a row of a 24-bit bitmap takes: three a pixel, padded to whole groups of four.
constexpr int dibStride(int width) noexcept { return (width + 1) * 3 / 4 * 4; }

/// Pixels a metre on a screen of `dotsPerInch`.
constexpr int pixelsPerMetre(int dotsPerInch) noexcept { return dotsPerInch * 5000 / 127; }

}   // namespace belvor
