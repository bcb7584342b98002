#include "view/StandardViews.h"

#include "scene/Ray.h"
#include "view/Direction.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

struct Row {
    const char* name;
    double side[3];   ///< Of the model, that the eye is on.
};

constexpr Row rows[standardViewCount] = {
    {"plan", {0, 0, 1}},    {"below", {0, 0, -1}},  {"front", {0, -1, 0}}, {"back", {0, 1, 0}},
    {"left", {-1, 0, 0}},   {"right", {1, 0, 0}},   {"iso-ne", {1, 1, 1}}, {"iso-nw", {-1, 1, 1}},
    {"iso-se", {1, -1, 1}}, {"iso-sw", {-1, -1, 1}}};

const Row& rowOf(StandardView view) noexcept { return rows[static_cast<std::size_t>(view)]; }

bool sameWord(std::string_view written, std::string_view name) noexcept
{
    return std::equal(written.begin(), written.end(), name.begin(), name.end(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a | 0x20) : a) == b;
    });
}

/// Positions and zoom as they are after a parameter file has kept them. Once is enough but where a coordinate
/// is lost in the rounding of the model's centre.
void keepSavedNumbers(ViewParameters& view, const ModelPlace& place)
{
    for (int times = 0; times < 4 && view.finiteInModel(place.centre, place.radius); ++times) {
        ViewParameters read = view;
        read.parse(view.text(place.centre, place.radius), place.centre, place.radius);
        if (read.eye == view.eye && read.lookAt == view.lookAt && read.zoom == view.zoom) return;
        view.eye = read.eye;
        view.lookAt = read.lookAt;
        view.zoom = read.zoom;
    }
}

/// The larger share that the projected box has of the picture's width or height, in model units a pixel.
double unitsPerPixelOf(const ViewParameters& view, const Extent<3>& box, const ModelPlace& place,
                       const ImageSize& image)
{
    if (box.degenerate()) return 0.0;
    const Vector<3> sight = view.lookAt - view.eye;
    const Ray frame(bearing(sight), elevation(sight));
    const Point<3> eye = place.viewToModel()(view.eye);
    double across = 0.0, upwards = 0.0;
    for (int corner = 0; corner < 8; ++corner) {
        const Point<3> point((corner & 1 ? box.hi() : box.lo())[0], (corner & 2 ? box.hi() : box.lo())[1],
                             (corner & 4 ? box.hi() : box.lo())[2]);
        across = std::max(across, std::fabs(dot(frame.right, point - eye)));
        upwards = std::max(upwards, std::fabs(dot(frame.up, point - eye)));
    }
    return std::max(2.0 * across / image.width, 2.0 * upwards / image.height);
}

}   // namespace

const char* nameOf(StandardView view) noexcept { return rowOf(view).name; }

std::optional<StandardView> standardViewNamed(std::string_view name) noexcept
{
    for (int i = 0; i < standardViewCount; ++i)
        if (sameWord(name, rows[i].name)) return static_cast<StandardView>(i);
    return {};
}

ViewParameters standardView(const ViewParameters& current, StandardView which, const Extent<3>& box,
                            const ModelPlace& place, const ImageSize& image)
{
    const double radius = usableRadius(place.radius);
    double distance = 5.0;   // in radii
    // Six digits of coordinates far from the origin are coarse: from farther away the direction stays exact.
    for (int axis = 0; axis < 3; ++axis)
        distance = std::max(distance, std::fabs(place.centre[axis]) / radius);
    const double(&side)[3] = rowOf(which).side;

    ViewParameters view = current;
    view.parallel = true;
    view.imageSaved = false;
    view.lookAt = Point<3>::origin();
    view.eye = Point<3>::origin() + distance * Vector<3>(side[0], side[1], side[2]).unit();
    keepSavedNumbers(view, place);
    constexpr double room = 1.02;
    double unitsPerPixel = room * unitsPerPixelOf(view, box, place, image);
    const double least = 1e-4 * radius / std::min(image.width, image.height);   // a model seen as a point
    if (!(unitsPerPixel > least)) unitsPerPixel = room * 2.0 * radius / std::min(image.width, image.height);
    view.zoom = zoomForScale(unitsPerPixel, radius, image);
    keepSavedNumbers(view, place);
    return view;
}

double zoomForScale(double unitsPerPixel, double radius, const ImageSize& image) noexcept
{
    const double width = image.width, height = image.height;
    const double diagonal = std::sqrt(width * width + height * height);
    return diagonal * unitsPerPixel / (2.0 * parallelHalfDiagonal * usableRadius(radius));
}

}   // namespace belvor
