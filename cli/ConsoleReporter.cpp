#include "cli/ConsoleReporter.h"

#include "platform/StopSignals.h"
#include "resources/Texts.h"

#include <cstdio>

namespace belvor {

ConsoleReporter::ConsoleReporter(bool shown) : visible(shown) {}

bool ConsoleReporter::progress(int stageCount, int stage, double fraction)
{
    if (visible) show(stageCount, stage, fraction);
    return stopSignal() != 0;
}

void ConsoleReporter::show(int stageCount, int stage, double fraction)
{
    const auto now = std::chrono::steady_clock::now();
    if (now < nextTime) return;
    nextTime = now + std::chrono::milliseconds(100);
    std::string line;
    if (stageCount == 0) {
        const std::string text = textOf(firstStageText);
        line = text.substr(0, text.find('%')) + std::to_string(stage + 1);
    } else {
        line = textOf(textAfter(firstStageText, stage));
    }
    line += ' ';
    line += std::to_string(static_cast<int>(fraction * 100.0));
    line += " %";
    const std::size_t length = line.size();
    if (length < shownLength) line.append(shownLength - length, ' ');
    shownLength = length;
    std::fprintf(stderr, "\r%s", line.c_str());
    std::fflush(stderr);
}

void ConsoleReporter::clear() noexcept
{
    if (shownLength == 0) return;
    std::fprintf(stderr, "\r%*s\r", static_cast<int>(shownLength), "");
    std::fflush(stderr);
    shownLength = 0;
}

}   // namespace belvor
