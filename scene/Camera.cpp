#include "scene/Camera.h"

#include "platform/Processors.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace belvor {
namespace {

/// Keeps every vertex strictly inside the depth range.
constexpr double margin = 1.001;
/// Leaves 4294967295 free to mean that no surface was hit.
constexpr double lastDepthCode = 4294967294.0;

double alongSight(const Ray& frame, const CameraView& view) noexcept
{
    return dot(frame.forward, view.centre - view.eye);
}

/// The smaller quotient fits the whole field into the image, whatever its aspect.
double usableScale(const CameraView& view, double largest) noexcept
{
    const double fitted = std::min(view.width / view.viewWidth, view.height / view.viewHeight);
    return fitted > 0.0 && fitted <= largest ? fitted : largest;
}

/// The low 32 bits of a code once it is truncated; 0 for one that is not finite.
std::uint32_t truncated(double code) noexcept
{
    if (!std::isfinite(code)) return 0;
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(std::fmod(code, 4294967296.0)));
}

/// A code truncated into the depth range; 0 for one that is not a number.
std::uint32_t clamped(double code) noexcept
{
    if (!(code > 0.0)) return 0;
    return static_cast<std::uint32_t>(std::min(code, lastDepthCode));
}

/// The codes of depths whose exact code is `exact(depth)`, as if all lay in the range, in steps that a
/// processor does for several depths at a time: adding 2^52 leaves no bits for fractions, so that the sum's
/// low bits are the integer, and its high bits tell whether it was one of 32 bits. Whether all were.
template <class Exact>
[[gnu::always_inline]] inline bool truncateInRange(std::span<const double> depths, std::uint32_t* codes,
                                                   Exact exact) noexcept
{
    constexpr double noFractions = 4503599627370496.0;
    constexpr auto pattern = std::bit_cast<std::uint64_t>(noFractions);
    std::uint64_t differences = 0;
    for (std::size_t i = 0; i < depths.size(); ++i) {
        const double code = exact(depths[i]);
        const double rounded = code + noFractions;
        const double rest = code - (rounded - noFractions);   // negative when it was rounded up
        const auto bits = std::bit_cast<std::uint64_t>(rounded) - (std::bit_cast<std::uint64_t>(rest) >> 63);
        differences |= bits ^ pattern;
        codes[i] = static_cast<std::uint32_t>(bits);
    }
    return differences >> 32 == 0;
}

#if defined(__x86_64__)
// The same, number for number, for processors with AVX2 and with AVX-512.

template <class Exact>
[[gnu::target("avx2")]] bool truncateWide(std::span<const double> depths, std::uint32_t* codes,
                                          Exact exact) noexcept
{
    return truncateInRange(depths, codes, exact);
}

template <class Exact>
[[gnu::target("avx512f,avx512vl,avx512dq,avx512bw")]] bool truncateWidest(std::span<const double> depths,
                                                                          std::uint32_t* codes,
                                                                          Exact exact) noexcept
{
    return truncateInRange(depths, codes, exact);
}

const bool codesWide = hasWideVectors(), codesWidest = hasWidestVectors();

template <class Exact>
bool truncateFast(std::span<const double> depths, std::uint32_t* codes, Exact exact) noexcept
{
    if (codesWidest) return truncateWidest(depths, codes, exact);
    if (codesWide) return truncateWide(depths, codes, exact);
    return truncateInRange(depths, codes, exact);
}
#else
template <class Exact>
bool truncateFast(std::span<const double> depths, std::uint32_t* codes, Exact exact) noexcept
{
    return truncateInRange(depths, codes, exact);
}
#endif

template <class Exact>
void truncateAll(std::span<const double> depths, std::uint32_t* codes, Exact exact) noexcept
{
    if (truncateFast(depths, codes, exact)) return;
    for (std::size_t i = 0; i < depths.size(); ++i) codes[i] = truncated(exact(depths[i]));
}

// The projections with all that they need beside them: a loop over many points keeps it at hand.

struct ScreenFrame {
    explicit ScreenFrame(const Camera& camera) noexcept
        : right(camera.frame.right),
          up(camera.frame.up),
          forward(camera.frame.forward),
          scale(camera.scale),
          centreX(camera.centreX),
          centreY(camera.centreY)
    {}

    const Vector<3> right, up, forward;
    const double scale, centreX, centreY;
};

class PerspectiveMap : ScreenFrame {
public:
    explicit PerspectiveMap(const PerspectiveCamera& camera) noexcept
        : ScreenFrame(camera),
          eye(camera.eye),
          justBehind(-(camera.far - camera.near) * 5e-13)
    {}

    Point<3> operator()(const Point<3>& point) const noexcept
    {
        const Vector<3> v = point - eye;
        const double ahead = dot(forward, v);
        // A point in the eye's own plane would be infinitely far to the side: it is taken as just behind.
        const double d = ahead == 0.0 ? justBehind : ahead;
        return {centreX + scale * dot(right, v) / d, centreY - scale * dot(up, v) / d, 0.0 - scale / d};
    }

private:
    const Point<3> eye;
    const double justBehind;
};

class ParallelMap : ScreenFrame {
public:
    explicit ParallelMap(const ParallelCamera& camera) noexcept
        : ScreenFrame(camera),
          reference(camera.reference)
    {}

    Point<3> operator()(const Point<3>& point) const noexcept
    {
        const Vector<3> w = scale * (point - reference);
        return {centreX + dot(right, w), centreY - dot(up, w), dot(forward, w)};
    }

private:
    const Point<3> reference;
};

template <class Map>
void replaceAll(CoordinateBlock& points, Map map) noexcept
{
    for (std::size_t i = 0; i < CoordinateBlock::size; ++i) {
        const Point<3> moved = map(Point<3>(points.x[i], points.y[i], points.z[i]));
        points.x[i] = moved[0];
        points.y[i] = moved[1];
        points.z[i] = moved[2];
    }
}

}   // namespace

Camera::Camera(const CameraView& view, double largestScale) noexcept
    : frame(view.azimuth, view.elevation),
      width(view.width),
      height(view.height),
      eye(view.eye),
      radius(view.radius),
      near(alongSight(frame, view) - view.radius * margin),
      far(alongSight(frame, view) + view.radius * margin),
      depthScale(lastDepthCode / (far - near)),
      scale(usableScale(view, largestScale)),
      centreX(view.width * 0.5),
      centreY(view.height * 0.5)
{}

CameraRecord Camera::record(std::uint32_t kind) const noexcept
{
    return {kind, eye, frame.right, frame.up, frame.forward, {0, 0, 1}, {}, {}, near, far};
}

PerspectiveCamera::PerspectiveCamera(const CameraView& view) noexcept : Camera(view, 1e15) {}

void PerspectiveCamera::project(CoordinateBlock& points) const noexcept
{
    replaceAll(points, [map = PerspectiveMap(*this)](const Point<3>& point) { return map(point); });
}

Point<3> PerspectiveCamera::project(const Point<3>& point) const noexcept
{
    return PerspectiveMap(*this)(point);
}

Point<3> PerspectiveCamera::unproject(const Point<3>& screen) const noexcept
{
    const double across = (screen[0] - centreX) / scale, down = (screen[1] - centreY) / scale;
    const double t = -1.0 / (screen[2] / scale);
    return eye + t * (across * frame.right - down * frame.up + frame.forward);
}

Plane PerspectiveCamera::screenPlane(const Plane& plane) const noexcept
{
    const double a = dot(frame.right, plane.normal()), b = -dot(frame.up, plane.normal());
    const double k = plane.offset() - dot(plane.normal(), eye.vector());
    return {Vector<3>(a, b, k), centreX * a + centreY * b - scale * dot(frame.forward, plane.normal())};
}

bool PerspectiveCamera::faces(const Plane& plane) const noexcept { return plane.distanceTo(eye) >= 0.0; }

CameraRecord PerspectiveCamera::describe() const noexcept
{
    CameraRecord result = record(0);
    result.firstPixel = unproject({0.0, 0.0, -scale}).vector();
    result.lastPixel = unproject({width - 1.0, height - 1.0, -scale}).vector();
    return result;
}

void PerspectiveCamera::depthCodes(std::span<const double> depths, std::uint32_t* codes) const noexcept
{
    truncateAll(depths, codes,
                [s = scale, n = near, d = depthScale](double depth) { return (-(s / depth) - n) * d; });
}

std::uint32_t PerspectiveCamera::clampedDepthCode(double depth) const noexcept
{
    return clamped((-(scale / depth) - near) * depthScale);
}

ParallelCamera::ParallelCamera(const CameraView& view) noexcept
    : Camera(view, 1e15 / view.radius),
      reference(eye + frame.forward * far)
{}

void ParallelCamera::project(CoordinateBlock& points) const noexcept
{
    replaceAll(points, [map = ParallelMap(*this)](const Point<3>& point) { return map(point); });
}

Point<3> ParallelCamera::project(const Point<3>& point) const noexcept { return ParallelMap(*this)(point); }

Point<3> ParallelCamera::unproject(const Point<3>& screen) const noexcept
{
    const double across = (screen[0] - centreX) / scale, down = (screen[1] - centreY) / scale,
                 deep = screen[2] / scale;
    return reference + (across * frame.right - down * frame.up + deep * frame.forward);
}

Plane ParallelCamera::screenPlane(const Plane& plane) const noexcept
{
    const Vector<3>& n = plane.normal();
    const double a = dot(frame.right, n), b = -dot(frame.up, n), c = dot(frame.forward, n);
    return {Vector<3>(a, b, c),
            centreX * a + centreY * b + scale * (plane.offset() - dot(n, reference.vector()))};
}

bool ParallelCamera::faces(const Plane& plane) const noexcept
{
    return dot(frame.forward, plane.normal()) <= 0.0;
}

CameraRecord ParallelCamera::describe() const noexcept
{
    CameraRecord result = record(1);
    result.eye = unproject({0.0, 0.0, 0.0});
    result.lastPixel = {(width - 1.0) / scale, (1.0 - height) / scale, 0.0};
    return result;
}

void ParallelCamera::depthCodes(std::span<const double> depths, std::uint32_t* codes) const noexcept
{
    truncateAll(depths, codes, [s = scale, f = far, n = near, d = depthScale](double depth) {
        return (depth / s + f - n) * d;
    });
}

std::uint32_t ParallelCamera::clampedDepthCode(double depth) const noexcept
{
    return clamped((depth / scale + far - near) * depthScale);
}

}   // namespace belvor
