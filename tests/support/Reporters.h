#pragma once

#include "errors/Reporter.h"

#include <gtest/gtest.h>

#include <thread>
#include <tuple>
#include <vector>

namespace belvor::test {

/// Keeps what was reported and asks to stop at the given call. Only its own thread may report.
class RecordingReporter : public Reporter {
public:
    explicit RecordingReporter(std::size_t callToStopAt = static_cast<std::size_t>(-1)) : last(callToStopAt)
    {}
    bool progress(int stageCount, int stage, double fraction) override
    {
        EXPECT_EQ(std::this_thread::get_id(), own);
        calls.emplace_back(stageCount, stage, fraction);
        return calls.size() > last;
    }
    std::vector<std::tuple<int, int, double>> calls;

private:
    const std::thread::id own = std::this_thread::get_id();
    std::size_t last;
};

}   // namespace belvor::test
