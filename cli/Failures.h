#pragma once

#include <string>

namespace belvor {

/// How the program ends. A signal that ends it is 128 + its number.
enum ExitStatus {
    done = 0,
    badInput = 1,
    usage = 2,
    fileTrouble = 3,
    noMemory = 4,
    nothingDrawn = 5,
    repaired = 6,
    timedOut = 7,
    tooMuchMemory = 8,
    internalError = 70,
    stopped = 130
};

struct Job;
struct Options;

/// That the model took longer than the options allow.
std::string tooLongText(const Options& options, const Job& job);

/// Tells about the exception that is being handled, on standard error or, where there is a `text`, at its
/// end, a line end behind; answers its exit status.
int tellFailure(std::string* text = nullptr) noexcept;

}   // namespace belvor
