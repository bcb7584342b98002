#pragma once

#include "resources/Texts.h"

#include <stdexcept>
#include <string>

namespace belvor {

/// A file, or something used like one, that could not be read or written: what() tells which, what was
/// tried and why. Failed system calls that carry only a name are a Win32Error instead.
class FileError : public std::runtime_error {
public:
    /// `path` as the user gave it. `tried` is Text::cannotRead or Text::cannotWrite; `errorNumber` the
    /// system's reason, an errno.
    FileError(const std::string& path, Text tried, int errorNumber);
    /// The same for a reason of ours; `errorNumber` is the errno that comes nearest, or 0.
    FileError(const std::string& path, Text tried, const std::string& reason, int errorNumber = 0);

    /// The errno; 0 for a reason of ours that none comes near.
    int code() const noexcept { return errorCode; }

private:
    int errorCode;
};

}   // namespace belvor
