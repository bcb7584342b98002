#include "scene/Model.h"
#include "scene/Light.h"
#include "view/Direction.h"
#include "view/Intensity.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

using namespace belvor;

TEST(Model, BoundsAreCentreAndRadiusOfTheExtent)
{
    constexpr double largest = std::numeric_limits<double>::max();
    // Columns: why, points, centre, radius.
    const std::tuple<const char*, std::vector<Point<3>>, Point<3>, double> cases[] = {
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
    for (const auto& [why, points, wantedCentre, wantedRadius] : cases) {
        Model model;
        for (const Point<3>& point : points) model.addVertex(point);
        Point<3> centre;
        double radius = -1;
        model.bounds(centre, radius);
        EXPECT_EQ(centre, wantedCentre) << why;
        EXPECT_EQ(radius, wantedRadius) << why;
    }
}

TEST(Model, ReferencesStayValidWhenTheStoresGrow)
{
    Model model;
    const Vertex& vertex = model.addVertex({1, 2, 3});
    const Facet& facet = model.addFacet(model.findMaterial("a"));
    for (int i = 0; i < 20000; ++i) {
        model.addVertex({0, 0, 0});
        model.addFacet(*facet.material);
    }
    EXPECT_EQ(&vertex, &model.vertex(0));
    EXPECT_EQ(&facet, &model.facet(0));
}

TEST(Model, DumpsBothEndsOfEveryEdgeOfAFacet)
{
    Model model;
    const Facet& facet = model.addFacet(model.findMaterial("a"), Plane(Vector<3>(0, 0, 1), 0.25));
    for (const Point<3>& p : {Point<3>(0, -1e-7, 2.0 / 3), Point<3>(1234567.5, 0, 0)}) model.addVertex(p);
    model.addEdge(0, 1);
    std::ostringstream stream, wanted;
    model.dump(stream, 0);
    const auto at = [&](std::uint32_t vertex) { return static_cast<const void*>(&model.vertex(vertex)); };
    wanted << "0 " << static_cast<const void*>(&facet) << " 0 0 1 0.25\n\n0 " << at(0)
           << " 0 -1e-07 0.666667 0 0 0\n0 " << at(1) << " 1.23457e+06 0 0 0 0 0\n\n";
    EXPECT_EQ(stream.str(), wanted.str());
}

TEST(MaterialSequence, GivesTheComputedColoursAndCountsIn16Bits)
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
    const std::tuple<double, int> cases[] = {{0, 0},         {-1, 0},  {0.0039, 0}, {0.5, 128},
                                             {0.99999, 255}, {1, 255}, {7, 255},    {std::nan(""), 0}};
    for (const auto& [value, byte] : cases) EXPECT_EQ(toByte(value), byte) << value;
}

TEST(Light, IlluminatesFacetsByTheirSlope)
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
    // Columns: why, d, bearing, elevation.
    const std::tuple<const char*, Vector<3>, double, double> cases[] = {
        {"along -y", {0, -1, 0}, 0, 0},      {"towards +x", {1, 0, 0}, 90, 0},
        {"straight up", {0, 0, 2}, 180, 90}, {"straight down, from a -0.0", {0, -0.0, -1}, 180, -90},
        {"no direction", {0, 0, 0}, 180, 0}, {"half up", {0, 1, 1}, 180, 45},
    };
    for (const auto& [why, d, wantedBearing, wantedElevation] : cases) {
        EXPECT_DOUBLE_EQ(std::abs(bearing(d)), wantedBearing) << why;
        EXPECT_DOUBLE_EQ(elevation(d), wantedElevation) << why;
    }
}

TEST(Intensity, SliderStepsAreTenthsOfADecade)
{
    const std::tuple<double, int> cases[] = {{0.0899, 0},  {0.09, 1},  {0.1122, 1},      {0.4, 7},
                                             {0.6, 9},     {0.89, 10}, {0.8913, 11},     {1.12, 11},
                                             {1.1221, 12}, {50, 21},   {std::nan(""), 0}};
    for (const auto& [intensity, position] : cases)
        EXPECT_EQ(intensityToSlider(intensity), position) << intensity;
    for (int position = 0; position <= 21; ++position)
        EXPECT_EQ(intensityToSlider(sliderToIntensity(position)), position);
    EXPECT_NEAR(sliderToIntensity(1), 0.1, 1e-15);
}
