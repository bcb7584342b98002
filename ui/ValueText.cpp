#include "ui/ValueText.h"

#include "resources/Texts.h"
#include "view/Direction.h"
#include "view/Intensity.h"

#include <charconv>
#include <cmath>

namespace belvor {
namespace {

/// Rounded to `digits` behind the point, with a minus sign as in print; never a minus 0.
std::string shown(double value, int digits, std::string_view decimalPoint)
{
    char buffer[400];   // the largest double has 309 digits
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value), std::chars_format::fixed, digits).ptr;
    std::string text(buffer, end);
    const bool zero = text.find_first_not_of("0.") == std::string::npos;
    if (const std::size_t point = text.find('.'); point != std::string::npos)
        text.replace(point, 1, decimalPoint);
    return value < 0.0 && !zero ? "\xE2\x88\x92" + text : text;
}

}   // namespace

std::string intensityText(std::size_t slider, int position, std::string_view decimalPoint)
{
    const std::string name = textOf(textAfter(Text::skyTip, static_cast<int>(slider)));
    if (position == 0) return filledText(Text::lightOffTip, {name});
    return filledText(Text::lightTip, {name, shown(sliderToIntensity(position), 2, decimalPoint)});
}

std::string directionText(double bearing, double elevation)
{
    return filledText(Text::directionTip,
                      {shown(std::remainder(bearing, 360.0), 0, "."), shown(elevation, 0, ".")});
}

std::string panelPointText(Thumbnail panel, double h, double v, std::string_view decimalPoint)
{
    return filledText(panel == Thumbnail::plan ? Text::planPointTip : Text::elevationPointTip,
                      {shown(h * 2.0, 2, decimalPoint), shown(v * -2.0, 2, decimalPoint)});
}

std::string slideText(double position, std::string_view decimalPoint)
{
    return filledText(Text::slideTip, {shown(slideDistance(position), 2, decimalPoint)});
}

std::string zoomText(double factor, std::string_view decimalPoint)
{
    return filledText(Text::zoomTip, {shown(factor, 2, decimalPoint)});
}

}   // namespace belvor
