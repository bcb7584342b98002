#include "ui/dialogs/ModelFacts.h"

#include "ui/dialogs/NumberText.h"

#include <cmath>

namespace belvor {
namespace {

/// Rounded to the nearest KB.
std::uint32_t memoryKB(std::uint32_t count, std::uint32_t bytesEach) noexcept
{
    return (count * bytesEach + 512u) >> 10;
}

}   // namespace

// The figures are those of the records as other programs know them, not of this build.
std::uint32_t vertexMemoryKB(std::uint32_t count) noexcept { return memoryKB(count, 48); }
std::uint32_t edgeMemoryKB(std::uint32_t count) noexcept { return memoryKB(count, 40); }
std::uint32_t facetMemoryKB(std::uint32_t count) noexcept { return memoryKB(count, 56); }

std::string centreText(std::string_view format, const Point<3>& centre, double scale,
                       std::string_view decimalPoint)
{
    return filled(format,
                  {shownNumber(centre[0] * scale, decimalPoint), shownNumber(centre[1] * scale, decimalPoint),
                   shownNumber(centre[2] * scale, decimalPoint)});
}

double scaleOf(double stored, std::string_view initial, std::string_view text, std::string_view decimalPoint)
{
    if (text == initial) return stored;
    const double typed = typedNumber(text, decimalPoint);
    return std::isfinite(typed) ? typed : stored;
}

}   // namespace belvor
