#pragma once

#include "calcore/DoubleDouble.h"

namespace belvor {

// The functions of Trigonometry.h in 320 bits behind the point, for the few arguments where two
// doubles do not decide how the result is rounded; some microseconds a call. The bits behind the
// last place that a rounding can hang on are far fewer: no double is known whose sine, cosine or
// arctangent lies closer to a number between two doubles than 2^-70 of the last place, and of the
// quotients of two doubles a random one comes as close as is undecided here once in 2^180 calls.

/// `radians`, finite and not 0, less the nearest multiple of π/2.
struct WideRemainder {
    DoubleDouble rest;   ///< In about [−π/4, π/4]; wrong by at most 2^-105 of it.
    int quadrant;        ///< 0 to 3.
};
WideRemainder wideRemainder(double radians) noexcept;

/// The sine of `radians` plus `quarters` (0 to 3) right angles; `radians` finite and not below
/// 2^-27.
double wideSine(double radians, int quarters) noexcept;

/// The angle arctan(part/whole), subtracted from π/2 when `steep` and then from π when `left`:
/// 0 ≤ part ≤ whole, whole in [0.5, 1), and the ratio at least 2^-56 when neither is set.
/// `nearby` is a double no farther from arctan(part/whole) than 2^-50 of it.
double wideArctangent(double part, double whole, double nearby, bool steep, bool left) noexcept;

}   // namespace belvor
