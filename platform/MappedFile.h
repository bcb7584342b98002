#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace belvor {

/// A file's bytes, mapped read-only for the object's life. Nothing follows the last byte:
/// parse within the bounds.
///
/// Another program may take the file away meanwhile: shorten it, or cut the way to its disk.
/// What cannot be read any more reads as zeros then, instead of ending the program, and
/// damaged() answers true.
class MappedFile {
public:
    /// `path` is UTF-8. Throws Win32Error with the path when the file cannot be opened or
    /// mapped; an empty file cannot be mapped, unless `emptyAllowed` is true.
    explicit MappedFile(const std::string& path, bool emptyAllowed = false);
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    ~MappedFile();

    std::string_view bytes() const noexcept { return {first, size}; }

    /// Whether the file has been changed since it was mapped, or a part of it could not be read.
    bool damaged() const noexcept;

    /// Whether a file was damaged that this thread mapped and gave back since it last asked.
    static bool takeDamage() noexcept;

private:
    struct System;
    std::unique_ptr<System> system;
    const char* first = nullptr;
    std::size_t size = 0;
};

}   // namespace belvor
