#pragma once

#include "calcore/Trigonometry.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace belvor {

/// A displacement in N dimensions. Arithmetic is IEEE double, evaluated x first.
template <int N>
class Vector {
public:
    constexpr Vector() noexcept : components{} {}
    constexpr Vector(double x, double y) noexcept requires(N == 2) : components{x, y} {}
    constexpr Vector(double x, double y, double z) noexcept requires(N == 3) : components{x, y, z} {}

    constexpr double operator[](int axis) const noexcept
    {
        return components[static_cast<std::size_t>(axis)];
    }
    constexpr double& operator[](int axis) noexcept { return components[static_cast<std::size_t>(axis)]; }

    constexpr Vector& operator+=(const Vector& other) noexcept
    {
        for (int axis = 0; axis < N; ++axis) (*this)[axis] += other[axis];
        return *this;
    }
    constexpr Vector& operator-=(const Vector& other) noexcept
    {
        for (int axis = 0; axis < N; ++axis) (*this)[axis] -= other[axis];
        return *this;
    }
    constexpr Vector& operator*=(double factor) noexcept
    {
        for (int axis = 0; axis < N; ++axis) (*this)[axis] *= factor;
        return *this;
    }

    /// sqrt((x² + y²) + z²): no scaling, so components beyond 1e154 overflow.
    double length() const noexcept { return std::sqrt(dot(*this, *this)); }

    /// Each component divided by the length; the zero vector stays the zero vector.
    Vector unit() const noexcept
    {
        const double size = length();
        Vector result;
        if (size == 0.0) return result;
        for (int axis = 0; axis < N; ++axis) result[axis] = (*this)[axis] / size;
        return result;
    }

    /// The right-handed cross product.
    constexpr Vector cross(const Vector& b) const noexcept requires(N == 3)
    {
        const Vector& a = *this;
        return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    }

    /// The direction in radians, counter-clockwise from +x, in (−π, π].
    double theta() const noexcept requires(N == 2) { return arctangent(components[1], components[0]); }

    friend constexpr Vector operator+(Vector a, const Vector& b) noexcept { return a += b; }
    friend constexpr Vector operator-(Vector a, const Vector& b) noexcept { return a -= b; }
    friend constexpr Vector operator*(Vector a, double factor) noexcept { return a *= factor; }
    friend constexpr Vector operator*(double factor, Vector a) noexcept { return a *= factor; }
    friend constexpr Vector operator-(Vector a) noexcept
    {
        for (int axis = 0; axis < N; ++axis) a[axis] = -a[axis];
        return a;
    }
    /// Sum of the products, x, y, z in that order.
    friend constexpr double dot(const Vector& a, const Vector& b) noexcept
    {
        double sum = a[0] * b[0];
        for (int axis = 1; axis < N; ++axis) sum += a[axis] * b[axis];
        return sum;
    }
    friend constexpr bool operator==(const Vector&, const Vector&) noexcept = default;   // exact

private:
    std::array<double, N> components;
};

/// A position in N dimensions.
template <int N>
class Point {
public:
    constexpr Point() noexcept = default;   // the origin
    constexpr Point(double x, double y) noexcept requires(N == 2) : fromOrigin(x, y) {}
    constexpr Point(double x, double y, double z) noexcept requires(N == 3) : fromOrigin(x, y, z) {}

    static constexpr Point origin() noexcept { return {}; }

    constexpr double operator[](int axis) const noexcept { return fromOrigin[axis]; }
    constexpr double& operator[](int axis) noexcept { return fromOrigin[axis]; }
    constexpr const Vector<N>& vector() const noexcept { return fromOrigin; }   ///< From the origin to here.

    constexpr Point& operator+=(const Vector<N>& v) noexcept
    {
        fromOrigin += v;
        return *this;
    }
    constexpr Point& operator-=(const Vector<N>& v) noexcept
    {
        fromOrigin -= v;
        return *this;
    }

    friend constexpr Point operator+(Point p, const Vector<N>& v) noexcept { return p += v; }
    friend constexpr Point operator-(Point p, const Vector<N>& v) noexcept { return p -= v; }
    friend constexpr Vector<N> operator-(const Point& a, const Point& b) noexcept
    {
        return a.fromOrigin - b.fromOrigin;
    }
    friend constexpr bool operator==(const Point&, const Point&) noexcept = default;   // exact

private:
    Vector<N> fromOrigin;
};

}   // namespace belvor
