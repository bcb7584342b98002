#include "readers/dxf/DXFColours.h"

#include <gtest/gtest.h>

#include <limits>

using namespace belvor;

namespace {

TEST(DXFColours, LayersHaveTheirTrueColourOrIndex)
{
    constexpr auto least = std::numeric_limits<std::int32_t>::min();
    for (const auto index : {3, -3}) EXPECT_EQ(colourOfLayer({index, {}}), 0x00ff00u);
    for (const auto index : {0, 256, least}) EXPECT_EQ(colourOfLayer({index, {}}), dxfWhite) << index;
    EXPECT_EQ(colourOfLayer({{}, {}}), dxfWhite);
    EXPECT_EQ(colourOfLayer({3, static_cast<std::int32_t>(0xC2123456u)}), 0x123456u);
}

TEST(DXFColours, EntitiesHaveTheirOwnColourOrThatOfLayerOrBlock)
{
    constexpr DXFColour layer = 0x0000ff, insert = 0x00ff00;
    // Columns: why, entity, colour, material.
    const std::tuple<const char*, DXFColourGroups, DXFColour, const char*> cases[] = {
        {"by the layer", {256, {}}, layer, "W"},
        {"by the block", {0, {}}, insert, "W #00ff00"},
        {"its own", {12, {}}, 0xa50000, "W #a50000"},
        {"true colour before index", {12, 0x000abc}, 0x000abc, "W #000abc"},
        {"beyond the table", {300, {}}, layer, "W"},
        {"negative", {-5, {}}, layer, "W"},
    };
    for (const auto& [why, entity, wantedColour, material] : cases) {
        const DXFColour colour = colourOfEntity(entity, layer, insert);
        EXPECT_EQ(colour, wantedColour) << why;
        EXPECT_EQ(dxfMaterialName("W", colour, layer), material) << why;
    }
}

}   // namespace
