// Lines of the renderer against a slow evaluation of what a line's pixels are and when a surface hides them:
// all columns and rows of a line are gone through, every pixel asks the finished picture of the surfaces.
// Every bit must agree.

#include "render/Outlines.h"
#include "tests/render/Keeper.h"
#include "tests/render/RandomScenes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <optional>
#include <vector>

using namespace belvor;
using namespace belvor::test;

namespace {

enum class Sampling { curve, freeStanding, inside };

/// The same lines by definition.
class SlowLines {
public:
    SlowLines(const Model& scene, const Camera& view, const Image& owners, const Frame& shaded,
              const LineStyle& lines)
        : model(scene),
          camera(view),
          surfaces(owners),
          frame(shaded),
          style(lines),
          perspective(dynamic_cast<const PerspectiveCamera*>(&view) != nullptr),
          image(lines.surfaces ? owners : Image(view.height, std::vector<Pixel>(view.width)))
    {}

    Image run()
    {
        if (style.curves)
            for (std::uint32_t i = 0; i < model.curveCount(); ++i) drawCurve(model.curve(i));
        if (style.outlines) drawEdges();
        return image;
    }

private:
    struct Side {
        Point<3> from, to;
        std::uint32_t facet;
    };
    struct Line {
        Sampling sampling;
        std::vector<std::uint32_t> own;
        std::array<std::uint8_t, 3> colour;
        std::uint16_t material;
    };
    struct Sample {
        double x, y;
    };

    void drawCurve(const Curve& curve)
    {
        Line line{Sampling::curve, {}, {}, curve.material->index};
        for (std::size_t c = 0; c < 3; ++c)
            line.colour[c] =
                static_cast<std::uint8_t>(std::min(255.0, std::trunc(256.0 * curve.material->colour[c])));
        std::vector<Point<3>> points;
        for (std::uint32_t i = 0; i < curve.pointCount; ++i)
            points.push_back(model.curvePoint(curve.firstPoint + i));
        drawChain(points, line);
    }

    void drawEdges()
    {
        std::vector<Side> sides;
        for (std::uint32_t f = 0; f < model.facetCount(); ++f)
            for (std::uint32_t i = 0; i < model.facet(f).edgeCount; ++i) {
                const Edge& edge = model.edge(model.facet(f).firstEdge + i);
                sides.push_back({model.vertex(edge.from).position, model.vertex(edge.to).position, f});
            }
        const auto same = [](const Point<3>& a, const Point<3>& b) {
            return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
        };
        std::vector<bool> done(sides.size());
        for (std::size_t i = 0; i < sides.size(); ++i) {
            if (done[i] || same(sides[i].from, sides[i].to)) continue;
            std::vector<Side> equal;
            for (std::size_t k = i; k < sides.size(); ++k) {
                const bool forward = same(sides[i].from, sides[k].from) && same(sides[i].to, sides[k].to);
                const bool backward = same(sides[i].from, sides[k].to) && same(sides[i].to, sides[k].from);
                if (!forward && !backward) continue;
                done[k] = true;
                equal.push_back(sides[k]);
            }
            drawEdge(equal, same);
        }
    }

    template <class Same>
    void drawEdge(const std::vector<Side>& all, Same same)
    {
        std::vector<Side> sides;   // one a facet
        for (const Side& side : all)
            if (sides.empty() || sides.back().facet != side.facet) sides.push_back(side);
        const bool border = all.size() == 1;
        bool crease = false, materials = false, some = false, others = false;
        for (std::size_t i = 0; i < sides.size(); ++i) {
            const Facet& a = model.facet(sides[i].facet);
            Plane plane = a.plane;
            if (i > 0 && same(sides[i].from, sides[0].from)) plane = -plane;
            (camera.faces(plane) ? some : others) = true;
            for (std::size_t k = 0; k < i; ++k) {
                const Facet& b = model.facet(sides[k].facet);
                const double sign = same(sides[i].from, sides[k].from) ? -1.0 : 1.0;
                const double cosine = std::clamp(sign * dot(a.plane.normal(), b.plane.normal()), -1.0, 1.0);
                crease = crease || std::acos(cosine) * 180.0 / std::numbers::pi > 20.0;
                materials = materials || a.material != b.material;
            }
        }
        const bool contour = some && others;
        if (!border && !crease && !materials && !contour && !style.everyEdge) return;
        Line line{border || contour ? Sampling::freeStanding : Sampling::inside, {}, {}, 0};
        std::uint32_t shaded = sides[0].facet;
        for (std::size_t i = sides.size(); i-- > 0;)
            if (camera.faces(model.facet(sides[i].facet).plane)) shaded = sides[i].facet;
        for (const Side& side : sides) line.own.push_back(side.facet);
        for (int c = 0; c < 3; ++c)
            line.colour[c] = static_cast<std::uint8_t>(std::floor(35.0 * frame.colour(shaded)[c] / 100.0));
        line.material = model.facet(shaded).material->index;
        drawChain({sides[0].from, sides[0].to}, line);
    }

    void drawChain(const std::vector<Point<3>>& points, Line line)
    {
        if (style.colour) line.colour = *style.colour;
        if (points.size() == 1) {
            if (!inFront(points[0])) return;
            const Point<3> p = camera.project(points[0]);
            const int reach = style.width / 2;
            for (int dx = -reach; dx <= reach; ++dx)
                for (int dy = -reach; dy <= reach; ++dy)
                    put(line, p, {std::floor(p[0] + 0.5) + dx, std::floor(p[1] + 0.5) + dy}, {},
                        Sampling::curve);
            return;
        }
        std::optional<std::pair<Point<3>, Point<3>>> first;
        bool any = false;
        for (std::size_t i = 1; i < points.size(); ++i) {
            Point<3> a = points[i - 1], b = points[i];
            if (!cut(a, b)) continue;
            a = camera.project(a);
            b = camera.project(b);
            if (!std::isfinite(a[0] + a[1] + a[2] + b[0] + b[1] + b[2])) continue;
            if (!first) first = {a, b};
            any = drawSegment(a, b, line) || any;
        }
        if (any || !first) return;
        const Point<3>&a = first->first, &b = first->second;
        const Point<3> middle{(a[0] + b[0]) / 2, (a[1] + b[1]) / 2, (a[2] + b[2]) / 2};
        const int minor = std::abs(b[0] - a[0]) >= std::abs(b[1] - a[1]) ? 1 : 0;
        widen(line, middle, {std::floor(middle[0] + 0.5), std::floor(middle[1] + 0.5)}, {}, minor,
              Sampling::curve);
    }

    bool inFront(const Point<3>& p) const
    {
        return !perspective || dot(camera.frame.forward, p - camera.eye) - camera.radius / 1048576.0 >= 0.0;
    }

    bool cut(Point<3>& a, Point<3>& b) const
    {
        if (!perspective) return true;
        const double nearest = camera.radius / 1048576.0;
        const double da = dot(camera.frame.forward, a - camera.eye) - nearest,
                     db = dot(camera.frame.forward, b - camera.eye) - nearest;
        if (da < 0.0 && db < 0.0) return false;
        if (da < 0.0) a = b + (a - b) * (db / (db - da));
        else if (db < 0.0) b = a + (b - a) * (da / (da - db));
        return true;
    }

    static double along(const Point<3>& a, const Point<3>& b, int axis, double value, int wanted)
    {
        return a[wanted] + (b[wanted] - a[wanted]) * ((value - a[axis]) / (b[axis] - a[axis]));
    }

    /// False when the segment has no pixel.
    bool drawSegment(const Point<3>& a, const Point<3>& b, const Line& line)
    {
        constexpr double outside = -20;   // far enough outside, to be done with long lines in time
        const int major = std::abs(b[0] - a[0]) >= std::abs(b[1] - a[1]) ? 0 : 1, minor = 1 - major;
        if (a[major] == b[major]) return false;
        const double first = std::ceil(std::min(a[major], b[major])),
                     last = std::floor(std::max(a[major], b[major]));
        bool any = first <= last;
        for (double i = std::max(first, outside); i <= std::min(last, -20 * outside); ++i) {
            Point<3> p;
            p[major] = i;
            p[minor] = along(a, b, major, i, minor);
            p[2] = along(a, b, major, i, 2);
            beside(line, p, minor, minor);
        }
        if (a[minor] == b[minor]) return any;
        const double begin = std::ceil(std::min(a[minor], b[minor])),
                     end = std::floor(std::max(a[minor], b[minor]));
        any = any || begin <= end;
        for (double j = std::max(begin, outside); j <= std::min(end, -20 * outside); ++j) {
            Point<3> p;
            p[minor] = j;
            p[major] = along(a, b, minor, j, major);
            p[2] = along(a, b, minor, j, 2);
            if (first > last || p[major] < first || p[major] > last) beside(line, p, major, minor);
        }
        return any;
    }

    /// The pixel nearest to a point of a grid line, which runs along the axis `free`; repeated across
    /// `minor`.
    void beside(const Line& line, const Point<3>& p, int free, int minor)
    {
        Sample drawn{p[0], p[1]}, other{p[0], p[1]};
        double& coordinate = free == 0 ? drawn.x : drawn.y;
        double& second = free == 0 ? other.x : other.y;
        coordinate = std::floor(p[free] + 0.5);
        second = std::floor(p[free]) == coordinate ? coordinate + 1 : std::floor(p[free]);
        widen(line, p, drawn, std::floor(p[free]) == p[free] ? std::nullopt : std::optional(other), minor,
              line.sampling);
    }

    void widen(const Line& line, const Point<3>& p, Sample drawn, std::optional<Sample> other, int minor,
               Sampling sampling)
    {
        for (int k = -(style.width / 2); k <= style.width / 2; ++k) {
            const double dx = minor == 0 ? k : 0, dy = minor == 1 ? k : 0;
            std::optional<Sample> moved;
            if (other) moved = {other->x + dx, other->y + dy};
            put(line, p, {drawn.x + dx, drawn.y + dy}, moved, sampling);
        }
    }

    bool inPicture(const Sample& s) const
    {
        return s.x >= 0 && s.x < camera.width && s.y >= 0 && s.y < camera.height;
    }
    const Pixel& surface(const Sample& s) const
    {
        return surfaces[static_cast<std::size_t>(s.y)][static_cast<std::size_t>(s.x)];
    }
    bool isOwn(const Line& line, const Sample& s) const
    {
        return std::count(line.own.begin(), line.own.end(), surface(s).owner) != 0;
    }

    bool hidden(const Line& line, const Point<3>& p, const Sample& s) const
    {
        const Pixel& pixel = surface(s);
        if (pixel.owner == Buffer::noFacet || isOwn(line, s)) return false;
        const Vector<3> n = camera.screenPlane(model.facet(pixel.owner).plane).normal();
        const double slopeX = std::isfinite(-n[0] / n[2]) ? -n[0] / n[2] : 0.0,
                     slopeY = std::isfinite(-n[1] / n[2]) ? -n[1] / n[2] : 0.0;
        const double carried = pixel.depth + slopeX * (p[0] - s.x) + slopeY * (p[1] - s.y);
        const double epsilon =
            perspective ? std::abs(p[2]) / 1048576.0 : camera.scale * (camera.far - camera.near) / 1048576.0;
        return p[2] > carried + epsilon;
    }

    void put(const Line& line, const Point<3>& p, const Sample& at, std::optional<Sample> other,
             Sampling sampling)
    {
        if (!inPicture(at)) return;
        if (other && !inPicture(*other)) other.reset();
        bool hides = hidden(line, p, at);
        if (hides && other && sampling == Sampling::freeStanding) hides = hidden(line, p, *other);
        if (hides && other && sampling == Sampling::inside) hides = !isOwn(line, *other);
        if (hides) return;
        Pixel& pixel = image[static_cast<std::size_t>(at.y)][static_cast<std::size_t>(at.x)];
        if (!pixel.line || pixel.depth >= p[2])
            pixel = {Buffer::noFacet, true, p[2], line.colour, line.material};
    }

    const Model& model;
    const Camera& camera;
    const Image& surfaces;
    const Frame& frame;
    const LineStyle& style;
    const bool perspective;
    Image image;
};

/// Adds what plain random facets lack: bodies whose facets meet, wound at random, and curves.
void addBodiesAndCurves(Model& model, RandomScenes& scenes)
{
    static constexpr int faces[6][4] = {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4},
                                        {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}};
    const bool lattice = scenes.whole(0, 1) == 0;
    const auto coordinate = [&] { return lattice ? 0.5 * scenes.whole(-6, 6) : scenes.real(-3, 3); };
    std::vector<const Material*> materials;
    for (const auto& [key, material] : model.materials()) materials.push_back(&material);
    const auto anyMaterial = [&] {
        return materials[static_cast<std::size_t>(scenes.whole(0, static_cast<int>(materials.size()) - 1))];
    };
    for (int body = scenes.whole(0, 3); body > 0; --body) {
        const Point<3> low(coordinate(), coordinate(), coordinate());
        const Vector<3> size(scenes.real(0.1, 2), scenes.whole(1, 3) * 0.5, scenes.real(0.1, 2));
        const Material* material = anyMaterial();
        for (const auto& face : faces) {
            if (scenes.whole(0, 9) == 0) continue;   // an open body
            std::vector<Point<3>> corners;
            for (const int corner : face)
                corners.push_back(low
                                  + Vector<3>((corner % 4 == 1 || corner % 4 == 2) ? size[0] : -0.0,
                                              corner % 4 >= 2 ? size[1] : 0.0, corner >= 4 ? size[2] : 0.0));
            if (scenes.whole(0, 1) == 0) std::reverse(corners.begin(), corners.end());
            if (scenes.whole(0, 5) == 0) material = anyMaterial();
            model.addPolygon(*material, Plane(corners[0], corners[1], corners[2]), corners);
        }
    }
    for (int curve = scenes.whole(0, 6); curve > 0; --curve) {
        std::vector<Point<3>> points;
        const double reach = scenes.whole(0, 9) == 0 ? 1e6 : scenes.whole(0, 4) == 0 ? 0.01 : 1.0;
        const Point<3> start(coordinate(), coordinate(), coordinate());
        for (int i = scenes.whole(1, 6); i > 0; --i)
            points.push_back(start + Vector<3>(coordinate(), coordinate(), coordinate()) * reach);
        model.addCurve(*anyMaterial(), points);
    }
}

}   // namespace

TEST(LinesPixelwise, RandomScenesAgreeInEveryPixel)
{
    const char* const wanted = std::getenv("BELVOR_SCENES");   // for a long run
    const int count = wanted ? std::atoi(wanted) : 1000;
    std::size_t shown = 0, hidden = 0;
    Frame frames[] = {Frame(Sharing{1, 1}), Frame(Sharing{2, 1}), Frame(Sharing{8, 1}),
                      Frame(Sharing{1, 1000})};
    for (int seed = 0; seed < count && !HasFailure(); ++seed) {
        Frame& frame = frames[seed % 4];
        RandomScenes scenes(static_cast<std::uint64_t>(seed));
        const Handle<Model> model = scenes.model();
        addBodiesAndCurves(*model, scenes);
        const Handle<Camera> camera = scenes.camera(*model);
        LightSet lights;
        lights.set(1, makeHandle<AmbientLight>(Colour{0.6, 0.7, 0.8}, Colour{0.1, 0.1, 0.1}));
        const Image surfaces = drawn(frame, *model, *camera, lights);

        const Outlines outlines(*model);
        LineStyle style;
        style.curves = scenes.whole(0, 3) != 0;
        if (!style.curves || scenes.whole(0, 3) != 0) style.outlines = &outlines;
        style.everyEdge = scenes.whole(0, 2) == 0;
        style.width = scenes.whole(0, 1) == 0 ? 1 : 1 + 2 * scenes.whole(0, 7);
        if (scenes.whole(0, 3) == 0) style.colour = {1, 2, 3};
        style.surfaces = scenes.whole(0, 3) != 0;
        const Image slow = SlowLines(*model, *camera, surfaces, frame, style).run();
        expectSame(drawn(frame, *model, *camera, lights, style), slow, seed);
        for (const auto& row : slow)
            for (const Pixel& pixel : row) ++(pixel.line ? shown : hidden);
    }
    EXPECT_GT(shown, hidden / 20);
    EXPECT_GT(hidden, shown / 20);
}
