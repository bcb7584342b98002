#include "imagefile/PictureFormat.h"

#include <algorithm>

namespace belvor {
namespace {

struct FormatRow {
    std::string_view name;
    PictureFormat format;
};

constexpr FormatRow formats[] = {
    {"omb", PictureFormat::ombr}, {"png", PictureFormat::png},   {"exr", PictureFormat::exr},
    {"tif", PictureFormat::tiff}, {"tiff", PictureFormat::tiff}, {"npy", PictureFormat::npy},
    {"pfm", PictureFormat::pfm},  {"svg", PictureFormat::svg},
};

constexpr char lowerCase(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }

}   // namespace

std::optional<PictureFormat> pictureFormatNamed(std::string_view name)
{
    const auto same = [name](const FormatRow& row) {
        return std::equal(name.begin(), name.end(), row.name.begin(), row.name.end(),
                          [](char a, char b) { return lowerCase(a) == b; });
    };
    const auto row = std::find_if(std::begin(formats), std::end(formats), same);
    return row == std::end(formats) ? std::nullopt : std::optional(row->format);
}

std::optional<PictureFormat> pictureFormatOfPath(std::string_view path)
{
    const std::size_t dot = path.rfind('.');
    return dot == path.npos ? std::nullopt : pictureFormatNamed(path.substr(dot + 1));
}

}   // namespace belvor
