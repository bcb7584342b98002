#include "platform/Win32Error.h"

#include "platform/SystemError.h"

#include <utility>

namespace belvor {
namespace {

std::string description(const std::string& where, std::uint32_t code)
{
    std::string text = where.empty() ? "" : where + ": ";
    std::uint32_t failure = 0;
    const std::string system = systemErrorText(code, failure);
    text += !system.empty()
                ? system
                : "GetLastError returned " + std::to_string(code) + " then " + std::to_string(failure);
    return text.substr(0, 255);
}

}   // namespace

Win32Error::Win32Error(std::string where) : Win32Error(std::move(where), lastSystemError()) {}

Win32Error::Win32Error(std::string where, std::uint32_t errorCode)
    : std::runtime_error(""),
      code(errorCode),
      place(std::move(where)),
      text(description(place, code))
{}

}   // namespace belvor
