#include "errors/FileError.h"

#include <cstring>

namespace belvor {

FileError::FileError(const std::string& path, Text tried, int errorNumber)
    : std::runtime_error(filledText(tried, {path, std::strerror(errorNumber)})),
      errorCode(errorNumber)
{}

FileError::FileError(const std::string& path, Text tried, const std::string& reason)
    : std::runtime_error(filledText(tried, {path, reason})),
      errorCode(0)
{}

}   // namespace belvor
