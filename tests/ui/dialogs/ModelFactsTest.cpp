#include "ui/dialogs/ModelFacts.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(ModelFacts, MemoryIsRoundedAndCountedIn32Bits)
{
    const auto memoryOf = [](std::uint32_t count) {
        return std::tuple(vertexMemoryKB(count), edgeMemoryKB(count), facetMemoryKB(count));
    };
    EXPECT_EQ(memoryOf(1000), std::tuple(47u, 39u, 55u));
    EXPECT_EQ(memoryOf(89478486), std::tuple(0u, 3495253u, 699051u));
}

TEST(ModelFacts, AnUnchangedScaleKeepsAllItsDigits)
{
    // An untouched text, one with more digits, none (which is 0), and one beyond all doubles.
    for (const auto& [text, scale] :
         {std::pair{"0.3048", 0.3048006096}, {"0.30480", 0.3048}, {"x", 0.0}, {"1e999", 0.3048006096}})
        EXPECT_EQ(scaleOf(0.3048006096, "0.3048", text, "."), scale) << text;
}
