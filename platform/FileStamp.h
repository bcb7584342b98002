#pragma once

#include <cstdint>
#include <string>

namespace belvor {

/// What changes when a file is written: its size and the time of the last change, in the system's units.
struct FileStamp {
    bool exists = false;
    std::uint64_t size = 0;
    std::int64_t time = 0;
    friend bool operator==(const FileStamp&, const FileStamp&) noexcept = default;
};

/// The stamp of the file `path` (UTF-8) as it is now. May wait for a disk or a network.
FileStamp stampOf(const std::string& path) noexcept;

}   // namespace belvor
