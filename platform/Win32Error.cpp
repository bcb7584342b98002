#include "platform/Win32Error.h"

#include "platform/SystemError.h"

#include <string_view>
#include <utility>

namespace belvor {
namespace {

constexpr std::size_t maxLength = 255;   // bytes

/// The last `length` bytes of UTF-8 text, or fewer: never half a character.
std::string endOf(const std::string& text, std::size_t length)
{
    std::size_t first = text.size() - length;
    while (first < text.size() && (static_cast<unsigned char>(text[first]) & 0xC0) == 0x80) ++first;
    return text.substr(first);
}

std::string description(const std::string& where, std::uint32_t code)
{
    std::uint32_t failure = 0;
    const std::string system = systemErrorText(code, failure);
    const std::string reason = (where.empty() ? "" : ": ")
                               + (!system.empty() ? system
                                                  : "GetLastError returned " + std::to_string(code) + " then "
                                                        + std::to_string(failure));
    constexpr std::string_view cut = "...";
    if (where.size() + reason.size() <= maxLength || reason.size() + cut.size() > maxLength)
        return (where + reason).substr(0, maxLength);
    // A long path loses its beginning, so that the file's name and the reason are read.
    return std::string(cut) + endOf(where, maxLength - cut.size() - reason.size()) + reason;
}

}   // namespace

Win32Error::Win32Error(std::string where) : Win32Error(std::move(where), lastSystemError()) {}

Win32Error::Win32Error(std::string where, std::uint32_t errorCode)
    : std::runtime_error(""),
      code(errorCode),
      failedCall(std::move(where)),
      text(description(failedCall, code))
{}

}   // namespace belvor
