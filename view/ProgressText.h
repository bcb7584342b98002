#pragma once

#include "resources/Texts.h"

#include <string>

namespace belvor {

/// What the status bar calls stage number `stage`, from 0, of a job. The first `stageTexts`
/// stages have the texts from `firstStageText` on, later ones are "Phase n". With no
/// stage texts the first text is the pattern for all stages, such as "Object %d".
std::string stageText(int stage, Text firstStageText, int stageTexts);

/// The columns of a progress bar between `left` and `right`.
struct ProgressBar {
    int end;       ///< The bar covers left to end − 1.
    int marker;    ///< Two columns from here on, when `marked`.
    bool marked;   ///< The work has fallen back behind the bar.
};
ProgressBar progressBar(int left, int right, double fraction, double highWater) noexcept;

}   // namespace belvor
