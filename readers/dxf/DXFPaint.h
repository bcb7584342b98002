#pragma once

#include "readers/dxf/DXFColours.h"

#include <cstdint>
#include <string_view>

namespace belvor {

/// What a layer table says of a layer; names that no table knows are thawed and on.
struct DXFLayer {
    std::int16_t flags = 0;
    std::int16_t colour = 256;
    DXFColour shown = dxfWhite;   ///< Of what has the colour of its layer, where drawings give colours.
    std::string_view name;        ///< Of the drawing's map of layers.

    bool frozen() const noexcept { return (flags & 1) != 0; }
    bool off() const noexcept { return colour < 0; }
};

/// What an INSERT hands on to the entities of its block.
struct DXFInherited {
    const DXFLayer* layer = nullptr;   ///< For those on layer 0; null where they keep it.
    DXFColour colour = dxfWhite;       ///< For those whose colour is 0.
};

/// The layer and the colour of an entity, as far as its own groups tell.
struct DXFPaint {
    enum class From : std::uint8_t { itself, layer, insertion };

    const DXFLayer* layer = nullptr;   ///< Null: that of the INSERT around it.
    From from = From::layer;           ///< Where the colour is from.
    DXFColour own = 0;                 ///< From itself.

    bool inherits() const noexcept { return !layer || from == From::insertion; }
    bool operator==(const DXFPaint&) const = default;

    const DXFLayer& layerIn(const DXFInherited& around) const noexcept
    {
        return layer ? *layer : *around.layer;
    }
    DXFColour colourIn(const DXFInherited& around) const noexcept
    {
        if (from == From::insertion) return around.colour;
        return from == From::itself ? own : layerIn(around).shown;
    }
};

}   // namespace belvor
