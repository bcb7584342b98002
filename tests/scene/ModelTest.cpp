#include "scene/Model.h"
#include "scene/Light.h"
#include "view/Direction.h"
#include "view/Intensity.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace belvor {

TEST(Model, BoundsAreThoseOfTheExtent)
{
    constexpr double largest = std::numeric_limits<double>::max();
    const struct {
        const char* why;
        std::vector<Point<3>> points;
        Point<3> centre;
        double radius;
    } cases[] = {
        {"empty", {}, {0, 0, 0}, 0},
        {"a single point is its own centre", {{5, 6, 7}}, {5, 6, 7}, 0},
        {"points that coincide", {{5, 6, 7}, {5, 6, 7}}, {5, 6, 7}, 0},
        {"flat in one axis", {{0, 0, 1}, {4, 0, 1}, {0, 3, 1}}, {2, 1.5, 1}, 2.5},
        {"a coordinate that is no number widens nothing",
         {{0, 0, 0}, {2, 0, 0}, {std::nan(""), 0, 0}},
         {1, 0, 0},
         1},
        {"squares beyond what a number can hold", {{0, 0, 0}, {0, 2e200, 0}}, {0, 1e200, 0}, 1e200},
        {"an extent beyond it", {{-1.5e308, 0, 0}, {1.5e308, 0, 0}}, {0, 0, 0}, 1.5e308},
        {"a radius beyond it", {{-largest, -largest, 0}, {largest, largest, 0}}, {0, 0, 0}, largest},
    };
    for (const auto& c : cases) {
        Model model;
        for (const Point<3>& point : c.points) model.addVertex(point);
        Point<3> centre;
        double radius = -1;
        model.bounds(centre, radius);
        EXPECT_EQ(centre, c.centre) << c.why;
        EXPECT_EQ(radius, c.radius) << c.why;
    }
}

TEST(Model, DumpsBothEndsOfEveryEdgeOfAFacet)
{
    Model model;
    const Vertex& first = model.addVertex({0, 0, 0});
    const Facet& facet = model.addFacet(model.findMaterial("a"), Plane(Vector<3>(0, 0, 1), 0.25));
    for (const Point<3>& p : {Point<3>(1.5, 0, 0), Point<3>(0, 1, 0)}) model.addVertex(p);
    model.addEdge(0, 1);
    model.addEdge(1, 2);
    for (int i = 0; i < 20000; ++i) {
        model.addVertex({0, 0, 0});
        model.addFacet(*facet.material);
    }
    EXPECT_EQ(&first, &model.vertex(0)) << "references stay where they are";
    EXPECT_EQ(&facet, &model.facet(0));
    std::ostringstream stream;
    model.dump(stream, 0);
    std::ostringstream wanted;
    const auto at = [&model](std::uint32_t vertex) {
        return static_cast<const void*>(&model.vertex(vertex));
    };
    wanted << "0 " << static_cast<const void*>(&facet) << " 0 0 1 0.25\n\n0 " << at(0) << " 0 0 0 0 0 0\n0 "
           << at(1) << " 1.5 0 0 0 0 0\n1 " << at(1) << " 1.5 0 0 0 0 0\n1 " << at(2) << " 0 1 0 0 0 0\n\n";
    EXPECT_EQ(stream.str(), wanted.str());
}

TEST(MaterialSequence, SpreadsTheHuesAndCountsIn16Bits)
{
    const int wanted[10][3] = {{146, 255, 237}, {255, 218, 165}, {199, 184, 255}, {202, 255, 181},
                               {255, 162, 221}, {143, 240, 255}, {255, 253, 130}, {234, 149, 255},
                               {168, 255, 215}, {255, 197, 186}};
    MaterialSequence sequence;
    for (int i = 0; i < 10; ++i) {
        const Material material = sequence.next("m");
        EXPECT_EQ(material.index, i + 1);
        for (std::size_t c = 0; c < 3; ++c) EXPECT_EQ(toByte(material.colour[c]), wanted[i][c]) << i;
    }
    for (int i = 11; i <= 65535; ++i) EXPECT_EQ(sequence.nextIndex(), i);
    EXPECT_EQ(sequence.nextIndex(), 1) << "a number is never 0";
}

TEST(ToByte, TruncatesAndClamps)
{
    const struct {
        double value;
        int byte;
    } cases[] = {{0, 0},         {-1, 0},  {0.0039, 0}, {0.5, 128},
                 {0.99999, 255}, {1, 255}, {7, 255},    {std::nan(""), 0}};
    for (const auto& c : cases) EXPECT_EQ(toByte(c.value), c.byte) << c.value;
}

TEST(Light, ReachesFacetsByTheirSlope)
{
    const Vector<3> up{0, 0, 1}, down{0, 0, -1};
    const AmbientLight ambient({0.4, 0.6, 0.8}, {0.1, 0.1, 0.1});
    const ParallelLight sun(0, -90, {1, 0.5, 0.25});
    EXPECT_DOUBLE_EQ(ambient.illuminate(up)[1], 0.6);
    EXPECT_DOUBLE_EQ(ambient.illuminate(down)[2], 0.1);
    EXPECT_DOUBLE_EQ(ambient.illuminate({1, 0, 0})[0], 0.25);
    EXPECT_DOUBLE_EQ(sun.illuminate(up)[1], 0.5);
    EXPECT_EQ(sun.illuminate(down), Colour()) << "from behind";
    LightSet set;
    set.set(3, makeHandle<AmbientLight>(Colour{1, 1, 1}, Colour{1, 1, 1}));
    set.set(1, makeHandle<ParallelLight>(0.0, -90.0, Colour{1, 1, 1}));
    EXPECT_DOUBLE_EQ(set.illuminate(up)[0], 2.0) << "sums are not clamped, gaps give nothing";
    EXPECT_FALSE(set.get(2));
    EXPECT_FALSE(set.get(99));
}

TEST(Direction, IsBearingAndElevation)
{
    const struct {
        const char* why;
        Vector<3> d;
        double bearing, elevation;
    } cases[] = {
        {"along -y", {0, -1, 0}, 0, 0},      {"towards +x", {1, 0, 0}, 90, 0},
        {"straight up", {0, 0, 2}, 180, 90}, {"straight down, from a -0.0", {0, -0.0, -1}, 180, -90},
        {"no direction", {0, 0, 0}, 180, 0}, {"half up", {0, 1, 1}, 180, 45},
    };
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(std::abs(bearing(c.d)), c.bearing) << c.why;
        EXPECT_DOUBLE_EQ(elevation(c.d), c.elevation) << c.why;
    }
}

TEST(Intensity, RunsInStepsOfATenthOfADecade)
{
    const struct {
        double intensity;
        int position;
    } cases[] = {{0.0899, 0},  {0.09, 1},  {0.1122, 1},  {0.4, 7}, {0.6, 9},         {0.89, 10},
                 {0.8913, 11}, {1.12, 11}, {1.1221, 12}, {50, 21}, {std::nan(""), 0}};
    for (const auto& c : cases) EXPECT_EQ(intensityToSlider(c.intensity), c.position) << c.intensity;
    for (int position = 0; position <= 21; ++position)
        EXPECT_EQ(intensityToSlider(sliderToIntensity(position)), position);
    EXPECT_NEAR(sliderToIntensity(1), 0.1, 1e-15);
}

}   // namespace belvor
