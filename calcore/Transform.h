#pragma once

#include "calcore/Angle.h"
#include "calcore/Point.h"

#include <array>

namespace belvor {

/// A square matrix, addressed by row and column.
template <int N>
class Matrix {
public:
    constexpr Matrix() noexcept   // identity
    {
        for (int i = 0; i < N; ++i) (*this)(i, i) = 1.0;
    }
    constexpr double operator()(int row, int column) const noexcept
    {
        return rows[static_cast<std::size_t>(row)][column];
    }
    constexpr double& operator()(int row, int column) noexcept
    {
        return rows[static_cast<std::size_t>(row)][column];
    }

    friend constexpr Vector<N> operator*(const Matrix& m, const Vector<N>& v) noexcept
    {
        Vector<N> result;
        for (int i = 0; i < N; ++i) result[i] = dot(m.rows[static_cast<std::size_t>(i)], v);
        return result;
    }
    friend constexpr Matrix operator*(const Matrix& a, const Matrix& b) noexcept
    {
        Matrix result;
        for (int i = 0; i < N; ++i)
            for (int j = 0; j < N; ++j) {
                double sum = a(i, 0) * b(0, j);
                for (int k = 1; k < N; ++k) sum += a(i, k) * b(k, j);
                result(i, j) = sum;
            }
        return result;
    }

private:
    std::array<Vector<N>, N> rows;
};

/// p → matrix·p + translation. `(a * b)(p)` is `a(b(p))`.
template <int N>
class AffineTransform {
public:
    constexpr AffineTransform() noexcept = default;   // identity
    constexpr AffineTransform(const Matrix<N>& matrix, const Vector<N>& translation) noexcept
        : matrixPart(matrix),
          translationPart(translation)
    {}

    constexpr Point<N> operator()(const Point<N>& p) const noexcept
    {
        return Point<N>::origin() + (matrixPart * p.vector() + translationPart);
    }
    /// Vectors are not translated.
    constexpr Vector<N> operator()(const Vector<N>& v) const noexcept { return matrixPart * v; }

    constexpr const Matrix<N>& matrix() const noexcept { return matrixPart; }
    constexpr const Vector<N>& translation() const noexcept { return translationPart; }

    friend constexpr AffineTransform operator*(const AffineTransform& a, const AffineTransform& b) noexcept
    {
        return {a.matrixPart * b.matrixPart, a.matrixPart * b.translationPart + a.translationPart};
    }

private:
    Matrix<N> matrixPart;
    Vector<N> translationPart;
};

/// Uniform scale, rotation and translation: keeps angles.
template <int N>
class UniformTransform : public AffineTransform<N> {
public:
    constexpr UniformTransform() noexcept = default;   // identity

    static constexpr UniformTransform scale(double factor) noexcept
    {
        Matrix<N> m;
        for (int i = 0; i < N; ++i) m(i, i) = factor;
        return {m, {}, factor};
    }
    static constexpr UniformTransform translation(const Vector<N>& v) noexcept { return {{}, v, 1.0}; }
    /// Counter-clockwise; about +z in three dimensions.
    static UniformTransform rotation(Angle angle) noexcept
    {
        const double sine = angle.sin();
        Matrix<N> m;
        m(0, 0) = m(1, 1) = angle.cos();
        m(1, 0) = sine;
        m(0, 1) = -sine;
        return {m, {}, 1.0};
    }
    /// Takes +x and +z to the unit vectors `x` and `z`, which are perpendicular.
    static constexpr UniformTransform zxAxes(const Vector<3>& z, const Vector<3>& x) noexcept requires(N == 3)
    {
        const Vector<3> y = z.cross(x);
        Matrix<3> m;
        for (int i = 0; i < 3; ++i) {
            m(i, 0) = x[i];
            m(i, 1) = y[i];
            m(i, 2) = z[i];
        }
        return {m, {}, 1.0};
    }

    using AffineTransform<N>::operator();
    using AffineTransform<N>::translation;

    constexpr double scaleFactor() const noexcept { return factor; }

    /// The point that this transform takes to `p`. The scale must not be 0.
    constexpr Point<N> unapply(const Point<N>& p) const noexcept
    {
        const Vector<N> moved = p.vector() - this->translation();
        Point<N> result;
        for (int i = 0; i < N; ++i) {
            double sum = this->matrix()(0, i) * moved[0];
            for (int k = 1; k < N; ++k) sum += this->matrix()(k, i) * moved[k];
            result[i] = sum / factor / factor;
        }
        return result;
    }

    friend constexpr UniformTransform operator*(const UniformTransform& a, const UniformTransform& b) noexcept
    {
        const AffineTransform<N> product =
            static_cast<const AffineTransform<N>&>(a) * static_cast<const AffineTransform<N>&>(b);
        return {product.matrix(), product.translation(), a.factor * b.factor};
    }

private:
    constexpr UniformTransform(const Matrix<N>& m, const Vector<N>& t, double scaleFactor) noexcept
        : AffineTransform<N>(m, t),
          factor(scaleFactor)
    {}
    double factor = 1.0;
};

/// A scale of its own along each axis.
template <int N>
class NonUniformTransform : public AffineTransform<N> {
public:
    static constexpr NonUniformTransform scale(const Vector<N>& factors) noexcept
    {
        Matrix<N> m;
        for (int i = 0; i < N; ++i) m(i, i) = factors[i];
        return NonUniformTransform(m);
    }

private:
    explicit constexpr NonUniformTransform(const Matrix<N>& m) noexcept : AffineTransform<N>(m, {}) {}
};

}   // namespace belvor
