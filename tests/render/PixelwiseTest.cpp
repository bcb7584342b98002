// Rows of the renderer against a slow evaluation that keeps linked lists, as the rows are defined: which
// edges cross a row, in which order, which pixels lie between them, and who of all facets owns each pixel at
// which depth. Every bit must agree.

#include "tests/render/Keeper.h"
#include "tests/render/RandomScenes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <list>
#include <optional>
#include <utility>
#include <vector>

using namespace belvor;
using namespace belvor::test;

namespace {

/// The same picture by definition. `planes` are those of the facets as the model was made, whatever was
/// rendered before: of a plane the side towards the eye is lit, and one seen edge on as it is.
class SlowRender {
public:
    SlowRender(const Model& scene, const std::vector<Plane>& planes, const Camera& view,
               const LightSet& lights)
        : model(scene),
          camera(view),
          width(static_cast<int>(view.width)),
          height(static_cast<int>(view.height)),
          entering(view.height + 1)
    {
        for (std::uint32_t facet = 0; facet < model.facetCount(); ++facet) addSides(facet);
        shade(planes, lights);
        for (int y = 0; y < height; ++y) {
            image.emplace_back(view.width);
            walk(y);
            for (Pixel& pixel : image.back())
                if (pixel.owner != Buffer::noFacet) pixel.colour = colours[pixel.owner];
        }
    }

    Image image;

private:
    struct Side {
        Point<3> from, to;   // `from` is the upper end
        std::uint32_t facet;
    };
    struct Crossing {
        double x, depth;
    };

    static bool behind(const Point<3>& p) { return p[2] >= 0.0; }

    /// The first row on which a side is looked at; none when there is none.
    std::optional<double> firstRow(const Side& side) const
    {
        const double y0 = side.from[1], y1 = side.to[1], last = height - 1;
        if (y0 == y1 || (behind(side.from) && behind(side.to))) return {};
        if (behind(side.to)) return y0 >= 0.0 ? std::optional(0.0) : std::nullopt;
        if (behind(side.from) ? y1 >= last : y1 < 0.0 || y0 >= last) return {};
        const double start = behind(side.from) ? y1 : y0;
        return start < 0.0 ? 0.0 : std::trunc(start) + 1.0;
    }

    void addSides(std::uint32_t facet)
    {
        const Facet& which = model.facet(facet);
        for (std::uint32_t i = which.firstEdge; i < which.firstEdge + which.edgeCount; ++i) {
            const auto seen = [&](std::uint32_t end) { return camera.project(model.vertex(end).position); };
            Side side{seen(model.edge(i).from), seen(model.edge(i).to), facet};
            if (side.from[1] > side.to[1]) std::swap(side.from, side.to);
            if (const auto row = firstRow(side)) entering[static_cast<std::size_t>(*row)].push_front(side);
        }
    }

    void shade(const std::vector<Plane>& planes, const LightSet& lights)
    {
        std::vector<Colour> lit;
        double brightest = 0.0;
        for (std::uint32_t i = 0; i < model.facetCount(); ++i) {
            lit.push_back(lights.illuminate((camera.faces(planes[i]) ? planes[i] : -planes[i]).normal()));
            for (std::size_t channel = 0; channel < 3; ++channel) {
                lit[i][channel] *= model.facet(i).material->colour[channel];
                brightest = std::max(brightest, lit[i][channel]);
            }
        }
        const auto byte = [&](double value) { return toByte(value / (brightest == 0.0 ? 1.0 : brightest)); };
        for (const Colour& colour : lit)
            colours.push_back({byte(colour[0]), byte(colour[1]), byte(colour[2])});
    }

    void walk(int y)
    {
        std::vector<std::list<Crossing>> crossings(model.facetCount());
        for (const Side& side : entering[static_cast<std::size_t>(y)]) {
            if (side.from[2] <= 0.0 && (side.to[2] <= 0.0 ? side.to : side.from)[1] < y) continue;
            const double t = (y - side.from[1]) / (side.to[1] - side.from[1]);
            entering[static_cast<std::size_t>(y) + 1].push_front(side);
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
            cover(facet, 0.0, at->x, at->depth - slope * at->x, slope);
            ++at;
        }
        for (; at != list.end() && std::next(at) != list.end(); std::advance(at, 2))
            span(facet, *at, *std::next(at));
        if (slope < 0.0 && at != list.end()) {
            const double start = startBehind(at->x);
            cover(facet, start, width, at->depth - (at->x - start) * slope, slope);
        }
    }

    static double startBehind(double x) { return std::max(std::trunc(x) + 1.0, 0.0); }

    void span(std::uint32_t facet, const Crossing& left, const Crossing& right)
    {
        if (right.x <= 0.0 || left.x >= width - 1) return;
        const double start = startBehind(left.x);
        double step = right.depth - left.depth;
        if (right.x - left.x != 0.0) step /= right.x - left.x;
        cover(facet, start, right.x, left.depth + (start - left.x) * step, step);
    }

    /// Offers the columns from `start` to `last`. The depth grows from `depth` by one addition after another.
    void cover(std::uint32_t facet, double start, double last, double depth, double step)
    {
        for (int i = 0; i < width && i < std::trunc(last) + 1.0; ++i) {
            if (i < start) continue;
            Pixel& pixel = image.back()[static_cast<std::size_t>(i)];
            const bool later = pixel.owner == Buffer::noFacet || facet >= pixel.owner;
            if (depth < pixel.depth || (depth == pixel.depth && later))
                pixel = {facet, false, depth, {}, model.facet(facet).material->index};
            depth += step;
        }
    }

    const Model& model;
    const Camera& camera;
    const int width, height;
    std::vector<std::list<Side>> entering;   // by row
    std::vector<std::array<std::uint8_t, 3>> colours;
};

}   // namespace

TEST(Pixelwise, RandomScenesAgreeInEveryPixel)
{
    const char* const wanted = std::getenv("BELVOR_SCENES");   // for a long run
    const int count = wanted ? std::atoi(wanted) : 1500;
    std::size_t covered = 0, empty = 0;
    // Used for all scenes: what a frame held never shows in the next picture. Pieces of single facets, so
    // that all threads get some. Facets are filled as on this processor, as on lesser ones, and as on any.
    const FacetFills fills = runnableFacetFills();
    Frame frames[] = {Frame(Sharing{1, 1, fillFacets}), Frame(Sharing{2, 1}),
                      Frame(Sharing{3, 1, fills.all[fills.count / 2]}), Frame(Sharing{8, 1}),
                      Frame(Sharing{1, 1000})};
    for (int seed = 0; seed < count && !HasFailure(); ++seed) {
        RandomScenes scenes(static_cast<std::uint64_t>(seed));
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
            Frame& frame = frames[(2 * seed + view) % 5];
            const SlowRender slow(*model, planes, *camera, *lights);
            expectSame(drawn(frame, *model, *camera, *lights), slow.image, seed);
            for (const auto& row : slow.image)
                for (const Pixel& pixel : row) ++(pixel.owner == Buffer::noFacet ? empty : covered);
        }
    }
    // Neither the empty picture nor the full one would prove much.
    EXPECT_GT(covered, empty / 10);
    EXPECT_GT(empty, covered / 10);
}
