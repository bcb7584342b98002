#pragma once

#include "scene/Camera.h"

#include <array>

namespace belvor {

/// Where pixels and model points meet, from what an image file tells of its camera alone. Pixel (i, j) is
/// sampled at x = i, y = j.
class PictureGeometry {
public:
    PictureGeometry(const CameraRecord& camera, int width, int height) noexcept;

    /// The model point that pixel (column, row) shows at `distance` along `forward`.
    Point<3> point(double column, double row, double distance) const noexcept;

    /// The width of a pixel in model units; perspective: at distance 1.
    double pixelSize() const noexcept { return pixel; }

    using Matrix = std::array<std::array<double, 4>, 4>;   ///< For points as rows: (x, y, z, 1) × matrix.
    /// To x along `right`, y along `up`, z along `forward` of the eye; of the parallel camera's middle, since
    /// it has no eye.
    Matrix worldToCamera() const noexcept;
    /// To the picture from (0, 0) in its upper left corner to (1, 1) in the lower right one; a sample lies in
    /// the middle of its pixel.
    Matrix worldToPicture() const noexcept;

private:
    const bool perspective;
    const int width, height;
    const Point<3> origin;   // the eye; parallel: under pixel (0, 0) on the far plane
    const Vector<3> right, up, forward;
    double pixel;                  // the width of a pixel, perspective: at distance 1
    double firstAcross, firstUp;   // of pixel (0, 0) from the axis, perspective: at distance 1
    double far;
};

}   // namespace belvor
