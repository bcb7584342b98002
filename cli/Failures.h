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
    internalError = 70,
    stopped = 130
};

/// Tells about the exception that is being handled, on standard error or, where there is a `text`, at its
/// end, a line end behind; answers its exit status.
int tellFailure(std::string* text = nullptr) noexcept;

}   // namespace belvor
