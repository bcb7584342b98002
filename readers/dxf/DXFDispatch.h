#pragma once

#include "readers/common/Reading.h"

#include <string_view>

namespace belvor {

class DXFEntity;

/// How entities of one type are drawn.
struct DXFHandler {
    std::string_view type;
    void (*build)(const DXFEntity&);   ///< Adds the geometry of one.
    bool modern = false;               ///< Drawn by the modern reading only.
    bool placesBlock = false;          ///< What it draws is known when its block has been read.
    bool onlyCurves = false;           ///< Drawn only where curves are.
};

/// The row of that type; null for types that are not drawn. `curves`: lines and curves are drawn.
const DXFHandler* handlerOf(std::string_view type, ReadingRules rules, bool curves) noexcept;
/// Whether an entity of that type is a line or curve where it is no surface.
bool mayBeCurve(std::string_view type) noexcept;

}   // namespace belvor
