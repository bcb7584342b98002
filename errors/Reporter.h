#pragma once

#include "platform/Handle.h"

#include <exception>

namespace belvor {

/// The progress-and-abandon interface that every lengthy operation is given.
class Reporter : public TSHandlable {
public:
    /// Thrown by an operation whose reporter asked it to stop.
    class Abandoned : public std::exception {
    public:
        const char* what() const noexcept override { return "Operation abandoned"; }
    };

    /// Tells how far the work is: `stage` counts from 0, `fraction` runs from 0 to 1 within
    /// it. `stageCount` is 0 when the stages are not known beforehand. True asks the caller
    /// to stop and throw Abandoned. Called on the thread that does the work.
    virtual bool progress(int stageCount, int stage, double fraction) = 0;

    /// progress(), with a true answer thrown as Abandoned.
    void check(int stageCount, int stage, double fraction)
    {
        if (progress(stageCount, stage, fraction)) throw Abandoned();
    }
};

/// Ignores reports and never asks to stop.
class SilentReporter : public Reporter {
public:
    bool progress(int, int, double) override { return false; }
};

}   // namespace belvor
