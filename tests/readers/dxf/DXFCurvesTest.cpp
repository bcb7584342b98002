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
    const std::string square = "92 2|72 0|73 1|93 4|10 0|20 0|10 4|20 0|10 4|20 4|10 0|20 4|97 0|",
                      hole = "92 2|72 0|73 1|93 4|10 1|20 1|10 2|20 1|10 2|20 2|10 1|20 2|97 0|";
    return "0 HATCH|8 0|10 0|20 0|30 1|70 0|91 2|" + square + hole
           + "75 0|76 1|52 0|41 1|77 0|78 1|53 0|43 0|44 0.5|45 0|46 " + spacing + dashes + "|98 0";
}

/// With curves and without; in both readings. Arcs have chords of 2 degrees.
TEST(DXFCurves, AreWhatTheEntitySaysAndChangeNothingWhenTheyAreNotAskedFor)
{
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"a spline by fit points, smooth: up 1.5 t - 0.5 t^3",
         "0 SPLINE|8 0|71 3|11 0|21 0|31 0|11 1|21 1|31 0|11 1|21 1|31 0|11 2|21 0|31 0",
         "1: (0 0 0) (2 0 0), 2.913847"},
        {"a spline whose knots are all one: straight",
         "0 SPLINE|8 0|71 1|40 0|40 0|40 0|40 0|10 1|20 0|30 0|10 1|20 2|30 0", "1: (1 0 0) (1 2 0), 2"},
        {"lines of a hatch, around its hole", hatch("1", ""), "5: (0 0.5 1) (4 0.5 1), 15"},
        {"dashes that a hole cuts", hatch("1", "|79 2|49 1.5|49 -0.5"), "8: (0 0.5 1) (1.5 0.5 1), 11.5"},
        {"dots", hatch("1", "|79 2|49 0|49 -2"), "8: (0 0.5 1) (0 0.5 1), 0"},
        {"lines that lie on each other", hatch("0", ""), "1: (0 0.5 1) (4 0.5 1), 4"},
        {"a helix by its axis",
         "0 HELIX|8 0|71 3|100 AcDbHelix|10 0|20 0|30 0|11 2|21 0|31 0|12 0|22 0|32 1|40 2|41 1|42 6|290 1",
         "1: (2 0 0) (2 0 6), 13.924713"},
        {"with width its outline", "0 LWPOLYLINE|8 0|90 2|70 0|43 2|10 0|20 0|10 5|20 0",
         "1: (0 1 0) (0 1 0), 14"},
        {"a square ring of width has two",
         "0 LWPOLYLINE|8 0|90 4|70 1|43 1|10 0|20 0|10 4|20 0|10 4|20 4|10 0|20 4",
         "2: (0.5 0.5 0) (0.5 0.5 0), 32"},
        {"a ring without a hole has one",
         "0 LWPOLYLINE|8 0|90 2|70 1|43 3|10 0.1|20 0.3|42 1|10 1.3|20 0.7|42 1",
         "1: (-1.323025 -0.174342 0) (-1.323025 -0.174342 0), 13.397933"},
        {"with thickness two", "0 LWPOLYLINE|8 0|90 2|70 1|39 1|43 3|10 0.1|20 0.3|42 1|10 1.3|20 0.7|42 1",
         "2: (-1.323025 -0.174342 0) (-1.323025 -0.174342 0), 26.795866"},
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
    for (const auto& [down, account] : {std::pair{"0", "1 = 0 + 1 no surface"},
                                        {"1", "1 = 0 + 1 no surface"},
                                        {"2", "1 = 0 + 1 no surface"},
                                        {"-9", "1 = 1"}}) {
        all += std::string("0 INSERT|8 0|2 B|10 0|20 ") + down + "|";
        const Reading reading = readWithCurves(drawing(ray, all), ReadingRules::strict);
        EXPECT_NE(accountOf(reading.account).find(std::string("RAY ") + account), std::string::npos) << down;
    }
}

TEST(DXFCurves, LinesWithoutEndKeepTheirPlacesAndThoseThatMissLeaveNothing)
{
    const char* const missed = "0 RAY|8 missed|10 9|20 9|30 0|11 1|21 0|31 0|";
    const Reading reading = readWithCurves(
        entities(std::string("0 LINE|8 a|10 -5|20 0|30 0|11 5|21 0|31 0|") + missed
                 + "0 XLINE|8 x|10 3|20 9|30 0|11 0|21 1|31 0|" + missed
                 + "0 LINE|8 a|10 0|20 1|30 0|11 0|21 2|31 0|0 RAY|8 b|10 0|20 0|30 4|11 0|21 0|31 1"),
        ReadingRules::strict);
    const Model& model = *reading.model;
    std::string found;
    for (std::uint32_t i = 0; i < model.curveCount(); ++i) {
        const Curve& curve = model.curve(i);
        found += curve.material->name + ' ' + written(model.curvePoint(curve.firstPoint)) + ' '
                 + written(model.curvePoint(curve.firstPoint + 1)) + (curve.bounded ? "; " : " cut; ");
    }
    EXPECT_EQ(found, "a (-5 0 0) (5 0 0); x (3 -3.123106 0) (3 5.123106 0) cut; "
                     "a (0 1 0) (0 2 0); b (0 0 4) (0 0 5) cut; ");
    EXPECT_EQ(model.materials().size(), 3u);
    EXPECT_EQ(reading.account.skipped(), 2u);
}

TEST(DXFCurves, DiscsAreMarkedAsOutlinedAlsoInBlocks)
{
    const std::string disc =
        block("B", "0 CIRCLE|8 0|10 0|20 0|30 0|40 5|0 SOLID|8 0|10 0|20 0|11 1|21 0|12 0|22 1");
    const std::string inserted =
        insertion("B") + insertion("B");   // the last ones are not read from the text again
    const Reading reading = readWithCurves(drawing(disc, inserted + inserted), ReadingRules::strict);
    const auto outlined = reading.model->outlinedFacets();
    EXPECT_EQ(std::vector(outlined.begin(), outlined.end()), (std::vector<std::uint32_t>{0, 2, 4, 6}));
}

/// Materials and bounds; the numbers are held in tests/dxf_ezdxf/.
TEST(DXFCurves, GoThroughInsertions)
{
    const std::string inner = block("I", "0 LINE|8 0|62 0|10 0|20 0|30 0|11 1|21 0|31 0");
    const std::string twice = insertion("I", "41 2|70 3|44 10|62 4") + insertion("I", "41 2|70 3|44 10|62 4"),
                      all = "0 LINE|8 early|10 0|20 0|30 0|11 9|21 0|31 0|" + face("late") + twice + twice;
    const Handle<Model> model = readWithCurves(drawing(inner, all), ReadingRules::modern).model;
    EXPECT_EQ(curvesOf(*model), "13: (0 0 0) (9 0 0), 33");
    EXPECT_EQ(model->extent().hi()[0], 1) << "bounds are those of the face";
    EXPECT_EQ(model->facet(0).material->index + 1, model->curve(0).material->index);
    for (std::uint32_t i = 1; i < 13; ++i) EXPECT_EQ(model->curve(i).material->name, "0 #00ffff") << i;
}

}   // namespace
}   // namespace belvor::test
