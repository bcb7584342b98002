#pragma once

#include "calcore/Transform.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace belvor {

/// The diagnostic log of one reading: what was met, what was passed over and why. Switched
/// off (or impossible to open) it takes nothing and opens no file; test it before working
/// out what to write.
class DXFLog {
public:
    DXFLog() noexcept = default;   // off
    /// Empties and opens the file at `path` (UTF-8).
    explicit DXFLog(const std::string& path);

    explicit operator bool() const noexcept { return file != nullptr; }

    /// Writes what is left and closes the file.
    void close() noexcept;
    /// Why a write failed, by errno; 0 when none has. The first one that does ends the log.
    int failure() const noexcept { return failedWith; }

    /// The parts one after the other and a line end. Numbers do not depend on the locale.
    template <class... Parts>
    void line(const Parts&... parts)
    {
        if (!file) return;
        (put(parts), ...);
        put("\n");
    }

private:
    void fail() noexcept;
    void put(std::string_view text);
    void put(std::int32_t number);
    void put(std::uint64_t number);
    void put(double number);
    void put(const Vector<3>& vector);
    void put(const AffineTransform<3>& transform);   // three rows of the matrix, then the translation

    struct Closer {
        void operator()(std::FILE* open) const noexcept { std::fclose(open); }
    };
    std::unique_ptr<std::FILE, Closer> file;
    int failedWith = 0;
};

}   // namespace belvor
