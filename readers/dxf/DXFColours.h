#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace belvor {

class DXFRecord;

/// A colour of a drawing: 0xRRGGBB.
using DXFColour = std::uint32_t;

inline constexpr DXFColour dxfWhite = 0xFFFFFF;

/// The colour of an index of the standard table, 1 to 255 (7 is white here, on a dark ground); white for
/// any other number.
DXFColour dxfIndexColour(std::int32_t index) noexcept;

/// The groups that give a layer or an entity its colour, as far as they are there.
struct DXFColourGroups {
    std::optional<std::int32_t> index;        ///< 62; negative for a layer that is off.
    std::optional<std::int32_t> trueColour;   ///< 420: 0xRRGGBB.
};

/// 420, else the index without its sign; 0, 256 and an absent one are 7.
DXFColour colourOfLayer(const DXFColourGroups& layer) noexcept;

/// 420, else the index 1 to 255; 0 is the colour of the INSERT around it (`ofInsert`; white at the top
/// level), every other and an absent one that of the layer that the entity is on.
DXFColour colourOfEntity(const DXFColourGroups& entity, DXFColour ofLayer, DXFColour ofInsert) noexcept;

/// The value of a group, unless it is missing or no integer.
std::optional<std::int32_t> integerIfAny(const DXFRecord& record, int code);

/// What a material of a layer in one colour is called: the layer's name where the colour is the layer's,
/// else with the colour behind it, "WALLS #a50000".
std::string dxfMaterialName(std::string_view layerName, DXFColour colour, DXFColour ofLayer);

}   // namespace belvor
