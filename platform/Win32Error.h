#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace belvor {

/// A failed system call. On systems other than Windows the code is `errno`.
class Win32Error : public std::runtime_error {
public:
    /// Takes the calling thread's last error code first; construct it directly after the failed call.
    explicit Win32Error(std::string where);
    Win32Error(std::string where, std::uint32_t code);

    /// "where: the system's description", cut to 255 bytes. Owned by this object.
    const char* what() const noexcept override { return text.c_str(); }
    std::uint32_t errorCode() const noexcept { return code; }
    const std::string& where() const noexcept { return failedCall; }

private:
    std::uint32_t code;
    std::string failedCall, text;
};

}   // namespace belvor
