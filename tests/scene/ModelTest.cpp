#include "scene/Model.h"
#include "view/Intensity.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <sstream>
#include <utility>
#include <vector>

using namespace belvor;

TEST(Model, EdgesAreThoseOfTheFacetsWhetherStoredOrWorkedOut)
{
    std::mt19937 random(7);
    Model model;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> wanted;
    std::size_t workedOut = 0;
    for (int facet = 0; facet < 12000; ++facet) {
        // Long runs of quadrilaterals, then a few facets of any kind.
        const std::uint32_t corners = facet % 2500 < 30 ? 1 + static_cast<std::uint32_t>(random() % 7) : 4;
        if (corners == 6) model.addVertex({});
        const std::uint32_t start = model.vertexCount();
        const std::vector<Point<3>> points(corners);
        if (corners < 6) {
            model.addPolygon(model.findMaterial("a"), {}, points);
        } else {
            model.addFacet(model.findMaterial("a"));
            for (const Point<3>& point : points) model.addVertex(point);
            for (std::uint32_t i = 0; i < corners; ++i) model.addEdge(start + i, start + (i + 1) % corners);
        }
        ASSERT_EQ(model.vertexCount(), start + corners);
        EXPECT_EQ(model.facet(model.facetCount() - 1).edgeCount, corners);
        for (std::uint32_t i = 0; i < corners; ++i) wanted.emplace_back(start + i, start + (i + 1) % corners);
    }
    ASSERT_EQ(model.edgeCount(), wanted.size());
    for (std::uint32_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(std::pair(model.edge(i).from, model.edge(i).to), wanted[i]) << i;
        const Edge* const stored = model.edgesFrom(i, 1);
        if (stored) {
            EXPECT_EQ(std::pair(stored->from, stored->to), wanted[i]) << i;
        }
        workedOut += !stored;
    }
    EXPECT_GT(workedOut, wanted.size() / 5) << "they take no memory";
    EXPECT_LT(workedOut, wanted.size());
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
