#include "ui/dialogs/ModelFacts.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(ModelFacts, MemoryIsRoundedAndCountedIn32Bits)
{
    // Columns: count, vertices, edges, facets.
    const std::tuple<std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t> cases[] = {
        {10, 0, 0, 1}, {1000, 47, 39, 55}, {89478486, 0, 3495253, 699051}};
    for (const auto& [count, vertices, edges, facets] : cases) {
        EXPECT_EQ(vertexMemoryKB(count), vertices) << count;
        EXPECT_EQ(edgeMemoryKB(count), edges) << count;
        EXPECT_EQ(facetMemoryKB(count), facets) << count;
    }
}

TEST(ModelFacts, AnUnchangedScaleKeepsAllItsDigits)
{
    const std::tuple<const char*, const char*, double> cases[] = {
        {"untouched", "0.3048", 0.3048006096},
        {"more digits", "0.30480", 0.3048},
        {"no number is 0", "x", 0.0},
        {"emptied", "", 0.0},
        {"beyond all doubles", "1e999", 0.3048006096},
    };
    for (const auto& [why, text, scale] : cases)
        EXPECT_EQ(scaleOf(0.3048006096, "0.3048", text, "."), scale) << why;
}
