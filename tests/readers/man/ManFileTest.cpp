#include "readers/man/ManFile.h"

#include "errors/BadFile.h"
#include "errors/Reporter.h"
#include "tests/support/LineEnds.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

using namespace belvor;
using test::endingLines;

namespace {

const std::string header = "KRVT v5.1.0 MAN file\nEND\n";
/// A square of side 2 at z = 1, seen from above, with a square hole of side 1.
const std::string plate =
    "CLUMP plate 8 1\n0 0 1\n2 0 1\n2 2 1\n0 2 1\n.5 .5 1\n1.5 .5 1\n1.5 1.5 1\n.5 1.5 1\nsteel\n"
    "EDGE 8\n1 2 1 0\n2 3 1 0\n3 4 1 0\n4 1 1 0\n5 6 0 1\n6 7 0 1\n7 8 0 1\n8 5 0 1\n";
const std::string tetrahedron =
    "CLUMP t 4 4\n0 0 0\n10 0 0\n0 10 0\n0 0 10\nbrass\nbrass\nbrass\npaint\nEDGE 6\n"
    "1 3 1 3\n3 2 1 4\n2 1 1 2\n1 4 3 2\n2 4 2 4\n3 4 4 3\n";

Handle<Model> read(const std::string& text)
{
    SilentReporter silent;
    return ManFile(text, "test.man", silent).takeModel();
}

/// The facets: material, edges, and the plane as "(normal) offset".
std::string facetsOf(const Model& model)
{
    std::ostringstream text;
    text.precision(4);
    for (std::uint32_t number = 0; number < model.facetCount(); ++number) {
        const Facet& facet = model.facet(number);
        text << facet.material->name;
        for (std::uint32_t i = facet.firstEdge; i < facet.firstEdge + facet.edgeCount; ++i)
            text << ' ' << model.edge(i).from << '>' << model.edge(i).to;
        const Vector<3>& normal = facet.plane.normal();
        text << " (" << normal[0] + 0.0 << ' ' << normal[1] + 0.0 << ' ' << normal[2] + 0.0 << ") "
             << facet.plane.offset() + 0.0 << '\n';
    }
    return text.str();
}

std::string faultOf(const std::string& text)
{
    try {
        read(text);
    } catch (const BadFile& fault) {
        return fault.what();
    }
    return "none";
}

}   // namespace

TEST(ManFile, GivesEachFacetItsEdgesAndItsPlane)
{
    const std::string three = "m\nEDGE 3\n1 2 1 0\n2 3 1 0\n3 1 1 0\n";
    // Columns: why, clumps, facets.
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"both facets of an edge have it in their own direction", tetrahedron,
         "brass 0>2 2>1 1>0 (0 0 -1) 0\nbrass 0>1 3>0 1>3 (0 -1 0) 0\n"
         "brass 2>0 0>3 3>2 (-1 0 0) 0\npaint 1>2 3>1 2>3 (0.5774 0.5774 0.5774) 5.774\n"},
        {"a hole is more edges of the facet; each clump numbers its own vertices", plate + plate,
         "steel 0>1 1>2 2>3 3>0 5>4 6>5 7>6 4>7 (0 0 1) 1\n"
         "steel 8>9 9>10 10>11 11>8 13>12 14>13 15>14 12>15 (0 0 1) 1\n"},
        {"a facet on both sides of an edge", "CLUMP a 2 1\n0 0 0\n1 1 1\nm\nEDGE 1\n1 2 1 1\n",
         "m 0>1 1>0 (0 0 1) 0\n"},
        {"a small facet far away",
         "CLUMP a 3 1\n1e9 1e9 1e9\n1000000001 1e9 1e9\n1e9 1000000001 1e9\n" + three,
         "m 0>1 1>2 2>0 (0 0 1) 1e+09\n"},
        {"coordinates whose products overflow", "CLUMP a 3 1\n0 0 0\n1e300 0 0\n0 1e300 0\n" + three,
         "m 0>1 1>2 2>0 (0 0 1) 0\n"},
    };
    for (const auto& [why, clumps, facets] : cases)
        EXPECT_EQ(facetsOf(*read(header + clumps)), facets) << why;
}

TEST(ManFile, TheHeaderSetsUnitsAndMaterials)
{
    MaterialSequence::ofProgram().reset();
    const auto model =
        read("KRVT v5.1.0 MAN file\nDATE 1997 12 16\nUNITS 2 0.001\nMATERIAL steel 0.25 .5 1 shiny\n"
             "MATERIAL unused 0 0 0\nMATERIAL steel 1 1 1\nUNITS 7 25.4\nEND\n"
             + plate + tetrahedron);
    const auto [scale, code] = model->units();
    EXPECT_EQ(std::pair(scale, code), std::pair(25.4, 7u));
    const auto& materials = model->materials();
    EXPECT_EQ(materials.at("steel").colour, (Colour{0.25, 0.5, 1.0}));
    EXPECT_EQ(materials.at("brass").index, 3) << "the repeated material spends no number";
    EXPECT_EQ(materials.at("brass").colour, MaterialSequence().next("").colour)
        << "given colours do not advance the hues";
    EXPECT_EQ(model->facet(0).material, &materials.at("steel"));
}

TEST(ManFile, SpacesCommentsAndLineEndsDoNotMatter)
{
    const std::string plain = header + tetrahedron;
    const std::tuple<const char*, std::string> cases[] = {
        {"carriage returns", endingLines(plain, "\r\n")},
        {"no end of the last line", plain.substr(0, plain.size() - 1)},
        {"blank lines and comments in the clump",
         header + endingLines(tetrahedron, "\n\n \t\n# EDGE 9\n\r\n")},
        {"indented, tabs, more words, other numbers",
         header
             + "\tCLUMP  t\t4 4 x\n 0 0 0 9\n+10 0.0 0e5\n0 1e1 0\n0 0 10.\n brass cast\nbrass\n"
               "brass \npaint\nEDGE 6 0\n1 3 1 3 7\n3 2 1 4\n2 1 1 2\n1 4 3 2\n2 4 2 4\n3 4 4 3\n"},
    };
    for (const auto& [why, text] : cases) EXPECT_EQ(facetsOf(*read(text)), facetsOf(*read(plain))) << why;
}

TEST(ManFile, FaultsNameTheFileAndTheLine)
{
    const std::string h = "KRVT v5.1.0 MAN file\n";
    const std::string e = h + "END\n";
    const std::string triangle = e + "CLUMP a 3 1\n0 0 0\n1 0 0\n0 1 0\nm\n";
    const std::string notMan = "File is not a 'KRVT v5.1.0 MAN file'",
                      header = "end-of-file reading header records", past = "read past end-of-file",
                      real = "Error reading double item value", integer = "Error reading integer item value",
                      loop = "degenerate loop", edgeEnd = "end-of-file reading EDGE record",
                      noEdge = "CLUMP not followed by EDGE record", vertex = "vertex number out of range";
    // Columns: text, fault, line.
    const std::tuple<std::string, std::string, int> cases[] = {
        {"", notMan, 1},
        {"KRVT v5.1.0 MAN file\rEND\r", notMan, 1},   // a line does not end with CR alone
        {h + "UNITS 1 1\n# END\n", header, 3},
        {h + "UNITS 9 1\nEND\n", integer, 2},
        {h + "\nMATERIAL\nEND\n", "material expected", 3},
        {h + "MATERIAL m 0 1.01 0\nEND\n", real, 2},
        {triangle + "EDGE 3\n1 2 1 0\n2 3 1 0\n3 1 1 0\n1 3 0 0\n", "CLUMP record expected", 12},
        {e + "CLUMP a 2147483648 0\n", integer, 3},
        {e + "CLUMP a 2147483647 2147483647\n0 0 0\n", past, 4},
        {e + "CLUMP a 1 0\n0 0 0\n", past, 4},
        {e + "CLUMP a 1 1\n0 0 0\n1 0 0\nm\nEDGE 0\n", noEdge, 6},   // more vertices than announced
        {triangle + "EDGE 2147483647\n", edgeEnd, 8},
        {triangle + "EDGE 3\n0 2 1 0\n", vertex, 9},
        {triangle + "EDGE 3\n1 2 1 0\n2 3 1 0\n3 1 1 0\nCLUMP b 1 0\n0 0 0\nEDGE 1\n2 1 0 0\n", vertex, 15},
        {triangle + "EDGE 3\n1 2 2 0\n", loop, 9},
        {triangle + "EDGE 0\n", loop, 8},                              // a facet without edges
        {triangle + "EDGE 2\n1 2 1 0\n2 3 1 0\n", loop, 8},            // open
        {triangle + "EDGE 3\n1 2 1 0\n2 3 1 0\n1 3 1 0\n", loop, 8},   // edges run against each other
    };
    for (const auto& [text, fault, line] : cases)
        EXPECT_EQ(faultOf(text), fault + " at line " + std::to_string(line) + " in test.man") << text;
}
