#include "render/queue/Progress.h"

#include <utility>

namespace belvor {

Progress::Progress(Handle<RenderHost> reportsTo, std::string requestName, Text firstText, int texts)
    : name(std::move(requestName)),
      firstStageText(firstText),
      stageTexts(texts),
      host(std::move(reportsTo))
{}

bool Progress::progress(int stageCount, int stage, double fraction)
{
    constexpr auto relaxed = std::memory_order_relaxed;
    stages.store(stageCount, relaxed);
    if (stage != currentStage.load(relaxed)) {
        largestFraction.store(0.0, relaxed);
        currentStage.store(stage, relaxed);
    }
    lastFraction.store(fraction, relaxed);
    if (fraction > largestFraction.load(relaxed)) largestFraction.store(fraction, relaxed);
    if (!pending.load(std::memory_order_acquire)) host->progressMade(*this);
    return abandoned();
}

// Set by the host and not from its answer: a slow render thread could store the answer
// after the update has long been done, and no other would ever come.
void Progress::updatePending() noexcept
{
    everShown.store(true, std::memory_order_relaxed);
    pending.store(true, std::memory_order_release);
}

void Progress::finish() noexcept
{
    over.store(true, std::memory_order_release);
    if (everShown.load(std::memory_order_relaxed)) host->progressEnded(*this);
}

}   // namespace belvor
