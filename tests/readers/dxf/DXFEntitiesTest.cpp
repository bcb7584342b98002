#include "readers/dxf/DXFArcs.h"
#include "readers/dxf/DXFLoops.h"
#include "tests/readers/dxf/DXFText.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace belvor;
using namespace belvor::test;

TEST(DXFArcs, AreDividedIntoChordsByAngleAndLength)
{
    const std::tuple<double, double, int> cases[] = {
        {360, 1e-9, 36}, {24.9999, 1, 1}, {25, 1, 3},   {20, 10, 1},  {20, 43, 2},   {10, 1000, 3},
        {0.001, 1, 1},   {0.0009, 1, 36}, {-90, 7, 27}, {-350, 7, 1}, {1, 1e300, 3}, {1e300, 1, 36},
    };
    for (const auto& [sweep, radius, chords] : cases)
        EXPECT_EQ(arcSegments(sweep, radius), chords) << sweep << " degrees, radius " << radius;
    const std::tuple<double, double, double> sweeps[] = {{0, 720, 360},  {30, 30, 360},  {350, 10, 20},
                                                         {10, 350, 340}, {90, -90, 180}, {0, 450, 90}};
    for (const auto& [start, end, sweep] : sweeps)
        EXPECT_EQ(sweepBetween(start, end), sweep) << start << ' ' << end;
}

TEST(DXFLoops, HaveAPlaneAlsoWhenCornersCoincideOrCross)   // others: tests/picture/line_scenes.py
{
    using Corners = std::vector<Point<3>>;
    const Vector<3> up(0, 0, 1), fallback(0, 1, 0);
    const std::tuple<const char*, Corners, Vector<3>> cases[] = {
        {"one point", Corners(3, {5, 5, 5}), fallback},
        {"first two coincide", Corners{{0, 0, 0}, {0, 0, 0}, {4, 3, 0}, {0, 3, 0}}, up},
        {"crosses itself with equal lobes", Corners{{0, 0, 0}, {4, 0, 0}, {0, 3, 0}, {4, 3, 0}}, fallback},
        {"small and millions away", Corners{{5e6, 5e6, 0}, {5e6 + 0.01, 5e6, 0}, {5e6, 5e6 + 0.01, 0}}, up},
        {"areas beyond a double", Corners{{0, 0, 0}, {1e200, 0, 0}, {0, 1e200, 0}}, up},
        {"areas below a double", Corners{{0, 0, 0}, {1e-200, 0, 0}, {0, 1e-200, 0}}, up},
    };
    for (const auto& [why, corners, normal] : cases)
        EXPECT_LT((planeOf(corners, fallback).normal() - normal).length(), 1e-9) << why;
}

// What follows leaves to tests/dxf_ezdxf/ what ordinary entities of these types give, and holds what files do
// besides.

TEST(DXFEntities, GiveTheirSurfaces)
{
    // Columns: why, groups, facets, corners, area.
    const std::tuple<const char*, const char*, std::uint32_t, std::uint32_t, double> cases[] = {
        {"solid without a fourth corner", "0 TRACE|10 0|20 0|11 4|21 0|12 4|22 3|39 2", 5, 18, 36},
        {"ellipse, complete by its parameters", "0 ELLIPSE|10 0|20 0|11 2|21 0|40 0.5|41 1|42 7.283185307", 1,
         36, 6.25133439},
        {"mitred corner, thick", "0 LWPOLYLINE|43 2|39 1|10 0|20 0|10 10|20 0|10 10|20 10", 10, 40, 124},
        {"donut", "0 LWPOLYLINE|70 1|43 1|10 -1|20 0|42 1|10 1|20 0|42 1", 36, 144, 6.25133439},
        {"a vertex' own width comes first",
         "0 POLYLINE|40 1|41 1|0 VERTEX|10 0|20 0|40 3|41 3|0 VERTEX|10 5|20 0|0 SEQEND", 1, 4, 15},
        {"smoothly out of an arc inside half the width",
         "0 LWPOLYLINE|43 4|10 0|20 2|42 1|10 0|20 0|42 0|10 10|20 0", 19, 58,
         40 + 81 * std::sin(toRadians(10))},
        {"different widths meet square: caps on both sides",
         "0 LWPOLYLINE|39 1|10 0|20 0|40 2|41 2|10 5|20 0|40 1|41 1|10 10|20 0", 12, 48, 2 * 15 + 20 + 4 + 2},
        {"a width for every vertex beats the vertices' own",
         "0 LWPOLYLINE|43 2|10 0|20 0|40 6|41 6|10 5|20 0", 1, 4, 10},
        {"what follows it is read", "0 POLYLINE|70 16|0 SEQEND|0 3DFACE|10 0|20 0|11 1|21 0|12 1|22 1", 1, 3,
         0.5},
    };
    for (const auto& [why, groups, facets, corners, area] : cases) {
        const Handle<Model> drawing = readDXF(entities(groups)).model;
        EXPECT_EQ(drawing->facetCount(), facets) << why;
        EXPECT_EQ(drawing->vertexCount(), corners) << why;
        EXPECT_NEAR(areaOf(*drawing), area, 1e-7) << why;
    }
    for (const char* const nothing :
         {"0 LINE|10 0|20 0|30 0|11 0|21 0|31 5|39 2",
          "0 ELLIPSE|10 0|20 0|11 2|21 0|40 0.5|41 0|42 3.141592654",
          "0 LWPOLYLINE|43 1|39 1|10 1|20 1|10 1|20 1",
          "0 POLYLINE|70 49|71 1|72 3|0 VERTEX|10 0|20 0|0 VERTEX|10 1|20 0|0 VERTEX|10 1|20 1|0 SEQEND"})
        EXPECT_EQ(readDXF(entities(nothing)).model->facetCount(), 0u) << nothing;
    const Handle<Model> crossed =
        readDXF(entities("0 SOLID|10 0|20 0|11 4|21 0|12 4|22 3|13 0|23 3|210 0|220 0|230 -1")).model;
    EXPECT_EQ(crossed->facet(0).plane.normal(), Vector<3>(0, 0, -1))
        << "a crossed loop takes the normal of its axes";
}

TEST(DXFEntities, GiveTheirCornersInOrder)
{
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"face: thickness, elevation, extrusion and unseen edges mean nothing",
         "0 3DFACE|10 0|20 0|11 4|21 0|12 4|22 3|38 9|39 2|70 15|210 0|220 0|230 -1",
         "(0 0 0) (4 0 0) (4 3 0)"},
        {"no extrusion is that of z", "0 SOLID|10 0|20 0|11 4|21 0|12 4|22 3|210 0|220 0|230 0",
         "(0 0 0) (4 0 0) (4 3 0)"},
        {"extrusion whose squared length is 0",
         "0 SOLID|10 0|20 0|11 4|21 0|12 4|22 3|210 1e-200|220 0|230 0", "(0 0 0) (0 4 0) (0 4 3)"},
        {"and where it is infinite", "0 SOLID|10 0|20 0|11 4|21 0|12 4|22 3|210 0|220 1e200|230 0",
         "(0 0 0) (-4 0 0) (-4 0 3)"},
        {"line: old elevation", "0 3DLINE|10 0|20 0|11 1|21 0|38 7|39 1", "(0 0 7) (1 0 7) (1 0 8) (0 0 8)"},
        {"elevation of the first vertex",
         "0 POLYLINE|40 2|41 2|38 9|0 VERTEX|10 0|20 0|30 4|0 VERTEX|10 9|20 0|30 6|0 SEQEND",
         "(0 1 4) (0 -1 4) (9 -1 4) (9 1 4)"},
        {"spline: its frame is not drawn",
         "0 POLYLINE|70 4|40 2|41 2|0 VERTEX|20 99|70 16|10 0|0 VERTEX|10 0|20 0|70 8|0 VERTEX|10 5|20 0|70 "
         "8|0 SEQEND",
         "(0 1 0) (0 -1 0) (5 -1 0) (5 1 0)"},
        {"taper to a point", "0 LWPOLYLINE|10 0|20 0|40 2|41 0|10 10|20 0", "(0 1 0) (0 -1 0) (10 0 0)"},
        {"collinear: one joint", "0 LWPOLYLINE|43 2|10 0|20 0|10 4|20 0|10 9|20 0",
         "(0 1 0) (0 -1 0) (4 -1 0) (4 1 0); (4 1 0) (4 -1 0) (9 -1 0) (9 1 0)"},
        {"mitre longer than a side: square ends", "0 LWPOLYLINE|43 8|10 0|20 0|10 3|20 0|10 3|20 9",
         "(0 4 0) (0 -4 0) (3 -4 0) (3 4 0); (-1 0 0) (7 0 0) (7 9 0) (-1 9 0)"},
        {"smoothed mesh: the fitted points, not their frame",
         "0 POLYLINE|70 20|71 1|72 1|73 2|74 2|0 VERTEX|70 80|10 9|20 9|0 VERTEX|70 72|10 0|20 0"
         "|0 VERTEX|70 72|10 0|20 1|0 VERTEX|70 72|10 1|20 0|0 VERTEX|70 72|10 1|20 1|0 SEQEND",
         "(0 0 0) (1 0 0) (1 1 0) (0 1 0)"},
    };
    for (const auto& [why, groups, facets] : cases)
        EXPECT_EQ(written(*readDXF(entities(groups)).model), facets) << why;
}

TEST(DXFEntity, MissingGroupsAreReported)
{
    const std::tuple<const char*, const char*, int> cases[] = {
        // the entity's own line is 5
        {"0 LINE|10 0|20 0|11 1|21 0|210 1", "Bad DXF group: item <220> needed", 5},
        {"0 LWPOLYLINE|10 0|10 1|20 1", "Bad DXF group: item <20> needed", 5},
        {"0 3DFACE|10 0|20 1e400|11 0|21 0|12 0|22 1", "Error reading double item value", 9},
        {"0 POLYLINE|70 x|0 SEQEND", "Error reading integer item value", 7},
        {"0 POLYLINE|70 64|0 VERTEX|70 192|10 0|20 0|0 LINE", "DXFVertex constructed with non-VERTEX group",
         17},
        {"0 POLYLINE|70 16|71 32767|72 32767|0 VERTEX|10 0|20 0|0 VERTEX|10 0|20 0|0 VERTEX|10 0|20 0|0 "
         "SEQEND",
         "PolygonMesh ends with wrong number of vertices", 5},
        {"0 POLYLINE|70 64|0 VERTEX|70 192|10 0|20 0|0 VERTEX|70 128|71 1|72 -9|73 1|0 SEQEND",
         "PolyfaceMesh index: vertex[9] outside range (0..1)", 23},
    };
    for (const auto& [groups, fault, line] : cases)
        EXPECT_EQ(outcomeOf(entities(groups)), fault + (" at line " + std::to_string(line)) + " in a.dxf")
            << groups;
    EXPECT_EQ(outcomeOf(entities("0 SOLID|10 1e308|20 0|11 4|21 0|12 0|22 3|13 4|23 3|38 1e308|39 1e308")),
              "0 facets; facet 6 coordinates too large");
}
