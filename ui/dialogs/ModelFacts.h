#pragma once

#include "calcore/Point.h"
#include "scene/Model.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace belvor {

/// What the Model Properties dialog shows of a loaded model.
struct ModelFacts {
    std::string path;   ///< UTF-8.
    Statistics counts{};
    Units units;
    Point<3> centre;
    double radius = 0.0;
    std::string
        account;   ///< What was not drawn of the file, a line each, columns by tabs; lines end with CR LF.
};

// The memory that the records of a model take, in KB; in 32 bits.
std::uint32_t vertexMemoryKB(std::uint32_t count) noexcept;
std::uint32_t edgeMemoryKB(std::uint32_t count) noexcept;
std::uint32_t facetMemoryKB(std::uint32_t count) noexcept;

/// `format`, which holds three "%.4G", with the centre in units of the user.
std::string centreText(std::string_view format, const Point<3>& centre, double scale,
                       std::string_view decimalPoint);

/// The scale that a field stands for: `stored` when its text is still `initial`, though that
/// shows only some digits, else the number typed. One beyond all doubles changes nothing.
double scaleOf(double stored, std::string_view initial, std::string_view text, std::string_view decimalPoint);

}   // namespace belvor
