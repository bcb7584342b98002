#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace belvor {

/// A file's bytes, mapped read-only for the object's life. Nothing follows the last byte:
/// parse within the bounds.
class MappedFile {
public:
    /// `path` is UTF-8. Throws Win32Error with the path when the file cannot be opened or
    /// mapped; an empty file cannot be mapped, unless `emptyAllowed` is true.
    explicit MappedFile(const std::string& path, bool emptyAllowed = false);
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    ~MappedFile();

    std::string_view bytes() const noexcept { return {first, size}; }

private:
    const char* first = nullptr;
    std::size_t size = 0;
};

}   // namespace belvor
