#include "imagefile/PictureGeometry.h"

namespace belvor {

PictureGeometry::PictureGeometry(const CameraRecord& camera, int pictureWidth, int pictureHeight) noexcept
    : perspective(camera.kind == 0),
      width(pictureWidth),
      height(pictureHeight),
      origin(camera.eye),
      right(camera.right),
      up(camera.up),
      forward(camera.forward),
      far(camera.far)
{
    // From the longer side: one of a single pixel tells nothing.
    const Vector<3> extent = perspective ? camera.lastPixel - camera.firstPixel : camera.lastPixel;
    const double across = perspective ? dot(right, extent) : extent[0];
    const double down = perspective ? -dot(up, extent) : -extent[1];
    if (width > 1 || height > 1) pixel = width >= height ? across / (width - 1) : down / (height - 1);
    else
        pixel =
            perspective ? -2.0 * dot(right, camera.firstPixel - origin.vector()) : camera.far - camera.near;
    const Vector<3> first = camera.firstPixel - origin.vector();
    firstAcross = perspective ? dot(right, first) : 0.0;
    firstUp = perspective ? dot(up, first) : 0.0;
}

Point<3> PictureGeometry::point(double column, double row, double distance) const noexcept
{
    const double across = firstAcross + column * pixel, upwards = firstUp - row * pixel;
    if (perspective) return origin + distance * (forward + across * right + upwards * up);
    return origin + (across * right + upwards * up + (distance - far) * forward);
}

PictureGeometry::Matrix PictureGeometry::worldToCamera() const noexcept
{
    const double middleAcross = perspective ? 0.0 : 0.5 * width * pixel;
    const Point<3> middle =
        perspective ? origin : origin + (middleAcross * right - 0.5 * height * pixel * up - far * forward);
    const Vector<3>* const axes[] = {&right, &up, &forward};
    Matrix matrix{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        for (int i = 0; i < 3; ++i) matrix[static_cast<std::size_t>(i)][axis] = (*axes[axis])[i];
        matrix[3][axis] = -dot(*axes[axis], middle.vector());
    }
    matrix[3][3] = 1.0;
    return matrix;
}

PictureGeometry::Matrix PictureGeometry::worldToPicture() const noexcept
{
    // Columns x and y over w: ((across - firstAcross) / pixel + 1/2) / width; the perspective ones times the
    // distance, which is w.
    const double acrossScale = 1.0 / (pixel * width), upScale = -1.0 / (pixel * height);
    const double acrossMore = (0.5 - firstAcross / pixel) / width, upMore = (0.5 + firstUp / pixel) / height;
    const double ofForward = perspective ? 1.0 : 0.0;
    const Vector<3> x = acrossScale * right + ofForward * acrossMore * forward;
    const Vector<3> y = upScale * up + ofForward * upMore * forward;
    const double constant = 1.0 - ofForward;
    Matrix matrix{};
    for (int i = 0; i < 3; ++i) {
        auto& row = matrix[static_cast<std::size_t>(i)];
        row = {x[i], y[i], constant * forward[i], ofForward * forward[i]};
    }
    const Vector<3> from = origin.vector();
    const double distance = dot(forward, from);
    matrix[3] = {constant * acrossMore - dot(x, from), constant * upMore - dot(y, from),
                 perspective ? 1.0 : far - distance, perspective ? -distance : 1.0};
    return matrix;
}

}   // namespace belvor
