#include "readers/dxf/DXFLog.h"

#include "platform/Files.h"

#include <cerrno>
#include <charconv>
#include <string>

namespace belvor {

DXFLog::DXFLog(const std::string& path) : file(openFile(path, "wb"))
{
    if (!file) fail();
}

void DXFLog::fail() noexcept
{
    failedWith = errno != 0 ? errno : EIO;
    file.reset();
}

void DXFLog::close() noexcept
{
    if (file && std::fclose(file.release()) != 0) fail();
}

void DXFLog::put(std::string_view text)
{
    if (text.empty() || !file) return;
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size()) fail();
}

void DXFLog::put(std::uint64_t number) { put(std::string_view(std::to_string(number))); }

void DXFLog::put(std::int32_t number) { put(std::string_view(std::to_string(number))); }

void DXFLog::put(double number)
{
    char digits[32];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
    if (error == std::errc()) put(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void DXFLog::put(const Vector<3>& vector)
{
    put("(");
    for (int axis = 0; axis < 3; ++axis) {
        if (axis > 0) put(", ");
        put(vector[axis]);
    }
    put(")");
}

void DXFLog::put(const AffineTransform<3>& transform)
{
    for (int row = 0; row < 3; ++row) {
        put(Vector<3>(transform.matrix()(row, 0), transform.matrix()(row, 1), transform.matrix()(row, 2)));
        put(" ");
    }
    put("+ ");
    put(transform.translation());
}

}   // namespace belvor
