#include "readers/dxf/DXFAreas.h"
#include "tests/readers/dxf/DXFText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace belvor::test {
namespace {

/// The area inside a regular polygon of that many sides in a circle of radius 1.
double polygonArea(int sides) { return sides / 2.0 * std::sin(2.0 * std::numbers::pi / sides); }

std::string hatch(const std::string& path)
{
    return "0 HATCH|10 0|20 0|30 5|70 1|91 1|" + path + "|97 0|75 0|76 1|98 1|10 9|20 9";
}

/// The facets of the modern reading, or why the first entity is left out. The entity's line is 5.
std::string drawnOf(const std::string& groups)
{
    const Reading reading = readModern(entities(groups));
    return reading.account.repairs.empty() ? written(*reading.model) : reading.account.repairs[0].text;
}

TEST(DXFHatch, EachKindOfEdgeBecomesChords)   // what tests/dxf_ezdxf/ does not write
{
    const auto line = [](int x, int y, int toX, int toY) {
        return "72 1|10 " + std::to_string(x) + "|20 " + std::to_string(y) + "|11 " + std::to_string(toX)
               + "|21 " + std::to_string(toY) + '|';
    };
    const std::string spline = "92 1|93 1|72 4|73 0|74 0|",
                      besideQuarter = line(0, -1, -1, -1) + line(-1, -1, -1, 0);
    // Columns: why, area, edges.
    const std::tuple<const char*, double, std::string> cases[] = {
        {"one line runs backwards", 6, "92 1|93 3|" + line(0, 0, 4, 0) + line(0, 3, 4, 0) + line(0, 3, 0, 0)},
        {"an open outline is closed", 6, "92 1|93 2|" + line(0, 0, 4, 0) + line(4, 0, 0, 3)},
        {"a quarter below the x axis: stored clockwise with negated angles", polygonArea(36) / 4 + 1,
         "92 1|93 4|72 2|10 0|20 0|40 1|50 0|51 90|73 0|" + besideQuarter + line(-1, 0, 1, 0)},
        {"a quarter of an ellipse, stored clockwise", polygonArea(36) / 2 + 1,
         "92 1|93 4|72 3|10 0|20 0|11 2|21 0|40 0.5|50 0|51 90|73 0|" + besideQuarter + line(-1, 0, 2, 0)},
        {"a spline of degree 1", 6,
         spline + "94 1|95 6|96 4|40 0|40 0|40 1|40 2|40 3|40 3|10 0|20 0|10 4|20 0|10 0|20 3|10 0|20 0"},
        {"a rational spline: what a quarter of a circle has beyond its chord", polygonArea(36) / 4 - 0.5,
         "92 1|93 1|72 4|94 2|73 1|74 0|95 6|96 3|40 0|40 0|40 0|40 1|40 1|40 1|"
         "10 1|20 0|42 1|10 1|20 1|42 0.70710678118654757|10 0|20 1|42 1"},
        {"fit points alone", 6,
         spline + "94 3|95 0|96 0|97 3|11 0|21 0|11 4|21 0|11 0|21 3|12 1|22 0|13 1|23 0"},
        {"two circles in one path", 2 * polygonArea(36),
         "92 1|93 2|72 2|10 0|20 0|40 1|50 0|51 360|73 1|72 2|10 9|20 0|40 1|50 0|51 360|73 1"},
    };
    for (const auto& [why, wantedArea, edges] : cases)
        EXPECT_NEAR(areaOf(*readModern(entities(hatch(edges))).model), wantedArea, 1e-3) << why;
}

TEST(DXFHatch, DamagedHatchesAreRefused)
{
    // Columns: why, paths, fault.
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"more edges than told", "92 1|93 0|72 1|10 0|20 0|11 1|21 1", "Bad DXF group"},
        {"a vertex without y", "92 3|72 0|73 1|93 2|10 0|10 1|20 1", "Bad DXF group: item <20> needed"},
        {"text for a number", "92 3|72 0|73 1|93 1|10 x|20 0", "Error reading double item value at line 25"},
        {"an unknown kind of edge", "92 1|93 1|72 5", "Bad DXF group at line 21"},
        {"fewer knots than told", "92 1|93 1|72 4|94 1|95 3|96 2|40 0|40 1|10 0|20 0|10 1|20 1",
         "Bad DXF group"},
    };
    for (const auto& [why, paths, fault] : cases)
        EXPECT_EQ(drawnOf(hatch(paths)), "left out: " + fault) << why;
}

DXFLoop2 square(double x, double y, double half)
{
    return {{x - half, y - half}, {x + half, y - half}, {x + half, y + half}, {x - half, y + half}};
}

/// How many loops each area has, sorted.
std::string loopCounts(const std::vector<DXFArea>& areas)
{
    std::string counts;
    for (const DXFArea& area : areas) counts += std::to_string(area.size());
    std::sort(counts.begin(), counts.end());
    return counts;
}

TEST(DXFAreas, NestByTheStyleOfTheHatch)   // what tests/dxf_ezdxf/ does not write
{
    const DXFLoop2 a = square(0, 0, 10), b = square(0, 0, 8), c = square(0, 0, 6), d = square(0, 0, 4);
    // Columns: why, outlines, parity, outermost.
    const std::tuple<const char*, std::vector<DXFLoop2>, const char*, const char*> cases[] = {
        {"a hole in the island", {d, c, b, a}, "22", "2"},
        {"a hole that touches the outline in a corner", {a, square(8, 8, 2)}, "2", "2"},
        {"a hole that has a corner on a side", {a, {{-10, 0}, {-5, -5}, {-5, 5}}}, "2", "2"},
        {"twice the same", {a, a}, "2", "2"},
    };
    for (const auto& [why, outlines, parity, outermost] : cases) {
        EXPECT_EQ(loopCounts(areasOf(outlines, DXFHatchStyle::oddParity)), parity) << why;
        EXPECT_EQ(loopCounts(areasOf(outlines, DXFHatchStyle::outermost)), outermost) << why;
        EXPECT_EQ(loopCounts(areasOf(outlines, DXFHatchStyle::outerOnly)), "1") << why;
    }
}

TEST(DXFAreas, TooManyOutlinesAreOneArea)
{
    std::vector<DXFLoop2> outlines;
    for (int i = 0; i < 40000; ++i) outlines.push_back(square(3.0 * i, 0, 1));
    const auto areas = areasOf(outlines, DXFHatchStyle::oddParity);
    ASSERT_EQ(areas.size(), 1u);
    EXPECT_EQ(areas[0].size(), outlines.size());
}

TEST(DXFMeshCage, HasTheFacesOfItsGroups)
{
    const std::string head = "0 MESH|71 2|72 1|91 3|", bad = "left out: Bad DXF group",
                      corners = "92 4|10 0|20 0|30 0|10 1|20 0|10 1|20 1|30 2|10 0|20 1|30 0|";
    // Columns: why, groups, faces or fault.
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"overrides at the end do not matter",
         corners + "93 4|90 3|90 0|90 1|90 2|94 1|90 0|90 1|95 1|140 3|90 7|91 0|92 5",
         "(0 0 0) (1 0 0) (1 1 2)"},
        {"a picture of the entity in front", "92 8|310 00FF|310 00FF|" + corners + "93 4|90 3|90 0|90 1|90 2",
         "(0 0 0) (1 0 0) (1 1 2)"},
        {"a position missing", "92 2|10 0|20 0|30 0|93 0", bad + " at line 21"},
        {"a face larger than the list", corners + "93 4|90 9|90 0|90 1|90 2", bad + " at line 41"},
        {"no such position", corners + "93 4|90 3|90 0|90 1|90 4|94 0", bad + " at line 47"},
        {"a count beyond the file", "92 2000000000|10 0|20 0", bad},
        {"no positions", "", bad + ": item <92> needed"},
    };
    for (const auto& [why, groups, outcome] : cases) EXPECT_EQ(drawnOf(head + groups), outcome) << why;
}

}   // namespace
}   // namespace belvor::test
