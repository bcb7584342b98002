#pragma once

#include "scene/Camera.h"
#include "scene/Model.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace belvor {

/// A material as image files know it.
struct ImageMaterial {
    std::uint16_t number;                 ///< 1 to 65535.
    std::array<std::uint8_t, 3> colour;   ///< Red, green, blue of the reflectance.
    std::string name;                     ///< UTF-8, unless the model file has other bytes.
};

/// What a picture tells of how it was made, where its format holds texts. UTF-8; an empty text
/// is left out.
struct PictureTexts {
    std::string view;   ///< The view, as a parameter file holds it.
    std::string hash;   ///< Of all that the pixels depend on.
};

struct ModelBounds {
    Point<3> centre;
    double radius;
};

/// Rows `first` to `end` − 1 of a picture, counted from 0 at the top.
struct RowRange {
    int first, end;
};

/// What an image file tells besides its pixels.
struct ImageHeader {
    int width, height;   ///< Pixels of the file, at least 1.
    CameraRecord camera;
    std::vector<ImageMaterial> materials;   ///< In the order of the file.
    std::optional<ModelBounds> bounds;      ///< Of the model, where they are known.
    PictureTexts texts;
    /// Of a file that is a band of a picture: its first row in the picture and the height of that. The camera
    /// is the whole picture's.
    struct Band {
        int firstRow, wholeHeight;
    };
    std::optional<Band> band;
    /// The side of a pixel in model units; 0 where it is not known, as in perspective.
    double pixelSize = 0.0;

    int firstRow() const noexcept { return band ? band->firstRow : 0; }
    int wholeHeight() const noexcept { return band ? band->wholeHeight : height; }
    /// Makes this the header of a band of the picture.
    void keepRows(const RowRange& rows)
    {
        band = Band{rows.first, height};
        height = rows.end - rows.first;
    }
};

/// Of a picture of `model` seen by `camera`, which is built for width × height. Throws std::bad_alloc.
ImageHeader headerOf(const Model& model, const Camera& camera, int width, int height);

/// The depth code of a pixel without a surface.
inline constexpr std::uint32_t noDepthCode = 0xFFFFFFFF;
/// The distance of such a pixel in files of distances.
inline constexpr double noDistance = 1e10;

/// Distances along `forward` from depth codes.
class DepthScale {
public:
    explicit DepthScale(const CameraRecord& camera) noexcept
        : near(camera.near),
          range(camera.far - camera.near)
    {}
    /// In model units; noDistance for noDepthCode.
    double distance(std::uint32_t code) const noexcept
    {
        return code == noDepthCode ? noDistance : near + code * range / lastDepthCode;
    }
    /// What a code stands for at most beyond its distance.
    double step() const noexcept { return range / lastDepthCode; }

private:
    static constexpr double lastDepthCode = 4294967294.0;
    double near, range;
};

}   // namespace belvor
