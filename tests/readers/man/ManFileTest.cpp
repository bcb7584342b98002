#include "readers/man/ManFile.h"

#include "app/errors/Reporter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace belvor {
namespace {

const std::string header = "KRVT v5.1.0 MAN file\nEND\n";
/// A square of side 2 at z = 1, seen from above, with a square hole of side 1.
const std::string plate = "CLUMP plate 8 1\n0 0 1\n2 0 1\n2 2 1\n0 2 1\n.5 .5 1\n1.5 .5 1\n1.5 1.5 1\n.5 1.5 1\nsteel\n"
                          "EDGE 8\n1 2 1 0\n2 3 1 0\n3 4 1 0\n4 1 1 0\n5 6 0 1\n6 7 0 1\n7 8 0 1\n8 5 0 1\n";
const std::string tetrahedron = "CLUMP t 4 4\n0 0 0\n10 0 0\n0 10 0\n0 0 10\nbrass\nbrass\nbrass\npaint\nEDGE 6\n"
                                "1 3 1 3\n3 2 1 4\n2 1 1 2\n1 4 3 2\n2 4 2 4\n3 4 4 3\n";

Handle<ManFile> read(const std::string& text)
{
    SilentReporter silent;
    return Handle<ManFile>(new ManFile(text, "test.man", silent));
}

std::string edgesOf(const Model& model, std::uint32_t number)
{
    std::string text;
    const Facet& facet = model.facet(number);
    for (std::uint32_t i = facet.firstEdge; i < facet.firstEdge + facet.edgeCount; ++i)
        text += std::to_string(model.edge(i).from) + ">" + std::to_string(model.edge(i).to) + " ";
    return text;
}

/// Asks to stop at the given call and keeps what it was told.
class Recorder : public Reporter {
public:
    explicit Recorder(std::size_t stopAtCall) : stopAt(stopAtCall) {}
    bool progress(int stageCount, int stage, double fraction) override
    {
        EXPECT_EQ(stageCount, 1);
        EXPECT_EQ(stage, 0);
        fractions.push_back(fraction);
        return fractions.size() == stopAt;
    }
    std::size_t stopAt;
    std::vector<double> fractions;
};

}   // namespace

TEST(ManFile, BothFacetsOfAnEdgeGetItInTheirOwnDirection)
{
    const auto model = read(header + tetrahedron);
    EXPECT_EQ(model->vertexCount(), 4u);
    ASSERT_EQ(model->facetCount(), 4u);
    EXPECT_EQ(edgesOf(*model, 0), "0>2 2>1 1>0 ");
    EXPECT_EQ(edgesOf(*model, 1), "0>1 3>0 1>3 ");
    EXPECT_EQ(edgesOf(*model, 2), "2>0 0>3 3>2 ");
    EXPECT_EQ(edgesOf(*model, 3), "1>2 3>1 2>3 ");
    const double third = 1.0 / std::sqrt(3.0);
    const Vector<3> outward[] = {{0, 0, -1}, {0, -1, 0}, {-1, 0, 0}, {third, third, third}};
    for (std::uint32_t i = 0; i < 4; ++i)
        EXPECT_NEAR((model->facet(i).plane.normal() - outward[i]).length(), 0.0, 1e-12) << "facet " << i + 1;
    EXPECT_NEAR(model->facet(3).plane.offset(), 10 * third, 1e-12);
}

TEST(ManFile, AHoleIsMoreEdgesOfTheSameFacet)
{
    const auto model = read(header + plate);
    ASSERT_EQ(model->facetCount(), 1u);
    EXPECT_EQ(edgesOf(*model, 0), "0>1 1>2 2>3 3>0 5>4 6>5 7>6 4>7 ");
    EXPECT_EQ(model->facet(0).plane.normal(), Vector<3>(0, 0, 1));
    EXPECT_EQ(model->facet(0).plane.offset(), 1.0);
}

TEST(ManFile, ClumpsNumberTheirVerticesAnewAndShareMaterials)
{
    const auto model = read(header + plate + tetrahedron + plate);
    Statistics counts{};
    model->statistics(counts);
    EXPECT_EQ(counts.vertices, 20u);
    EXPECT_EQ(counts.facets, 6u);
    EXPECT_EQ(counts.edges, 28u);
    EXPECT_EQ(counts.materials, 3u);
    EXPECT_EQ(edgesOf(*model, 1), "8>10 10>9 9>8 ");
    EXPECT_EQ(model->facet(0).material, model->facet(5).material);
    EXPECT_EQ(model->facet(4).material->name, "paint");
}

TEST(ManFile, TheHeaderSetsUnitsAndMaterials)
{
    MaterialSequence::ofProgram().reset();
    const auto model = read("KRVT v5.1.0 MAN file\nDATE 1997 12 16\nUNITS 2 0.001\nMATERIAL steel 0.25 .5 1 shiny\n"
                            "MATERIAL unused 0 0 0\nMATERIAL steel 1 1 1\nUNITS 7 25.4\nEND\n"
                            + plate + tetrahedron);
    EXPECT_EQ(model->units().code, 7u);
    EXPECT_EQ(model->units().scale, 25.4);
    EXPECT_EQ(model->materials().at("steel").colour, (Colour{0.25, 0.5, 1.0}));
    EXPECT_EQ(model->materials().at("steel").index, 1);
    EXPECT_EQ(model->materials().at("unused").index, 2);
    EXPECT_EQ(model->materials().at("brass").index, 3) << "the repeated material spends no number";
    MaterialSequence fresh;
    EXPECT_EQ(model->materials().at("brass").colour, fresh.next("").colour) << "given colours do not advance the hues";
    EXPECT_EQ(model->facet(0).material, &model->materials().at("steel"));
}

TEST(ManFile, LayoutThatCarriesNoMeaning)
{
    const auto crlf = [](std::string text) {
        for (std::size_t i = 0; (i = text.find('\n', i)) != std::string::npos; i += 2) text.replace(i, 1, "\r\n");
        return text;
    };
    const std::string plain = header + tetrahedron;
    const struct { const char* why; std::string text; } cases[] = {
        {"carriage returns", crlf(plain)},
        {"no end of the last line", plain.substr(0, plain.size() - 1)},
        {"carriage return and no line feed at the end", plain.substr(0, plain.size() - 1) + "\r"},
        {"blank lines and comments in the clump",
         header + "\n  \t\n# edges 9\nCLUMP t 4 4\n\n0 0 0\n#\n10 0 0\n0 10 0\n0 0 10\n\r\nbrass\nbrass\n# CLUMP\nbrass\npaint\n\n"
                  "EDGE 6\n1 3 1 3\n\n3 2 1 4\n2 1 1 2\n1 4 3 2\n2 4 2 4\n3 4 4 3\n\n#"},
        {"indented, tabs, more words", header + "\tCLUMP  t\t4 4 x\n 0 0 0 9\n+10 0.0 0e5\n0 1e1 0\n0 -0 10.\n brass cast\nbrass\n"
                                                "brass \npaint\nEDGE 6 0\n1 3 1 3 7\n3 2 1 4\n2 1 1 2\n1 4 3 2\n2 4 2 4\n3 4 4 3\n"},
    };
    const auto expected = read(plain);
    for (const auto& c : cases) {
        const auto model = read(c.text);
        ASSERT_EQ(model->vertexCount(), 4u) << c.why;
        ASSERT_EQ(model->facetCount(), 4u) << c.why;
        for (std::uint32_t i = 0; i < 4; ++i) {
            EXPECT_EQ(model->vertex(i).position, expected->vertex(i).position) << c.why;
            EXPECT_EQ(edgesOf(*model, i), edgesOf(*expected, i)) << c.why;
            EXPECT_EQ(model->facet(i).material->name, expected->facet(i).material->name) << c.why;
        }
    }
}

TEST(ManFile, SmallAndStrangeModelsAreAccepted)
{
    const struct { const char* why; std::string clumps; std::uint32_t vertices, edges, facets; } cases[] = {
        {"no clump", "", 0, 0, 0},
        {"an empty clump", "CLUMP a 0 0\nEDGE 0\n", 0, 0, 0},
        {"edges without facets", "CLUMP a 2 0\n0 0 0\n1 1 1\nEDGE 2\n1 2 0 0\n2 2 0 0\n", 2, 0, 0},
        {"a facet on both sides of an edge", "CLUMP a 2 1\n0 0 0\n1 1 1\nm\nEDGE 1\n1 2 1 1\n", 2, 2, 1},
        {"an edge from a vertex to itself", "CLUMP a 1 1\n0 0 0\nm\nEDGE 1\n1 1 1 0\n", 1, 1, 1},
        {"coordinates whose products overflow",
         "CLUMP a 3 1\n0 0 0\n1e300 0 0\n0 1e300 0\nm\nEDGE 3\n1 2 1 0\n2 3 1 0\n3 1 1 0\n", 3, 3, 1},
    };
    for (const auto& c : cases) {
        const auto model = read(header + c.clumps);
        EXPECT_EQ(model->vertexCount(), c.vertices) << c.why;
        EXPECT_EQ(model->edgeCount(), c.edges) << c.why;
        ASSERT_EQ(model->facetCount(), c.facets) << c.why;
        for (std::uint32_t i = 0; i < c.facets; ++i) EXPECT_EQ(model->facet(i).plane.normal(), Vector<3>(0, 0, 1)) << c.why;
    }
}

TEST(ManFile, ASmallFacetFarAwayKeepsItsNormal)
{
    const auto model = read(header + "CLUMP a 3 1\n1e9 1e9 1e9\n1000000001 1e9 1e9\n1e9 1e9 1000000001\nm\nEDGE 3\n1 2 1 0\n2 3 1 0\n3 1 1 0\n");
    EXPECT_EQ(model->facet(0).plane.normal(), Vector<3>(0, -1, 0));
}

TEST(ManFile, ProgressFollowsTheBytesAndStopsAtOnce)
{
    std::string text = header;
    for (int i = 0; i < 300; ++i) text += plate;
    Recorder recorder(0);
    const Handle<ManFile> whole(new ManFile(text, "test.man", recorder));
    const std::size_t calls = recorder.fractions.size();
    ASSERT_GT(calls, 300u);
    EXPECT_LT(recorder.fractions.front(), 0.01);
    for (std::size_t i = 1; i < calls; ++i) EXPECT_GE(recorder.fractions[i], recorder.fractions[i - 1]);
    EXPECT_EQ(recorder.fractions.back(), 1.0);
    for (const std::size_t stop : {std::size_t{1}, std::size_t{2}, calls / 2, calls}) {
        Recorder stopping(stop);
        EXPECT_THROW(ManFile(text, "test.man", stopping), Reporter::Abandoned) << "call " << stop;
        EXPECT_EQ(stopping.fractions.size(), stop);
    }
}

TEST(ManFile, TheSamplesAreClosedSolids)
{
    const struct { const char* file; Statistics counts; Units units; } cases[] = {
        {"flange.man", {152, 456, 78, 2}, {1.0, 2}},
        {"star.man", {24, 72, 14, 2}, {1.0, 0}},
        {"lighthouse.man", {91, 350, 88, 5}, {1.0, 4}},
    };
    for (const auto& c : cases) {
        SilentReporter silent;
        const Handle<ManFile> model(new ManFile(std::string(BELVOR_SOURCE_DIR "/samples/man/") + c.file, silent));
        Statistics counts{};
        model->statistics(counts);
        EXPECT_EQ(counts.vertices, c.counts.vertices) << c.file;
        EXPECT_EQ(counts.edges, c.counts.edges) << c.file;
        EXPECT_EQ(counts.facets, c.counts.facets) << c.file;
        EXPECT_EQ(counts.materials, c.counts.materials) << c.file;
        EXPECT_EQ(model->units().code, c.units.code) << c.file;
        // Facets that are flat: every corner lies on its facet's plane.
        for (std::uint32_t i = 0; i < counts.facets; ++i)
            for (std::uint32_t e = model->facet(i).firstEdge; e < model->facet(i).firstEdge + model->facet(i).edgeCount; ++e)
                EXPECT_NEAR(model->facet(i).plane.distanceTo(model->vertex(model->edge(e).from).position), 0.0, 1e-6) << c.file << " facet " << i + 1;
    }
}

}   // namespace belvor
