// Rows of the renderer against a slow evaluation that keeps linked lists, as the rows are defined: which
// edges cross a row, in which order, which pixels lie between them, and who of all facets owns each pixel at
// which depth. Every bit must agree.

#include "errors/Reporter.h"
#include "render/Frame.h"
#include "scene/Camera.h"
#include "scene/Light.h"
#include "scene/Model.h"
#include "tests/render/Keeper.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <list>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

using namespace belvor;
using namespace belvor::test;

namespace {

/// The same picture by definition.
class SlowRender {
public:
    SlowRender(const Model& scene, const Camera& view)
        : model(scene),
          camera(view),
          width(static_cast<int>(view.width)),
          height(static_cast<int>(view.height))
    {
        for (std::uint32_t i = 0; i < model.vertexCount(); ++i)
            projected.push_back(camera.project(model.vertex(i).position));
        bucketEdges();
    }

    Image run()
    {
        Image image;
        for (int y = 0; y < height; ++y) {
            row.assign(static_cast<std::size_t>(width), Pixel());
            walk(y);
            image.push_back(row);
        }
        return image;
    }

private:
    struct Side {
        Point<3> from, to;   // `from` is the upper end
        std::uint32_t facet;
    };
    struct Crossing {
        double x, depth;
    };

    bool behind(const Point<3>& p) const { return p[2] >= 0.0; }

    /// The first row on which a side is looked at, if there is one.
    std::optional<int> firstRow(const Side& side) const
    {
        const double y0 = side.from[1], y1 = side.to[1], last = height - 1;
        if (y0 == y1) return {};
        if (behind(side.from)) {
            if (behind(side.to) || y1 >= last) return {};
            return y1 < 0.0 ? 0 : static_cast<int>(std::trunc(y1)) + 1;
        }
        if (behind(side.to)) return y0 >= 0.0 ? std::optional(0) : std::nullopt;
        if (y1 < 0.0 || y0 >= last) return {};
        return y0 < 0.0 ? 0 : static_cast<int>(std::trunc(y0)) + 1;
    }

    void bucketEdges()
    {
        buckets.resize(static_cast<std::size_t>(height) + 1);
        for (std::uint32_t facet = 0; facet < model.facetCount(); ++facet)
            for (std::uint32_t i = 0; i < model.facet(facet).edgeCount; ++i) {
                const Edge& edge = model.edge(model.facet(facet).firstEdge + i);
                Side side{projected[edge.from], projected[edge.to], facet};
                if (side.from[1] > side.to[1]) std::swap(side.from, side.to);
                if (const auto first = firstRow(side))
                    buckets[static_cast<std::size_t>(*first)].push_front(side);
            }
    }

    void walk(int y)
    {
        std::vector<std::list<Crossing>> crossings(model.facetCount());
        for (const Side& side : buckets[static_cast<std::size_t>(y)]) {
            if (side.from[2] <= 0.0) {
                const double end = side.to[2] <= 0.0 ? side.to[1] : side.from[1];
                if (end < y) continue;
            }
            const double t = (y - side.from[1]) / (side.to[1] - side.from[1]);
            buckets[static_cast<std::size_t>(y) + 1].push_front(side);
            crossings[side.facet].push_front({side.from[0] + (side.to[0] - side.from[0]) * t,
                                              side.from[2] + (side.to[2] - side.from[2]) * t});
        }
        for (std::uint32_t facet = 0; facet < model.facetCount(); ++facet) scan(facet, crossings[facet]);
    }

    void scan(std::uint32_t facet, std::list<Crossing>& list)
    {
        if (list.empty()) return;
        list.sort([](const Crossing& a, const Crossing& b) { return a.x < b.x; });
        auto at = list.begin();
        double slope = 0.0;
        const bool open = list.size() % 2 == 1;
        if (open) {
            const Vector<3> normal = camera.screenPlane(model.facet(facet).plane).normal();
            slope = -normal[0] / normal[2];
            if (!std::isfinite(slope)) slope = 0.0;
        }
        if (slope > 0.0) {
            for (int i = 0; i < width && i < std::trunc(at->x) + 1.0; ++i)
                offer(facet, i, at->depth - slope * at->x, slope, i);
            ++at;
        }
        for (; at != list.end() && std::next(at) != list.end(); std::advance(at, 2))
            span(facet, *at, *std::next(at));
        if (slope < 0.0 && at != list.end()) {
            const double start = std::max(std::trunc(at->x) + 1.0, 0.0);
            for (int i = 0; i < width; ++i)
                if (i >= start)
                    offer(facet, i, at->depth - (at->x - start) * slope, slope, i - static_cast<int>(start));
        }
    }

    void span(std::uint32_t facet, const Crossing& left, const Crossing& right)
    {
        if (right.x <= 0.0 || left.x >= width - 1) return;
        const double start = std::max(std::trunc(left.x) + 1.0, 0.0);
        double step = right.depth - left.depth;
        if (right.x - left.x != 0.0) step /= right.x - left.x;
        const double first = left.depth + (start - left.x) * step;
        for (int i = 0; i < width; ++i)
            if (i >= start && i < std::trunc(right.x) + 1.0)
                offer(facet, i, first, step, i - static_cast<int>(start));
    }

    /// Depth `first` grown by `step`, `steps` times, one addition after another.
    void offer(std::uint32_t facet, int column, double first, double step, int steps)
    {
        double depth = first;
        for (int i = 0; i < steps; ++i) depth += step;
        Pixel& pixel = row[static_cast<std::size_t>(column)];
        const bool later = pixel.owner == Buffer::noFacet || facet >= pixel.owner;
        if (depth < pixel.depth || (depth == pixel.depth && later)) pixel = {facet, depth};
    }

    const Model& model;
    const Camera& camera;
    int width, height;
    std::vector<Point<3>> projected;
    std::vector<std::list<Side>> buckets;
    std::vector<Pixel> row;
};

/// Random scenes that are hard on the rules: lattice corners that fall on pixels and share planes, large
/// facets around the eye, outlines that cross themselves or are not flat, holes, loops of one and two
/// corners.
class Scenes {
public:
    explicit Scenes(std::uint64_t seed) : random(seed) {}

    Handle<Model> model()
    {
        const Handle<Model> made = makeHandle<Model>();
        Material material;
        material.index = 1;
        style = whole(0, 3);
        const int facets = whole(1, whole(0, 9) == 0 ? 40 : 8);
        for (int i = 0; i < facets; ++i) {
            material.colour = {real(0, 1), real(0, 1), real(0, 1)};
            addFacet(*made, made->addMaterial(std::to_string(i), material));
        }
        return made;
    }

    Handle<Camera> camera(const Model& scene)
    {
        CameraView view{};
        scene.bounds(view.centre, view.radius);
        if (!(view.radius > 0.0)) view.radius = 1.0;
        view.width = static_cast<std::uint32_t>(whole(1, whole(0, 3) == 0 ? 6 : 60));
        view.height = static_cast<std::uint32_t>(whole(1, whole(0, 3) == 0 ? 6 : 60));
        view.azimuth = whole(0, 1) == 0 ? 90.0 * whole(-2, 4) : real(-180, 180);
        view.elevation = whole(0, 2) == 0 ? 45.0 * whole(-2, 2) : whole(0, 1) == 0 ? 0.0 : real(-90, 90);
        for (int axis = 0; axis < 3; ++axis)
            view.eye[axis] = style < 2 ? whole(-5, 5) * 0.5 : real(-1.5, 1.5) * view.radius;
        if (whole(0, 2) == 0)
            view.eye =
                scene.vertex(static_cast<std::uint32_t>(whole(0, static_cast<int>(scene.vertexCount()) - 1)))
                    .position;
        const bool parallel = whole(0, 1) == 0;
        const double field = parallel ? (style < 2 ? 1.0 * whole(2, 12) : real(0.3, 3.0) * view.radius)
                                      : std::exp(real(-3.0, 2.0));
        view.viewWidth = field;
        view.viewHeight = style < 2 ? field : field * real(0.5, 2.0);
        if (parallel) return makeHandle<ParallelCamera>(view);
        return makeHandle<PerspectiveCamera>(view);
    }

    int whole(int low, int high) { return std::uniform_int_distribution(low, high)(random); }
    double real(double low, double high) { return std::uniform_real_distribution(low, high)(random); }

private:
    Point<3> corner()
    {
        switch (style) {
        case 0: return {1.0 * whole(-3, 3), 1.0 * whole(-3, 3), 1.0 * whole(-3, 3)};
        case 1: return {whole(-6, 6) * 0.5, whole(-6, 6) * 0.5, 1.0 * whole(0, 1)};
        default: return {real(-3, 3), real(-3, 3), real(-3, 3)};
        }
    }

    void addFacet(Model& made, const Material& material)
    {
        // Corners in the plane of three random ones (so that a facet is flat, but for rounding), or anywhere.
        const Point<3> a = corner(), b = corner(), c = corner();
        const bool flat = whole(0, 3) != 0;
        const double reach = style == 3 ? 20.0 : 1.5;
        Vector<3> normal = (b - a).cross(c - a);
        if (normal.length() == 0.0) normal = {0, 0, 1};
        made.addFacet(material, Plane(normal, a));
        for (int loop = whole(0, 3) == 0 ? 2 : 1; loop > 0; --loop) {
            const std::uint32_t first = made.vertexCount();
            const auto corners = static_cast<std::uint32_t>(whole(0, 20) == 0 ? whole(1, 2) : whole(3, 9));
            for (std::uint32_t i = 0; i < corners; ++i) {
                const double u = style < 2 ? 1.0 * whole(-1, 2) : real(-reach, reach),
                             v = style < 2 ? 1.0 * whole(-1, 2) : real(-reach, reach);
                made.addVertex(flat ? a + (b - a) * u + (c - a) * v : corner());
            }
            for (std::uint32_t i = 0; i < corners; ++i) made.addEdge(first + i, first + (i + 1) % corners);
        }
    }

    std::mt19937_64 random;
    int style = 0;
};

/// Each facet's light by its definition: on the side towards the eye (one seen edge on: as the model was
/// made, whatever was rendered before). `brightest` is the brightest channel of the scene.
std::vector<Colour> litColours(const Model& model, const std::vector<Plane>& planes, const Camera& camera,
                               const LightSet& lights, double& brightest)
{
    std::vector<Colour> result;
    brightest = 0.0;
    for (std::uint32_t i = 0; i < model.facetCount(); ++i) {
        const Plane plane = camera.faces(planes[i]) ? planes[i] : -planes[i];
        Colour lit = lights.illuminate(plane.normal());
        for (std::size_t channel = 0; channel < 3; ++channel) {
            lit[channel] *= model.facet(i).material->colour[channel];
            if (lit[channel] > brightest) brightest = lit[channel];
        }
        result.push_back(lit);
    }
    if (brightest == 0.0) brightest = 1.0;
    return result;
}

}   // namespace

TEST(Pixelwise, RandomScenesAgreeInEveryPixel)
{
    const Handle<Reporter> silent = makeHandle<SilentReporter>();
    const char* const wanted = std::getenv("BELVOR_SCENES");   // for a long run
    const int count = wanted ? std::atoi(wanted) : 1500;
    std::size_t covered = 0, empty = 0;
    Frame frame;   // one for all scenes: what it held never shows in the next picture
    for (int seed = 0; seed < count && !HasFailure(); ++seed) {
        Scenes scenes(static_cast<std::uint64_t>(seed));
        const Handle<Model> model = scenes.model();
        std::vector<Plane> planes;
        for (std::uint32_t i = 0; i < model->facetCount(); ++i) planes.push_back(model->facet(i).plane);
        for (int view = 0; view < 2; ++view) {
            const Handle<Camera> camera = scenes.camera(*model);
            const Handle<LightSet> lights = makeHandle<LightSet>();
            const double sky = scenes.real(0, 1), sun = scenes.whole(0, 2) * 0.7;
            if (scenes.whole(0, 9) != 0)
                lights->set(1, makeHandle<AmbientLight>(Colour{sky, sky, sky}, Colour{0.1, 0.1, 0.1}));
            lights->set(2, makeHandle<ParallelLight>(scenes.real(-180, 180), scenes.real(-90, 90),
                                                     Colour{sun, sun, sun}));
            Image fast;
            frame.render(*model, *camera, *lights, *makeHandle<Keeper>(static_cast<int>(camera->width), fast),
                         *silent);
            const Image slow = SlowRender(*model, *camera).run();

            double brightest;
            const auto lit = litColours(*model, planes, *camera, *lights, brightest);
            for (std::uint32_t i = 0; i < model->facetCount(); ++i)
                for (std::size_t channel = 0; channel < 3; ++channel)
                    EXPECT_EQ(frame.colour(i)[channel], toByte(lit[i][channel] / brightest))
                        << "seed " << seed << ", facet " << i;
            ASSERT_EQ(fast.size(), slow.size());
            for (std::size_t y = 0; y < slow.size(); ++y)
                for (std::size_t x = 0; x < slow[y].size(); ++x) {
                    ASSERT_EQ(fast[y][x], slow[y][x])
                        << "seed " << seed << ", view " << view << ", pixel (" << x << ", " << y << ")";
                    (slow[y][x].owner == Buffer::noFacet ? empty : covered) += 1;
                }
        }
    }
    // Neither the empty picture nor the full one would prove much.
    EXPECT_GT(covered, empty / 10);
    EXPECT_GT(empty, covered / 10);
}
