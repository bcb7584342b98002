#pragma once

#include "calcore/CoordinateBlock.h"
#include "calcore/Plane.h"
#include "platform/Handle.h"
#include "scene/Ray.h"

#include <cstdint>
#include <span>

namespace belvor {

/// What a camera tells about itself to an image file, in the file's own terms.
struct CameraRecord {
    std::uint32_t kind;   ///< 0 perspective, 1 parallel.
    Point<3> eye;         ///< Parallel: the model point under pixel (0, 0) on the far plane.
    Vector<3> right, up, forward, vertical;
    Vector<3> firstPixel;   ///< Perspective: the model point under pixel (0, 0) at unit distance; else 0.
    Vector<3> lastPixel;    ///< The same of the last pixel; parallel: the image's extent in model units.
    double near, far;
    double unitsScale = 1.0;
    std::uint32_t unitsCode = 0;
};

/// What a camera is built from.
struct CameraView {
    std::uint32_t width, height;   ///< Image size in pixels.
    Point<3> eye;                  ///< Model coordinates, as all that follows.
    double azimuth, elevation;     ///< Viewing direction in degrees, as for a Ray.
    double viewWidth,
        viewHeight;    ///< Visible field: at unit distance (perspective) or in model units (parallel).
    Point<3> centre;   ///< The model's centre
    double radius;     ///< and radius: they fix the depth range.
};

/// Maps model coordinates to the pixels of one image and back. Screen x runs right and y
/// down in pixels, pixel (i, j) is sampled at (i, j), and depth is negative in front of the
/// eye. Depth is affine over a plane's picture. Never changed after construction.
class Camera : public TSHandlable {
public:
    /// The model-space `plane` in screen space (x, y, depth).
    virtual Plane screenPlane(const Plane& plane) const noexcept = 0;
    virtual Point<3> project(const Point<3>& point) const noexcept = 0;
    /// Puts the projections in the place of the points, the same to the last bit.
    virtual void project(CoordinateBlock& points) const noexcept = 0;
    virtual Point<3> unproject(const Point<3>& screen) const noexcept = 0;
    /// Whether the eye is on the side of the plane that its normal points to.
    virtual bool faces(const Plane& plane) const noexcept = 0;
    virtual CameraRecord describe() const noexcept = 0;
    /// Screen depths as the image file stores them, one code for each: 0 at the near end of
    /// the range, 4294967294 at the far end, truncated and kept to its low 32 bits; 0 for a
    /// depth that is not finite. `codes` has room for as many as `depths`.
    virtual void depthCodes(std::span<const double> depths, std::uint32_t* codes) const noexcept = 0;
    /// The same of one depth that may lie outside the range: the code of the nearer end of it.
    virtual std::uint32_t clampedDepthCode(double depth) const noexcept = 0;

    const Ray frame;
    const std::uint32_t width, height;
    const Point<3> eye;
    const double radius;      ///< Of the model.
    const double near, far;   ///< Distances from the eye along the line of sight.
    const double depthScale;
    const double scale;   ///< Pixels per unit of the field.
    const double centreX, centreY;

protected:
    /// `largestScale` replaces a scale that is not positive or larger.
    Camera(const CameraView& view, double largestScale) noexcept;
    CameraRecord record(std::uint32_t kind) const noexcept;
};

class PerspectiveCamera : public Camera {
public:
    explicit PerspectiveCamera(const CameraView& view) noexcept;
    Plane screenPlane(const Plane& plane) const noexcept override;
    Point<3> project(const Point<3>& point) const noexcept override;
    void project(CoordinateBlock& points) const noexcept override;
    Point<3> unproject(const Point<3>& screen) const noexcept override;
    bool faces(const Plane& plane) const noexcept override;
    CameraRecord describe() const noexcept override;
    void depthCodes(std::span<const double> depths, std::uint32_t* codes) const noexcept override;
    std::uint32_t clampedDepthCode(double depth) const noexcept override;
};

class ParallelCamera : public Camera {
public:
    explicit ParallelCamera(const CameraView& view) noexcept;
    Plane screenPlane(const Plane& plane) const noexcept override;
    Point<3> project(const Point<3>& point) const noexcept override;
    void project(CoordinateBlock& points) const noexcept override;
    Point<3> unproject(const Point<3>& screen) const noexcept override;
    bool faces(const Plane& plane) const noexcept override;
    CameraRecord describe() const noexcept override;
    void depthCodes(std::span<const double> depths, std::uint32_t* codes) const noexcept override;
    std::uint32_t clampedDepthCode(double depth) const noexcept override;

    const Point<3> reference;   ///< A point on the far plane.
};

}   // namespace belvor
