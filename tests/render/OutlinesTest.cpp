#include "render/Outlines.h"

#include "scene/Camera.h"
#include "scene/Model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <random>
#include <vector>

namespace belvor {
namespace {

/// An edge by the positions of its ends, the smaller one first, and the facets that have it, each once.
using Corner = std::array<double, 3>;
struct Found {
    Corner from, to;
    std::vector<std::uint32_t> facets;
    friend bool operator==(const Found&, const Found&) = default;
};

Corner cornerOf(const Model& model, std::uint32_t vertex)
{
    const Point<3>& p = model.vertex(vertex).position;
    return {p[0] + 0.0, p[1] + 0.0, p[2] + 0.0};   // −0 as 0
}

/// Triangles between few points, so that edges have any number of facets and some have one twice, or between
/// many, of which few are shared.
Handle<Model> crowd(std::uint32_t seed, int triangles, int points)
{
    std::mt19937 random(seed);
    const Handle<Model> model = makeHandle<Model>();
    const Material& material = model->findMaterial("any");
    const auto any = [&] {
        const double x = static_cast<double>(random() % static_cast<unsigned>(points));
        return Point<3>(random() % 2 == 0 ? x : -x * (x == 0.0), 0.0, x * x);
    };
    const unsigned rarely = points > triangles ? 30 : 4;
    std::vector<Point<3>> corners{any(), any()};
    for (int i = 0; i < triangles; ++i) {
        if (random() % rarely == 0) corners = {corners[1], corners[0], any()};
        else corners = {any(), any(), any()};
        if (random() % rarely == 0) corners.insert(corners.end(), {corners[0], corners[1]});
        model->addPolygon(material, Plane(), corners);
    }
    return model;
}

TEST(Outlines, AreTheEdgesOfAllFacetsInTheOrderOfTheFirst)
{
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        const int triangles = 1 + static_cast<int>(seed * seed);
        const Handle<Model> model =
            crowd(seed, triangles, seed % 4 == 3 ? 200 * triangles : 3 + static_cast<int>(seed));
        std::vector<Found> wanted;
        std::map<std::array<Corner, 2>, std::size_t> known;
        for (std::uint32_t facet = 0; facet < model->facetCount(); ++facet)
            for (std::uint32_t i = 0; i < model->facet(facet).edgeCount; ++i) {
                const Edge edge = model->edge(model->facet(facet).firstEdge + i);
                const Corner from = cornerOf(*model, edge.from), to = cornerOf(*model, edge.to);
                if (from == to) continue;
                const auto [at, isNew] =
                    known.try_emplace({std::min(from, to), std::max(from, to)}, wanted.size());
                if (isNew) wanted.push_back({from, to, {}});
                std::vector<std::uint32_t>& facets = wanted[at->second].facets;
                if (facets.empty() || facets.back() != facet) facets.push_back(facet);
            }
        const Outlines outlines(*model);
        ASSERT_EQ(outlines.size(), wanted.size()) << seed;
        for (std::uint32_t i = 0; i < outlines.size(); ++i) {
            Found found{cornerOf(*model, outlines.ends(i).from), cornerOf(*model, outlines.ends(i).to), {}};
            for (const Outlines::Use use : outlines.uses(i)) found.facets.push_back(use.facet());
            EXPECT_TRUE(found == wanted[i]) << seed << ", edge " << i;
            for (const std::uint32_t facet : {wanted[i].facets[0], wanted[i].facets.back()})
                EXPECT_TRUE(outlines.belongsTo(i, facet));
        }
    }
}

/// Pairs of triangles at an edge, at any angle, each pair with its first edge at another x. `apart` is by how
/// many pairs the second ones come later. Tells of each pair whether the edge is sharp.
Handle<Model> pairs(int count, int apart, std::vector<bool>& sharp)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> anyAngle(0.0, 1.0);
    const Handle<Model> model = makeHandle<Model>();
    const Material &usual = model->findMaterial("usual"), &rare = model->findMaterial("rare");
    std::vector<std::function<void()>> second;
    for (int i = 0; i < count + apart; ++i) {
        if (i < count) {
            const Point<3> a(i, 0.0, 0.0), b(i, 1.0, 0.0), c(i - 0.5, 0.5, 0.0);
            const double angle = anyAngle(random);
            const Point<3> d = a + Vector<3>(0.5 * std::cos(angle), 0.5, 0.5 * std::sin(angle));
            const bool same = random() % 3 == 0, turned = random() % 3 == 0, isRare = random() % 8 == 0;
            const Plane plane(Vector<3>(-std::sin(angle), 0.0, std::cos(angle)) * (turned ? -1.0 : 1.0), a);
            model->addPolygon(usual, Plane(Vector<3>(0.0, 0.0, 1.0), a), std::array{a, b, c});
            second.emplace_back([=, &model, &material = isRare ? rare : usual] {
                model->addPolygon(material, plane, same ? std::array{a, b, d} : std::array{b, a, d});
            });
            sharp.push_back(isRare || same != turned || angle * 180.0 / 3.141592653589793 > 20.0);
        }
        if (i >= apart) second[static_cast<std::size_t>(i - apart)]();
    }
    return model;
}

TEST(Outlines, AreSharpWhereverTheirFacetsStand)
{
    constexpr int count = 12000;
    for (const int apart : {0, 5000, count}) {
        std::vector<bool> sharp;
        const Handle<Model> model = pairs(count, apart, sharp);
        const Outlines outlines(*model);
        const ParallelCamera camera(CameraView{});
        const std::vector<FacetShade> shades(model->facetCount());
        int wrong = 0, asked = 0;
        for (std::uint32_t group = 0; group < outlines.groupCount(); ++group) {
            const Outlines::Chosen chosen =
                outlines.choose(group, {*model, camera, shades.data(), false, false});
            for (std::uint32_t i = group * 64; i < std::min(outlines.size(), group * 64 + 64); ++i) {
                if (outlines.uses(i).size() != 2) continue;
                const std::uint64_t bit = std::uint64_t{1} << i % 64;
                const auto pair = static_cast<std::size_t>(cornerOf(*model, outlines.ends(i).from)[0]);
                ++asked;
                wrong += ((chosen.all & ~chosen.freeStanding & bit) != 0) != sharp[pair];
            }
        }
        EXPECT_EQ(asked, count);
        EXPECT_EQ(wrong, 0) << apart;
    }
}

}   // namespace
}   // namespace belvor
