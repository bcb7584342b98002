#include "ui/dialogs/ModelFacts.h"

#include <gtest/gtest.h>

namespace belvor {

TEST(ModelFacts, MemoryIsRoundedAndCountedIn32Bits)
{
    const struct {
        std::uint32_t count, vertices, edges, facets;
    } cases[] = {
        {10, 0, 0, 1},
        {1000, 47, 39, 55},
        {89478486, 0, 3495253, 699051},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(vertexMemoryKB(c.count), c.vertices) << c.count;
        EXPECT_EQ(edgeMemoryKB(c.count), c.edges) << c.count;
        EXPECT_EQ(facetMemoryKB(c.count), c.facets) << c.count;
    }
}

TEST(ModelFacts, AnUntouchedScaleKeepsTheDigitsThatAreNotShown)
{
    const struct {
        const char *why, *text;
        double scale;
    } cases[] = {
        {"untouched", "0.3048", 0.3048006096},
        {"more digits", "0.30480", 0.3048},
        {"no number is 0", "x", 0.0},
        {"emptied", "", 0.0},
        {"beyond all doubles", "1e999", 0.3048006096},
    };
    for (const auto& c : cases) EXPECT_EQ(scaleOf(0.3048006096, "0.3048", c.text, "."), c.scale) << c.why;
}

}   // namespace belvor
