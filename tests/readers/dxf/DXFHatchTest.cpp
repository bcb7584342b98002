#include "errors/BadFile.h"
#include "errors/Reporter.h"
#include "readers/dxf/DXFAreas.h"
#include "readers/dxf/DXFMeshCage.h"
#include "readers/dxf/DXFStream.h"
#include "tests/readers/dxf/DXFText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace belvor::test {
namespace {

SilentReporter nobody;
constexpr double pi = std::numbers::pi;

double signedArea(const DXFLoop2& loop)
{
    double twice = 0.0;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const Point<2>&a = loop[i], &b = loop[(i + 1) % loop.size()];
        twice += a[0] * b[1] - a[1] * b[0];
    }
    return twice / 2.0;
}

/// The area inside a regular polygon of that many sides in a circle of radius 1.
double polygonArea(int sides) { return sides / 2.0 * std::sin(2.0 * pi / sides); }

/// Reads the only record of the text and hands it to `use`; the fault's text, or empty.
template <class Use>
std::string withRecord(const std::string& groups, Use use)
{
    const std::string bytes = dxfText(groups);
    const auto stream = DXFStream::over(bytes, "a.dxf", nobody, false);
    stream->nextRecord();
    try {
        use(stream->readRecord());
        return "";
    } catch (const BadFile& fault) {
        return fault.what();
    }
}

std::vector<DXFLoop2> outlinesOf(const std::string& groups)
{
    std::vector<DXFLoop2> outlines;
    EXPECT_EQ(withRecord(groups,
                         [&](const DXFRecord& record) {
                             for (const DXFHatchPath& path : readHatch(record).paths)
                                 for (DXFLoop2& loop : loopsOf(path)) outlines.push_back(std::move(loop));
                         }),
              "");
    return outlines;
}

std::string hatch(const std::string& path)
{
    return "0 HATCH|10 0|20 0|30 5|70 1|91 1|" + path + "|97 0|75 0|76 1|98 1|10 9|20 9";
}

TEST(DXFHatch, EachKindOfEdgeBecomesChords)   // what tests/dxf_ezdxf/ does not write
{
    const auto line = [](int x, int y, int toX, int toY) {
        return "72 1|10 " + std::to_string(x) + "|20 " + std::to_string(y) + "|11 " + std::to_string(toX)
               + "|21 " + std::to_string(toY) + '|';
    };
    const std::string spline = "92 1|93 1|72 4|73 0|74 0|", toCentre = line(0, -1, 0, 0);
    // Columns: why, area, edges.
    const std::tuple<const char*, double, std::string> cases[] = {
        {"one line runs backwards", 6, "92 1|93 3|" + line(0, 0, 4, 0) + line(0, 3, 4, 0) + line(0, 3, 0, 0)},
        {"so does the first", 6, "92 1|93 3|" + line(4, 0, 0, 0) + line(4, 0, 0, 3) + line(0, 3, 0, 0)},
        {"an open outline is closed", 6, "92 1|93 2|" + line(0, 0, 4, 0) + line(4, 0, 0, 3)},
        {"a half circle with its diameter", polygonArea(36) / 2,
         "92 1|93 2|72 2|10 0|20 0|40 1|50 0|51 180|73 1|" + line(-1, 0, 1, 0)},
        {"a quarter below the x axis: stored clockwise with negated angles", polygonArea(36) / 4,
         "92 1|93 3|72 2|10 0|20 0|40 1|50 0|51 90|73 0|" + toCentre + line(0, 0, 1, 0)},
        {"a quarter of an ellipse, stored clockwise", polygonArea(36) / 2,
         "92 1|93 3|72 3|10 0|20 0|11 2|21 0|40 0.5|50 0|51 90|73 0|" + toCentre + line(0, 0, 2, 0)},
        {"a spline of degree 1", 6,
         spline + "94 1|95 6|96 4|40 0|40 0|40 1|40 2|40 3|40 3|10 0|20 0|10 4|20 0|10 0|20 3|10 0|20 0"},
        {"fit points alone", 6,
         spline + "94 3|95 0|96 0|97 3|11 0|21 0|11 4|21 0|11 0|21 3|12 1|22 0|13 1|23 0"},
        {"two circles in one path", 2 * polygonArea(36),
         "92 1|93 2|72 2|10 0|20 0|40 1|50 0|51 360|73 1|72 2|10 9|20 0|40 1|50 0|51 360|73 1"},
        {"two corners enclose nothing", 0, "92 3|72 0|73 1|93 2|10 0|20 0|10 4|20 0"},
    };
    for (const auto& [why, wantedArea, edges] : cases) {
        double area = 0.0;
        for (const DXFLoop2& loop : outlinesOf(hatch(edges))) area += std::fabs(signedArea(loop));
        EXPECT_NEAR(area, wantedArea, 1e-12) << why;
    }
}

TEST(DXFHatch, SplinesFollowTheirCurve)
{
    // A circle of radius 1 as a rational spline of degree 2 in four quarters.
    std::string circle = "92 1|93 1|72 4|94 2|73 1|74 0|95 12|96 9|";
    for (const int knot : {0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4}) circle += "40 " + std::to_string(knot) + "|";
    const int x[] = {1, 1, 0, -1, -1, -1, 0, 1, 1}, y[] = {0, 1, 1, 1, 0, -1, -1, -1, 0};
    for (int i = 0; i < 9; ++i)
        circle += "10 " + std::to_string(x[i]) + "|20 " + std::to_string(y[i]) + "|42 "
                  + (i % 2 ? "0.70710678118654757" : "1") + "|";
    const auto round = outlinesOf(hatch(circle));
    ASSERT_EQ(round.size(), 1u);
    EXPECT_EQ(round[0].size(), 36u);
    for (const Point<2>& p : round[0]) EXPECT_NEAR(p.vector().length(), 1.0, 1e-14);

    // A cubic whose area above its ends is 0.6.
    const std::string cubic =
        "92 1|93 2|72 4|94 3|73 0|74 0|95 8|96 4|40 0|40 0|40 0|40 0|40 1|40 1|40 1|40 1|"
        "10 0|20 0|10 0|20 1|10 1|20 1|10 1|20 0|72 1|10 1|20 0|11 0|21 0|97 0|";
    const auto loops = outlinesOf(hatch(cubic));
    ASSERT_EQ(loops.size(), 1u);
    EXPECT_NEAR(std::fabs(signedArea(loops[0])), 0.6, 0.005);
    EXPECT_EQ(loops[0].size(), 19u);       // a turn of 180 degrees
    for (const Point<2>& p : loops[0]) {   // x = 3t²−2t³, y = 3t−3t²
        const double t = 0.5 - std::cos((std::acos(2.0 * p[0] - 1.0) + pi) / 3.0);
        EXPECT_NEAR(p[1], 3.0 * std::fabs(t) * (1.0 - std::fabs(t)), 1e-6) << p[0];
    }
}

TEST(DXFHatch, DamagedHatchesAreRefused)
{
    // Columns: why, paths, fault, line.
    const std::tuple<const char*, std::string, const char*, int> cases[] = {
        {"fewer vertices than told", "92 3|72 0|73 1|93 2|10 0|20 0", "Bad DXF group", 1},
        {"more edges than told", "92 1|93 0|72 1|10 0|20 0|11 1|21 1", "Bad DXF group", 1},
        {"a vertex without y", "92 3|72 0|73 1|93 2|10 0|10 1|20 1", "Bad DXF group: item <20> needed", 1},
        {"a vertex without x", "92 3|72 0|73 1|93 1|20 1", "Bad DXF group: item <10> needed", 1},
        {"the last vertex without y", "92 3|72 0|73 1|93 1|10 0", "Bad DXF group: item <20> needed", 1},
        {"text for a number", "92 3|72 0|73 1|93 1|10 x|20 0", "Error reading double item value", 21},
        {"an unknown kind of edge", "92 1|93 1|72 5", "Bad DXF group", 17},
        {"fewer knots than told", "92 1|93 1|72 4|94 1|95 3|96 2|40 0|40 1|10 0|20 0|10 1|20 1",
         "Bad DXF group", 1},
        {"fewer paths than told", "", "Bad DXF group", 1},
    };
    for (const auto& [why, paths, fault, line] : cases)
        EXPECT_EQ(withRecord(hatch(paths), [](const DXFRecord& record) { readHatch(record); }),
                  fault + (" at line " + std::to_string(line)) + " in a.dxf")
            << why;
}

DXFLoop2 square(double x, double y, double half)
{
    return {{x - half, y - half}, {x + half, y - half}, {x + half, y + half}, {x - half, y + half}};
}

/// "area-hole-hole", the areas by size, sorted.
std::string written(const std::vector<DXFArea>& areas)
{
    std::vector<std::string> texts;
    for (const DXFArea& area : areas) {
        std::string text;
        for (const DXFLoop2& loop : area)
            text += (text.empty() ? "" : "-") + std::to_string(std::lround(std::fabs(signedArea(loop))));
        texts.push_back(text);
    }
    std::sort(texts.begin(), texts.end());
    std::string all;
    for (const std::string& text : texts) all += (all.empty() ? "" : " ") + text;
    return all;
}

TEST(DXFAreas, NestByTheStyleOfTheHatch)   // what tests/dxf_ezdxf/ does not write
{
    const DXFLoop2 a = square(0, 0, 10), b = square(0, 0, 8), c = square(0, 0, 6), d = square(0, 0, 4),
                   beside = square(-3, 0, 0.5), corner = square(8, 8, 2);
    // Columns: why, outlines, parity, outermost, outer.
    const std::tuple<const char*, std::vector<DXFLoop2>, const char*, const char*, const char*> cases[] = {
        {"the hole comes first", {b, a}, "400-256", "400-256", "400"},
        {"a hole in the island", {d, c, b, a}, "144-64 400-256", "400-256", "400"},
        {"two holes", {a, square(3, 0, 1), beside}, "400-4-1", "400-4-1", "400"},
        {"a hole that touches the outline in a corner", {a, corner}, "400-16", "400-16", "400"},
        {"a hole that has a corner on a side", {a, {{-10, 0}, {-5, -5}, {-5, 5}}}, "400-25", "400-25", "400"},
        {"twice the same", {a, a}, "400-400", "400-400", "400"},
    };
    for (const auto& [why, outlines, parity, outermost, outer] : cases) {
        EXPECT_EQ(written(areasOf(outlines, DXFHatchStyle::oddParity)), parity) << why;
        EXPECT_EQ(written(areasOf(outlines, DXFHatchStyle::outermost)), outermost) << why;
        EXPECT_EQ(written(areasOf(outlines, DXFHatchStyle::outerOnly)), outer) << why;
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
    const std::string head = "0 MESH|71 2|72 1|91 3|",
                      corners = "92 4|10 0|20 0|30 0|10 1|20 0|10 1|20 1|30 2|10 0|20 1|30 0|";
    const std::string whole = "93 9|90 3|90 0|90 1|90 2|90 4|90 3|90 2|90 1|90 0|94 0|95 0|",
                      bad = "Bad DXF group at line ";
    // Columns: why, groups, faces or fault.
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"a triangle and a quadrilateral", corners + whole, "3 0 1 2 4 3 2 1 0 "},
        {"overrides at the end do not matter",
         corners + "93 4|90 3|90 0|90 1|90 2|94 1|90 0|90 1|95 1|140 3|90 7|91 0|92 5", "3 0 1 2 "},
        {"a face of two", corners + "93 3|90 2|90 0|90 1", "2 0 1 "},
        {"no faces", corners + "93 0|94 0", ""},
        {"a position missing", "92 2|10 0|20 0|30 0|93 0", bad + "17"},
        {"a face that is cut", corners + "93 5|90 3|90 0|90 1|90 2", bad + "1"},
        {"a face larger than the list", corners + "93 4|90 9|90 0|90 1|90 2", bad + "37"},
        {"no such position", corners + "93 4|90 3|90 0|90 1|90 4|94 0", bad + "43"},
        {"a negative index", corners + "93 4|90 3|90 0|90 -1|90 2|94 0", bad + "41"},
        {"a count beyond the file", "92 2000000000|10 0|20 0", bad + "1"},
        {"no positions", "", "Bad DXF group: item <92> needed at line 1"},
    };
    for (const auto& [why, groups, outcome] : cases) {
        std::string faces;
        const auto read = [&faces](const DXFRecord& record) {
            for (const std::uint32_t number : readMeshCage(record).faces)
                faces += std::to_string(number) + ' ';
        };
        const std::string fault = withRecord(head + groups, read);
        EXPECT_EQ(fault.empty() ? faces : fault, fault.empty() ? outcome : outcome + " in a.dxf") << why;
    }
}

}   // namespace
}   // namespace belvor::test
