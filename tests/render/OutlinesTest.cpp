#include "render/Outlines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

using namespace belvor;

namespace {

using Kind = Outlines::Kind;

/// A facet through the points of these names, each with a vertex of its own.
void addFacet(Model& model, const Material& material, const std::string& names, const Vector<3>& normal)
{
    // A is a, as a number; d lies 19.8 degrees up, e 20.3.
    const std::map<char, Point<3>> points{
        {'a', {0, 0, 0}},     {'A', {-0.0, 0, -0.0}}, {'b', {0, 1, 0}},           {'c', {1, 0, 0}},
        {'d', {-1, 0, 0.36}}, {'e', {-1, 0, 0.37}},   {'n', {std::nan(""), 0, 0}}};
    std::vector<Point<3>> corners;
    for (const char name : names) corners.push_back(points.at(name));
    model.addPolygon(material, Plane(normal.unit(), 0.0), corners);
}

}   // namespace

TEST(Outlines, FindTheFacetsAtAnEdgeForAnyVerticesAndWinding)
{
    const Vector<3> up(0, 0, 1), d(0.36, 0, 1), e(0.37, 0, 1);
    using Facets = std::vector<std::tuple<const char*, Vector<3>, int>>;   // corners, normal, material
    // Columns: why, facets, the kind of the edge from a to b.
    const std::tuple<const char*, Facets, Kind> cases[] = {
        {"one facet", {{"abc", up, 0}}, Kind::border},
        {"a facet that has it twice", {{"abcab", up, 0}}, Kind::smooth},
        {"found by position, -0 is 0", {{"abc", up, 0}, {"bAd", up, 0}}, Kind::smooth},
        {"below 20 degrees", {{"abc", up, 0}, {"bad", d, 0}}, Kind::smooth},
        {"above 20 degrees", {{"abc", up, 0}, {"bae", e, 0}}, Kind::sharp},
        {"wound the other way: the normal counts negated", {{"abc", up, 0}, {"abd", -d, 0}}, Kind::smooth},
        {"wound the other way, folded", {{"abc", up, 0}, {"abd", d, 0}}, Kind::sharp},
        {"between materials", {{"abc", up, 0}, {"bad", up, 1}}, Kind::sharp},
        {"three: two are folded", {{"abc", up, 0}, {"bad", up, 0}, {"bac", up, 0}}, Kind::sharp},
    };
    for (const auto& [why, facets, kind] : cases) {
        Model model;
        const Material* const materials[] = {&model.findMaterial("one"), &model.findMaterial("other")};
        for (const auto& [corners, normal, material] : facets)
            addFacet(model, *materials[material], corners, normal);
        const Outlines outlines(model);
        ASSERT_GT(outlines.size(), 0u) << why;
        EXPECT_EQ(outlines[0].kind, kind) << why;
    }
}

TEST(Outlines, LeaveOutEdgesOfLengthZeroAndThoseThatAreNotFinite)
{
    Model model;
    addFacet(model, model.findMaterial("one"), "aAbn", {0, 0, 1});
    EXPECT_EQ(Outlines(model).size(), 1u) << "only from A to b";
    EXPECT_EQ(Outlines(Model()).size(), 0u);
}
