#include "render/Outlines.h"

#include "scene/Model.h"

#include <gtest/gtest.h>

#include <array>
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
        for (const unsigned threads : {1u, 3u}) {
            const Outlines outlines(*model, {}, Sharing{threads, 1});
            ASSERT_EQ(outlines.size(), wanted.size()) << seed;
            for (std::uint32_t i = 0; i < outlines.size(); ++i) {
                Found found{
                    cornerOf(*model, outlines.ends(i).from), cornerOf(*model, outlines.ends(i).to), {}};
                for (const Outlines::Use use : outlines.uses(i)) found.facets.push_back(use.facet());
                EXPECT_TRUE(found == wanted[i]) << seed << ", edge " << i;
                for (const std::uint32_t facet : {wanted[i].facets[0], wanted[i].facets.back()})
                    EXPECT_TRUE(outlines.belongsTo(i, facet));
            }
        }
    }
}

}   // namespace
}   // namespace belvor
