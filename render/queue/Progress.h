#pragma once

#include "errors/Reporter.h"
#include "render/queue/RenderHost.h"
#include "resources/Texts.h"

#include <atomic>
#include <string>

namespace belvor {

/// How far one run of the render thread has come. The thread reports to it; the interface
/// thread reads it, and stops the run through it. However often the thread reports, the host
/// hears of it only once an update.
class Progress : public Reporter {
public:
    /// `name` is the request's. `firstStageText` and `stageTexts` say how its stages are
    /// called: see stageText().
    Progress(Handle<RenderHost> host, std::string name, Text firstStageText, int stageTexts);

    /// On the render thread. A fraction that falls back within a stage leaves highWater().
    bool progress(int stageCount, int stage, double fraction) override;
    /// The end of the run, on the render thread: nothing is shown of it from here on.
    void finish() noexcept;

    /// Asks the run to stop at its next report. Any thread.
    void abandon() noexcept { stop.store(true, std::memory_order_relaxed); }
    bool abandoned() const noexcept { return stop.load(std::memory_order_relaxed); }
    bool finished() const noexcept { return over.load(std::memory_order_acquire); }

    /// On the host's side, around the showing of one update.
    void updatePending() noexcept;
    void updateDone() noexcept { pending.store(false, std::memory_order_release); }

    // Any thread; the numbers may belong to two neighbouring reports.
    int stageCount() const noexcept { return stages.load(std::memory_order_relaxed); }
    int stage() const noexcept { return currentStage.load(std::memory_order_relaxed); }
    /// The fraction of the current stage reported last, and the largest one in that stage.
    double fraction() const noexcept { return lastFraction.load(std::memory_order_relaxed); }
    double highWater() const noexcept { return largestFraction.load(std::memory_order_relaxed); }

    const std::string name;
    const Text firstStageText;
    const int stageTexts;
    int shownStage = 0;   ///< For the host alone: the number of the stage it shows, from 1.

private:
    Handle<RenderHost> host;
    std::atomic<bool> stop{false}, over{false}, pending{false}, everShown{false};
    std::atomic<int> stages{0}, currentStage{0};
    std::atomic<double> lastFraction{0.0}, largestFraction{0.0};
};

}   // namespace belvor
