#pragma once

namespace belvor {

// The functions of angles that a picture depends on. The ones of the standard library differ
// between systems in the last digits, and so would the bytes of an image file. These are rounded
// correctly: each result is the double nearest to the true value, so any other implementation
// that rounds correctly gives the same bits. Some 50 ns a call.

/// Of an angle in radians, of any size;
/// what is not finite gives NaN.
double sine(double radians) noexcept;
double cosine(double radians) noexcept;

/// Radians in [−π/2, π/2].
double arctangent(double value) noexcept;
/// The direction of (x, y) in radians, counter-clockwise from +x, in [−π, π]; signs of zeros
/// count as for std::atan2.
double arctangent(double y, double x) noexcept;

}   // namespace belvor
