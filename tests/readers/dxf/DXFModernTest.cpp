#include "tests/readers/dxf/DXFText.h"

#include <gtest/gtest.h>

namespace belvor::test {
namespace {

/// A square with a square hole.
const std::string hatch =
    "0 HATCH|8 0|10 0|20 0|30 7|2 SOLID|70 1|91 2|92 2|72 0|73 1|93 4|10 -4|20 -4|10 4|20 -4|10 4|20 4|"
    "10 -4|20 4|97 0|92 2|72 0|73 1|93 4|10 -2|20 -2|10 2|20 -2|10 2|20 2|10 -2|20 2|97 0|75 0|76 1|98 0|";
const std::string square =
    block("*D1", "0 SOLID|8 0|10 0|20 0|30 0|11 1|21 0|31 0|12 0|22 1|32 0|13 1|23 1|33 0");

TEST(DXFModern, DrawsTheBlocksOfDimensionsAndTables)   // meshes and hatches: tests/dxf_ezdxf/
{
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"a dimension as its block stands", "0 DIMENSION|8 0|2 *D1|10 50|20 60|30 0|70 32|",
         "(0 0 0) (1 0 0) (1 1 0) (0 1 0)"},
        {"a dimension that was moved", "0 ARC_DIMENSION|8 0|2 *D1|10 50|20 60|30 0|12 5|22 6|32 7|",
         "(5 6 7) (6 6 7) (6 7 7) (5 7 7)"},
        {"a table to its insertion point", "0 ACAD_TABLE|8 0|2 *D1|10 5|20 0|30 0|11 1|21 0|31 0|",
         "(5 0 0) (6 0 0) (6 1 0) (5 1 0)"},
        {"a dimension without a block", "0 DIMENSION|8 0|2 *D9|", ""},
    };
    for (const auto& [why, content, facets] : cases) {
        EXPECT_EQ(written(*readModern(drawing(square, content)).model), facets) << why;
        EXPECT_EQ(readDXF(drawing(square, content)).model->facetCount(), 0u) << why;
    }
}

TEST(DXFModern, EdgesOfAnAreaWithAHoleCloseEachLoop)
{
    // In a block that is inserted three times: the third time it is played back.
    const std::string text = drawing(block("B", hatch), insertion("B", "70 3|44 9"));
    const Handle<Model> model = readModern(text).model;
    ASSERT_EQ(model->facetCount(), 3u);
    ASSERT_EQ(model->edgeCount(), 24u);
    for (std::uint32_t i = 0; i < 24; ++i) {
        const std::uint32_t loop = i / 4 * 4;
        EXPECT_EQ(model->edge(i).from, i);
        EXPECT_EQ(model->edge(i).to, loop + (i + 1) % 4);
    }
}

}   // namespace
}   // namespace belvor::test
