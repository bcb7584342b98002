#include "scene/Model.h"
#include "scene/Light.h"
#include "view/Intensity.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <sstream>

using namespace belvor;

TEST(Model, BoundsAreCentreAndRadiusOfTheExtent)
{
    // Columns: why, points, centre, radius.
    const std::tuple<const char*, std::vector<Point<3>>, Point<3>, double> cases[] = {
        {"empty", {}, {0, 0, 0}, 0},
        {"a single point is its own centre", {{5, 6, 7}}, {5, 6, 7}, 0},
        {"flat in one axis", {{0, 0, 1}, {4, 0, 1}, {0, 3, 1}}, {2, 1.5, 1}, 2.5},
        {"a coordinate that is no number widens nothing",
         {{0, 0, 0}, {2, 0, 0}, {std::nan(""), 0, 0}},
         {1, 0, 0},
         1},
        {"squares beyond what a number can hold", {{0, 0, 0}, {0, 2e200, 0}}, {0, 1e200, 0}, 1e200},
        {"an extent beyond it", {{-1.5e308, 0, 0}, {1.5e308, 0, 0}}, {0, 0, 0}, 1.5e308},
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
    MaterialSequence sequence;
    for (int i = 1; i <= 9; ++i) EXPECT_EQ(sequence.next("m").index, i);
    const Material tenth = sequence.next("m");   // tests/picture/test_ombr.py knows the first six
    for (std::size_t c = 0; c < 3; ++c) EXPECT_EQ(toByte(tenth.colour[c]), (std::array{255, 197, 186})[c]);
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
    EXPECT_EQ(sun.illuminate(down), Colour()) << "from behind";
    LightSet set;
    for (const std::size_t place : {1u, 3u})
        set.set(place, makeHandle<ParallelLight>(0.0, -90.0, Colour{1, 1, 1}));
    EXPECT_DOUBLE_EQ(set.illuminate(up)[0], 2.0) << "sums are not clamped, gaps give nothing";
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
