#include "readers/dxf/DXFColours.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>

using namespace belvor;

namespace {

TEST(DXFColours, IndexesAreThoseOfTheStandardTable)
{
    constexpr auto least = std::numeric_limits<std::int32_t>::min();
    const std::map<std::int32_t, DXFColour> cases{
        {1, 0xff0000},   {2, 0xffff00},  {5, 0x0000ff},   {7, 0xffffff},  {8, 0x808080},    {9, 0xc0c0c0},
        {10, 0xff0000},  {12, 0xa50000}, {13, 0xa55252},  {95, 0x3f7f3f}, {190, 0x7f00ff},  {251, 0x656565},
        {255, 0xffffff}, {0, dxfWhite},  {256, dxfWhite}, {-1, dxfWhite}, {least, dxfWhite}};
    for (const auto& [index, colour] : cases) EXPECT_EQ(dxfIndexColour(index), colour) << index;
}

TEST(DXFColours, LayersHaveTheirTrueColourOrIndex)
{
    constexpr auto least = std::numeric_limits<std::int32_t>::min();
    const std::map<std::int32_t, DXFColour> cases{
        {3, 0x00ff00}, {-3, 0x00ff00}, {0, dxfWhite}, {256, dxfWhite}, {least, dxfWhite}};
    for (const auto& [index, colour] : cases) EXPECT_EQ(colourOfLayer({index, {}}), colour) << index;
    EXPECT_EQ(colourOfLayer({{}, {}}), dxfWhite);
    for (const std::uint32_t rgb : {0x123456u, 0xC2123456u})
        EXPECT_EQ(colourOfLayer({3, static_cast<std::int32_t>(rgb)}), 0x123456u);
}

TEST(DXFColours, EntitiesHaveTheirOwnColourOrThatOfLayerOrBlock)
{
    constexpr DXFColour layer = 0x0000ff, insert = 0x00ff00;
    // Columns: why, entity, colour, material.
    const std::tuple<const char*, DXFColourGroups, DXFColour, const char*> cases[] = {
        {"none: by the layer", {{}, {}}, layer, "W"},
        {"by the layer", {256, {}}, layer, "W"},
        {"by the block", {0, {}}, insert, "W #00ff00"},
        {"its own", {12, {}}, 0xa50000, "W #a50000"},
        {"its own, the same as the layer's", {5, {}}, layer, "W"},
        {"true colour before index", {12, 0x000abc}, 0x000abc, "W #000abc"},
        {"true colour before by the block", {0, 0x010203}, 0x010203, "W #010203"},
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
