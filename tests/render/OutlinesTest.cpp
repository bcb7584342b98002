#include "render/Outlines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace belvor;

namespace {

using Kind = Outlines::Kind;

/// A facet through the points of these names, each with a vertex of its own.
void addFacet(Model& model, const Material& material, const std::string& names, const Vector<3>& normal)
{
    const auto point = [](char name) -> Point<3> {
        switch (name) {
        case 'a': return {0, 0, 0};
        case 'A': return {-0.0, 0, -0.0};   // a, as a number
        case 'b': return {0, 1, 0};
        case 'c': return {1, 0, 0};
        case 'd': return {-1, 0, 0.36};   // 19.8 degrees up
        case 'e': return {-1, 0, 0.37};   // 20.3 degrees up
        case 'f': return {0, 0, 1};
        default: return {std::nan(""), 0, 0};
        }
    };
    std::vector<Point<3>> corners;
    for (const char name : names) corners.push_back(point(name));
    model.addPolygon(material, Plane(normal.unit(), 0.0), corners);
}

}   // namespace

TEST(Outlines, FindTheFacetsAtAnEdgeForAnyVerticesAndWinding)
{
    const Vector<3> up(0, 0, 1), d(0.36, 0, 1), e(0.37, 0, 1);
    const struct {
        const char* why;
        struct {
            const char* corners;
            Vector<3> normal;
            int material;
        } facets[3];
        Kind kind;   // of the edge from a to b
        std::size_t uses;
    } cases[] = {
        {"one facet", {{"abc", up, 0}}, Kind::border, 1},
        {"a facet that has it twice",
         {{"abca"
           "b",
           up, 0}},
         Kind::smooth,
         1},
        {"two in one plane", {{"abc", up, 0}, {"bad", up, 0}}, Kind::smooth, 2},
        {"found by position, -0 is 0", {{"abc", up, 0}, {"bAd", up, 0}}, Kind::smooth, 2},
        {"below 20 degrees", {{"abc", up, 0}, {"bad", d, 0}}, Kind::smooth, 2},
        {"above 20 degrees", {{"abc", up, 0}, {"bae", e, 0}}, Kind::sharp, 2},
        {"wound the other way: the normal counts negated", {{"abc", up, 0}, {"abd", -d, 0}}, Kind::smooth, 2},
        {"wound the other way, folded", {{"abc", up, 0}, {"abd", d, 0}}, Kind::sharp, 2},
        {"between materials", {{"abc", up, 0}, {"bad", up, 1}}, Kind::sharp, 2},
        {"three facets", {{"abc", up, 0}, {"bad", up, 0}, {"abf", {1, 0, 0}, 0}}, Kind::sharp, 3},
        {"three in one plane: two are folded",
         {{"abc", up, 0}, {"bad", up, 0}, {"bac", up, 0}},
         Kind::sharp,
         3},
    };
    for (const auto& c : cases) {
        Model model;
        const Material* const materials[] = {&model.findMaterial("one"), &model.findMaterial("other")};
        for (const auto& facet : c.facets)
            if (facet.corners) addFacet(model, *materials[facet.material], facet.corners, facet.normal);
        const Outlines outlines(model);
        ASSERT_GT(outlines.size(), 0u) << c.why;
        EXPECT_EQ(outlines[0].kind, c.kind) << c.why;
        EXPECT_EQ(outlines.uses(0).size(), c.uses) << c.why;
    }
}

TEST(Outlines, LeaveOutEdgesOfLengthZeroAndThoseThatAreNotFinite)
{
    Model model;
    addFacet(model, model.findMaterial("one"), "aAbn", {0, 0, 1});
    EXPECT_EQ(Outlines(model).size(), 1u) << "only from A to b";
    EXPECT_EQ(Outlines(Model()).size(), 0u);
}
