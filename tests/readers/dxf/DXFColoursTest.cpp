#include "readers/dxf/DXFColours.h"

#include <gtest/gtest.h>

#include <limits>

namespace belvor {
namespace {

TEST(DXFColours, IndexesAreThoseOfTheStandardTable)
{
    const struct {
        std::int32_t index;
        DXFColour colour;
    } cases[] = {{1, 0xff0000},
                 {2, 0xffff00},
                 {5, 0x0000ff},
                 {7, 0xffffff},
                 {8, 0x808080},
                 {9, 0xc0c0c0},
                 {10, 0xff0000},
                 {12, 0xa50000},
                 {13, 0xa55252},
                 {95, 0x3f7f3f},
                 {190, 0x7f00ff},
                 {251, 0x656565},
                 {255, 0xffffff},
                 {0, dxfWhite},
                 {256, dxfWhite},
                 {-1, dxfWhite},
                 {std::numeric_limits<std::int32_t>::min(), dxfWhite}};
    for (const auto& c : cases) EXPECT_EQ(dxfIndexColour(c.index), c.colour) << c.index;
}

TEST(DXFColours, OfLayers)
{
    const struct {
        const char* why;
        DXFColourGroups layer;
        DXFColour colour;
    } cases[] = {
        {"index", {3, {}}, 0x00ff00},
        {"switched off", {-3, {}}, 0x00ff00},
        {"no index", {{}, {}}, dxfWhite},
        {"by the block", {0, {}}, dxfWhite},
        {"by the layer", {256, {}}, dxfWhite},
        {"true colour first", {3, 0x123456}, 0x123456},
        {"true colour with a byte in front", {3, static_cast<std::int32_t>(0xC2123456)}, 0x123456},
        {"no colour at all", {std::numeric_limits<std::int32_t>::min(), {}}, dxfWhite},
    };
    for (const auto& c : cases) EXPECT_EQ(colourOfLayer(c.layer), c.colour) << c.why;
}

TEST(DXFColours, OfEntities)
{
    constexpr DXFColour layer = 0x0000ff, insert = 0x00ff00;
    const struct {
        const char* why;
        DXFColourGroups entity;
        DXFColour colour;
        const char* material;
    } cases[] = {
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
    for (const auto& c : cases) {
        const DXFColour colour = colourOfEntity(c.entity, layer, insert);
        EXPECT_EQ(colour, c.colour) << c.why;
        EXPECT_EQ(dxfMaterialName("W", colour, layer), c.material) << c.why;
    }
}

}   // namespace
}   // namespace belvor
