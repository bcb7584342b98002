#pragma once

namespace belvor {

// The functions of angles that a picture depends on. The ones of the standard library differ
// between systems in the last digits, and so would the bytes of an image file; these use only
// operations whose results are fixed. Sine and cosine lie within one unit in the last place of
// the true value, the arctangent within three.

/// Of an angle in radians. Beyond a million the angle is taken modulo the double nearest to
/// 2π; what is not finite gives NaN.
double sine(double radians) noexcept;
double cosine(double radians) noexcept;

/// Radians in [−π/2, π/2].
double arctangent(double value) noexcept;
/// The direction of (x, y) in radians, counter-clockwise from +x, in [−π, π]; signs of zeros
/// count as for std::atan2.
double arctangent(double y, double x) noexcept;

}   // namespace belvor
