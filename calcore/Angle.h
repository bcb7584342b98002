#pragma once

#include "calcore/Trigonometry.h"

#include <numbers>

namespace belvor {

inline constexpr double radiansPerDegree = std::numbers::pi / 180.0;
inline constexpr double degreesPerRadian = 180.0 / std::numbers::pi;

constexpr double toRadians(double degrees) noexcept { return degrees * radiansPerDegree; }
constexpr double toDegrees(double radians) noexcept { return radians * degreesPerRadian; }

/// An angle that remembers its unit. Not reduced to one turn.
class Angle {
public:
    constexpr Angle() noexcept = default;   // zero
    static constexpr Angle degrees(double value) noexcept { return Angle(toRadians(value)); }
    static constexpr Angle radians(double value) noexcept { return Angle(value); }
    constexpr double degrees() const noexcept { return toDegrees(value); }
    constexpr double radians() const noexcept { return value; }
    double sin() const noexcept { return sine(value); }
    double cos() const noexcept { return cosine(value); }

private:
    explicit constexpr Angle(double radians) noexcept : value(radians) {}
    double value = 0.0;
};

}   // namespace belvor
