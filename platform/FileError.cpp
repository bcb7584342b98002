#include "platform/FileError.h"

#include <cstring>

namespace belvor {

FileError::FileError(const std::string& path, Text tried, int errorNumber)
    : FileError(path, tried, std::strerror(errorNumber), errorNumber)
{}

FileError::FileError(const std::string& path, Text tried, const std::string& reason, int errorNumber)
    : std::runtime_error(filledText(tried, {path, reason})),
      errorCode(errorNumber)
{}

}   // namespace belvor
