#pragma once

#include "errors/Reporter.h"
#include "resources/Texts.h"

#include <chrono>
#include <string>

namespace belvor {

/// Rewrites one line of standard error with the stage and how far it is, a few times a
/// second, and asks to stop once a signal has asked the program to end (stopSignal()).
class ConsoleReporter : public Reporter {
public:
    explicit ConsoleReporter(bool visible);
    ~ConsoleReporter() override { clear(); }

    /// The text of the first stage; later stages of known count have the texts after it.
    void setStages(Text firstText) noexcept { firstStageText = firstText; }

    bool progress(int stageCount, int stage, double fraction) override;

    /// Empties the line, for other output.
    void clear() noexcept;

private:
    void show(int stageCount, int stage, double fraction);

    bool visible;
    Text firstStageText = Text::none;
    std::size_t shownLength = 0;
    std::chrono::steady_clock::time_point nextTime;
};

}   // namespace belvor
