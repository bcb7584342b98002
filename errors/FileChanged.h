#pragma once

#include "platform/Win32Error.h"
#include "resources/Texts.h"

#include <string>

namespace belvor {

/// A file was changed, or could not be read to its end, while it was being read: what came of it
/// is worth nothing. A failure of the system that may pass.
class FileChanged : public Win32Error {
public:
    explicit FileChanged(const std::string& path)
        : Win32Error(path, 0),
          message(path + ": " + textOf(Text::fileChanged))
    {}
    const char* what() const noexcept override { return message.c_str(); }

private:
    std::string message;
};

}   // namespace belvor
