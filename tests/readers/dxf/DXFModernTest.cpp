#include "tests/readers/dxf/DXFText.h"

#include <gtest/gtest.h>

namespace belvor::test {
namespace {

const std::string blocks =
    block("*D1", "0 SOLID|8 0|10 0|20 0|30 0|11 1|21 0|31 0|12 0|22 1|32 0|13 1|23 1|33 0")
    + block("HOLE",
            "0 HATCH|8 0|10 0|20 0|30 7|70 1|91 2|92 2|72 0|73 1|93 3|10 0|20 0|10 9|20 0|10 0|20 9|97 0|"
            "92 2|72 0|73 1|93 3|10 1|20 1|10 2|20 1|10 1|20 2|97 0|75 0|76 1|98 0");

TEST(DXFModern, DrawsTheBlocksOfDimensionsAndTables)   // more of meshes and hatches: tests/dxf_ezdxf/
{
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"a dimension as its block stands", "0 DIMENSION|8 0|2 *D1|10 50|20 60|30 0|70 32|",
         "(0 0 0) (1 0 0) (1 1 0) (0 1 0)"},
        {"a dimension that was moved", "0 ARC_DIMENSION|8 0|2 *D1|10 50|20 60|30 0|12 5|22 6|32 7|",
         "(5 6 7) (6 6 7) (6 7 7) (5 7 7)"},
        {"a table to its insertion point", "0 ACAD_TABLE|8 0|2 *D1|10 5|20 0|30 0|11 1|21 0|31 0|",
         "(5 0 0) (6 0 0) (6 1 0) (5 1 0)"},
        {"a dimension without a block", "0 DIMENSION|8 0|2 *D9|", ""},
        {"no columns and fewer rows: one of each", insertion("HOLE", "70 0|71 -2|44 9|45 9"),
         "(0 0 7) (9 0 7) (0 9 7) / (1 1 7) (2 1 7) (1 2 7)"},
        {"an area with a hole, the third time played back", insertion("HOLE", "70 3|44 9"),
         "(0 0 7) (9 0 7) (0 9 7) / (1 1 7) (2 1 7) (1 2 7); (9 0 7) (18 0 7) (9 9 7) / (10 1 7) (11 1 7) "
         "(10 2 7); "
         "(18 0 7) (27 0 7) (18 9 7) / (19 1 7) (20 1 7) (19 2 7)"},
    };
    for (const auto& [why, content, facets] : cases) {
        EXPECT_EQ(written(*readModern(drawing(blocks, content)).model), facets) << why;
        EXPECT_EQ(readDXF(drawing(blocks, content)).model->facetCount(), 0u) << why;
    }
}

}   // namespace
}   // namespace belvor::test
