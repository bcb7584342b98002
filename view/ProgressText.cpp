#include "view/ProgressText.h"

namespace belvor {
std::string stageText(int stage, Text firstStageText, int stageTexts)
{
    if (stageTexts == 0) return filledText(firstStageText, {std::to_string(stage + 1)});
    if (stage < stageTexts) return textOf(textAfter(firstStageText, stage));
    return filledText(Text::phase, {std::to_string(stage + 1)});
}

ProgressBar progressBar(int left, int right, double fraction, double highWater) noexcept
{
    // The bar's end is rounded, the marker's column is not.
    return {static_cast<int>((1.0 - highWater) * left + highWater * right + 0.5),
            static_cast<int>(fraction * right + (1.0 - fraction) * left), fraction != highWater};
}

}   // namespace belvor
