#include "app/ClipboardPicture.h"

#include "imagefile/PngFile.h"
#include "platform/Files.h"
#include "platform/Utf16.h"
#include "ui/display/DibLayout.h"

#include <cstring>
#include <string>

namespace belvor {
namespace {

/// Memory that the clipboard takes over.
HGLOBAL sharedCopy(const std::string& bytes) noexcept
{
    HGLOBAL const memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    if (!memory) return nullptr;
    std::memcpy(GlobalLock(memory), bytes.data(), bytes.size());
    GlobalUnlock(memory);
    return memory;
}

/// Bottom row first, as every program expects it.
std::string dibOf(DibSection& picture)
{
    const std::size_t stride = static_cast<std::size_t>(dibStride(picture.width()));
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = picture.width();
    header.biHeight = picture.height();
    header.biPlanes = 1;
    header.biBitCount = 24;
    header.biCompression = BI_RGB;
    header.biSizeImage = static_cast<DWORD>(stride) * static_cast<DWORD>(picture.height());
    std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
    bytes.reserve(sizeof header + header.biSizeImage);
    for (int row = picture.height(); row-- > 0;)
        bytes.append(reinterpret_cast<const char*>(picture.row(row)), stride);
    return bytes;
}

void writePng(OutputFile& file, DibSection& picture)
{
    PngFile png(file, static_cast<std::uint32_t>(picture.width()),
                static_cast<std::uint32_t>(picture.height()));
    for (int row = 0; row < picture.height(); ++row) {
        const std::uint8_t* pixel = picture.row(row);
        std::uint8_t* to = png.row().data();
        for (int column = 0; column < picture.width(); ++column, pixel += 3, to += 3) {
            to[0] = pixel[2];
            to[1] = pixel[1];
            to[2] = pixel[0];
        }
        png.writeRow();
    }
    png.finishPixels();
    png.finish();
    file.commit();
}

/// By way of a file, which is what a PngFile writes; empty when that fails.
std::string pngOf(DibSection& picture)
try {
    wchar_t folder[MAX_PATH + 1], name[MAX_PATH + 1];
    if (!GetTempPathW(MAX_PATH, folder) || !GetTempFileNameW(folder, L"blv", 0, name)) return {};
    const std::string path = toUtf8(name);
    std::string bytes;
    try {
        OutputFile file(path);
        writePng(file, picture);
        readWholeFile(path, bytes);
    } catch (...) {
        removeFile(path);
        throw;
    }
    removeFile(path);
    return bytes;
} catch (const FileError&) {
    return {};
}

class Clipboard {
public:
    explicit Clipboard(HWND owner) noexcept : opened(OpenClipboard(owner)) {}
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;
    ~Clipboard()
    {
        if (opened) CloseClipboard();
    }
    explicit operator bool() const noexcept { return opened; }
    bool put(UINT format, const std::string& bytes) const noexcept
    {
        HGLOBAL const memory = sharedCopy(bytes);
        if (memory && SetClipboardData(format, memory)) return true;
        GlobalFree(memory);
        return false;
    }

private:
    bool opened;
};

}   // namespace

bool copyToClipboard(HWND owner, DibSection& picture)
{
    const std::string dib = dibOf(picture), png = pngOf(picture);
    const Clipboard clipboard(owner);
    if (!clipboard || !EmptyClipboard()) return false;
    const bool done = clipboard.put(CF_DIB, dib);
    if (!png.empty()) clipboard.put(RegisterClipboardFormatW(L"PNG"), png);
    return done;
}

}   // namespace belvor
