#include "tests/readers/dxf/DXFText.h"

#include <gtest/gtest.h>

namespace belvor::test {
namespace {

Reading readWithCurves(const std::string& bytes, ReadingRules rules)
{
    return readDXF(bytes, {.rules = rules, .curves = true});
}

/// "2: (x y z) (x y z), 7": the number of curves, both ends of the first, and the length of all.
std::string curvesOf(const Model& model)
{
    double length = 0.0;
    for (std::uint32_t i = 0; i < model.curveCount(); ++i) {
        const Curve& curve = model.curve(i);
        for (std::uint32_t k = curve.firstPoint + 1; k < curve.firstPoint + curve.pointCount; ++k)
            length += (model.curvePoint(k) - model.curvePoint(k - 1)).length();
    }
    if (model.curveCount() == 0) return "none";
    return std::to_string(model.curveCount()) + ": " + written(model.curvePoint(0)) + ' '
           + written(model.curvePoint(model.curve(0).pointCount - 1)) + ", " + written(length);
}

/// A hatch of a square from 0 to 4 with a hole from 1 to 2, one unit up.
std::string hatch(const std::string& spacing, const std::string& dashes)
{
    return "0 HATCH|8 0|10 0|20 0|30 1|70 0|91 2|92 2|72 0|73 1|93 4|10 0|20 0|10 4|20 0|10 4|20 4|10 0|20 "
           "4|97 0|"
           "92 2|72 0|73 1|93 4|10 1|20 1|10 2|20 1|10 2|20 2|10 1|20 2|97 0|75 0|76 1|52 0|41 1|77 0|78 "
           "1|53 0|"
           "43 0|44 0.5|45 0|46 "
           + spacing + dashes + "|98 0";
}

/// With curves and without; in both readings. Arcs have chords of 2 degrees.
TEST(DXFCurves, AreWhatTheEntitySaysAndChangeNothingWhenTheyAreNotAskedFor)
{
    const std::string vertices = "0 VERTEX|8 0|10 0|20 0|30 0|0 VERTEX|8 0|10 3|20 0|30 4|0 SEQEND";
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"a line", "0 LINE|8 0|10 1|20 2|30 3|11 1|21 5|31 7", "1: (1 2 3) (1 5 7), 5"},
        {"a thick one is the outline of its wall", "0 3DLINE|8 0|39 2|10 0|20 0|30 0|11 3|21 0|31 0",
         "1: (0 0 0) (0 0 0), 10"},
        {"an arc through zero degrees", "0 ARC|8 0|10 0|20 0|30 1|40 10|50 270|51 90",
         "1: (0 -10 1) (0 10 1), 31.414332"},
        {"a circle on a tilted plane", "0 CIRCLE|8 0|10 0|20 0|30 2|40 5|210 1|220 0|230 0",
         "1: (2 5 0) (2 5 0), 31.414332"},
        {"a thick circle has two", "0 CIRCLE|8 0|39 1|10 0|20 0|30 0|40 5", "2: (5 0 0) (5 0 0), 62.828663"},
        {"a round ellipse", "0 ELLIPSE|8 0|10 0|20 0|30 0|11 2|21 0|31 0|40 1|41 0|42 6.283185307179586",
         "1: (2 0 0) (2 0 0), 12.565733"},
        {"half of one", "0 ELLIPSE|8 0|10 0|20 0|30 0|11 2|21 0|31 0|40 1|41 3.141592653589793|42 0",
         "1: (-2 0 0) (2 0 0), 6.282866"},
        {"a spline that is a straight line",
         "0 SPLINE|8 0|71 3|40 0|40 0|40 0|40 0|40 1|40 1|40 1|40 1|10 0|20 0|30 0|10 1|20 2|30 2|10 2|20 "
         "4|30 4|"
         "10 3|20 6|30 6",
         "1: (0 0 0) (3 6 6), 9"},
        {"a spline by fit points, smooth: up 1.5 t - 0.5 t^3",
         "0 SPLINE|8 0|71 3|11 0|21 0|31 0|11 1|21 1|31 0|11 1|21 1|31 0|11 2|21 0|31 0",
         "1: (0 0 0) (2 0 0), 2.913847"},
        {"by two, with tangents along it",
         "0 SPLINE|8 0|71 3|12 3|22 0|32 0|13 1|23 0|33 0|11 0|21 0|31 0|11 3|21 0|31 0",
         "1: (0 0 0) (3 0 0), 3"},
        {"lines of a hatch, around its hole", hatch("1", ""), "5: (0 0.5 1) (4 0.5 1), 15"},
        {"dashes", hatch("1", "|79 2|49 1|49 -1"), "8: (0 0.5 1) (1 0.5 1), 8"},
        {"dashes that a hole cuts", hatch("1", "|79 2|49 1.5|49 -0.5"), "8: (0 0.5 1) (1.5 0.5 1), 11.5"},
        {"dots", hatch("1", "|79 2|49 0|49 -2"), "8: (0 0.5 1) (0 0.5 1), 0"},
        {"lines that lie on each other", hatch("0", ""), "1: (0 0.5 1) (4 0.5 1), 4"},
        {"a helix by its axis",
         "0 HELIX|8 0|100 AcDbSpline|71 3|100 AcDbHelix|10 0|20 0|30 0|11 2|21 0|31 0|12 0|22 0|32 1|40 2|41 "
         "1|"
         "42 6|290 1",
         "1: (2 0 0) (2 0 6), 13.924713"},
        {"a half circle by a bulge", "0 LWPOLYLINE|8 0|90 2|70 0|38 7|10 0|20 0|42 1|10 4|20 0",
         "1: (0 0 7) (4 0 7), 6.282866"},
        {"a closed polyline", "0 LWPOLYLINE|8 0|90 3|70 1|10 0|20 0|10 3|20 0|10 3|20 4",
         "1: (0 0 0) (0 0 0), 12"},
        {"with width its outline", "0 LWPOLYLINE|8 0|90 2|70 0|43 2|10 0|20 0|10 5|20 0",
         "1: (0 1 0) (0 1 0), 14"},
        {"a square ring of width has two",
         "0 LWPOLYLINE|8 0|90 4|70 1|43 1|10 0|20 0|10 4|20 0|10 4|20 4|10 0|20 4",
         "2: (0.5 0.5 0) (0.5 0.5 0), 32"},
        {"a polyline in space", "0 POLYLINE|8 0|66 1|70 8|10 0|20 0|30 0|" + vertices,
         "1: (0 0 0) (3 0 4), 5"},
        {"one in a plane", "0 POLYLINE|8 0|66 1|70 0|10 0|20 0|30 2|" + vertices, "1: (0 0 2) (3 0 2), 3"},
        {"a point", "0 POINT|8 0|10 1|20 2|30 3", "1: (1 2 3) (1 2 3), 0"},
        {"lines without end within the sphere of the others",
         "0 LINE|8 0|10 -5|20 0|30 0|11 5|21 0|31 0|0 XLINE|8 0|10 3|20 99|30 0|11 0|21 1|31 0|"
         "0 RAY|8 0|10 0|20 0|30 0|11 0|21 0|31 9",
         "3: (-5 0 0) (5 0 0), 23"},
    };
    for (const ReadingRules rules : {ReadingRules::strict, ReadingRules::modern})
        for (const auto& [why, groups, curves] : cases) {
            const Reading with = readWithCurves(entities(groups), rules);
            EXPECT_EQ(curvesOf(*with.model), curves) << why;
            EXPECT_EQ(with.account.skipped(), 0u) << why;
            const Reading without = readDXF(entities(groups), {.rules = rules});
            EXPECT_EQ(curvesOf(*without.model), "none") << why;
            EXPECT_EQ(written(*without.model), written(*with.model)) << why;
            EXPECT_EQ(without.model->materials().empty(), without.model->facetCount() == 0) << why;
        }
}

TEST(DXFCurves, PatternsThatAskForTooMuchAreLeftOut)
{
    for (const auto& [spacing, dashes] :
         {std::pair{"1e-9", ""}, {"1e-300", ""}, {"1", "|49 1e-12|49 -1e-300"}}) {
        const Reading reading = readWithCurves(entities(hatch(spacing, dashes)), ReadingRules::modern);
        EXPECT_EQ(curvesOf(*reading.model), "none") << spacing << dashes;
        EXPECT_EQ(reading.account.skipped(), 1u) << spacing << dashes;
    }
}

TEST(DXFCurves, RaysThatMissTheRestInEveryInsertionAreSkipped)
{
    const std::string ray = block("B", "0 RAY|8 0|10 0|20 9|30 0|11 1|21 0|31 0");
    std::string all = "0 LINE|8 0|10 -5|20 0|30 0|11 5|21 0|31 0|";
    for (const auto& [down, hits] : {std::pair{"0", false}, {"1", false}, {"2", false}, {"-9", true}}) {
        all += std::string("0 INSERT|8 0|2 B|10 0|20 ") + down + "|";
        const Reading reading = readWithCurves(drawing(ray, all), ReadingRules::strict);
        const EntityCount& rays = reading.account.entities.at("RAY");
        EXPECT_EQ(rays.drawn, hits ? 1u : 0u) << down;
        EXPECT_EQ(rays.skipped[static_cast<std::size_t>(SkipReason::noSurface)], hits ? 0u : 1u) << down;
        EXPECT_EQ(reading.model->curveCount(), hits ? 2u : 1u) << down;
    }
}

TEST(DXFCurves, DiscsAreMarkedAsOutlinedAlsoInBlocks)
{
    const std::string disc =
        block("B", "0 CIRCLE|8 0|10 0|20 0|30 0|40 5|0 SOLID|8 0|10 0|20 0|11 1|21 0|12 0|22 1");
    std::string all;
    for (int i = 0; i < 4; ++i) all += insertion("B");   // the last ones are not read from the text again
    const Reading reading = readWithCurves(drawing(disc, all), ReadingRules::strict);
    const auto outlined = reading.model->outlinedFacets();
    EXPECT_EQ(std::vector(outlined.begin(), outlined.end()), (std::vector<std::uint32_t>{0, 2, 4, 6}));
}

/// Materials, bounds and what becomes of a block that is inserted often and within others.
TEST(DXFCurves, GoThroughInsertions)
{
    const std::string inner = block("I", "0 LINE|8 0|62 0|10 0|20 0|30 0|11 1|21 0|31 0");
    const std::string outer = block("O", insertion("I", "41 2|42 2|43 2|70 3|44 10|62 4"));
    std::string all = "0 LINE|8 early|10 0|20 0|30 0|11 9|21 0|31 0|" + face("late");
    for (int i = 0; i < 4; ++i) all += insertion("O", "20 5|41 3|42 3|43 3");
    const Reading reading = readWithCurves(drawing(inner + outer, all), ReadingRules::modern);
    const Model& model = *reading.model;
    EXPECT_EQ(curvesOf(model), "13: (0 0 0) (9 0 0), 81");
    EXPECT_NEAR(model.extent().hi()[0], 1, 0) << "bounds are those of the face";
    EXPECT_EQ(model.facet(0).material->index + 1, model.curve(0).material->index);
    EXPECT_EQ(model.curve(0).material->name, "early");
    for (std::uint32_t i = 1; i < 13; ++i) EXPECT_EQ(model.curve(i).material->name, "0 #00ffff") << i;
    EXPECT_EQ(reading.account.skipped(), 0u);
}

}   // namespace
}   // namespace belvor::test
