#pragma once

#include "calcore/Point.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace belvor {

/// A parallel light as the user sets it: where it comes from, seen from the model's centre.
struct ParallelLightSetting {
    double bearing = -30.0;    ///< Degrees; 0 lies along −y, growing towards +x.
    double elevation = 60.0;   ///< Degrees above the horizontal.
    double intensity = 0.0;    ///< 1.0 is full; 0 is off.
    friend bool operator==(const ParallelLightSetting&, const ParallelLightSetting&) noexcept = default;
};

/// The values of a parameter file, in their order there.
enum class ViewValue { eye, lookAt, zoom, projection, sky, ground, light };

/// The first number that a parameter file lacks or that cannot be read; all behind it count as missing.
struct ViewFileFault {
    int line;          ///< From 1; where the number stands or the file ends.
    ViewValue value;   ///< What it belongs to.
    int light;         ///< Of a parallel light its number from 1, else 0.
};

/// Everything that decides what the picture looks like apart from the model and the image
/// size. Positions are in view space: the model's centre is the origin, its radius is 1.
struct ViewParameters {
    double skyIntensity = 0.4;
    double groundIntensity = 0.1;
    std::vector<ParallelLightSetting> lights{
        {-30, 60, 0}, {180, 30, 0}, {0, 30, 0}, {90, 30, 0}, {-90, 30, 0}};
    Point<3> eye{-2.0, -2.0, 1.5};
    Point<3> lookAt;
    double zoom = 0.8;         ///< Tangent of half the zoom angle.
    bool parallel = false;     ///< Parallel projection instead of perspective.
    bool imageSaved = false;   ///< The picture of this view is in the image file. Not compared.

    /// Exact, field by field, but for imageSaved.
    friend bool operator==(const ViewParameters& a, const ViewParameters& b) noexcept;

    /// Every number is finite: only such a view may be shown.
    bool finite() const noexcept;

    /// The same of what write() would put into a file.
    bool finiteInModel(const Point<3>& centre, double radius) const;

    /// The record as a parameter file holds it, line ends of this system; see write().
    std::string text(const Point<3>& centre, double radius) const;
    /// Writes the record to a parameter file; positions become model coordinates by the
    /// model's `centre` and `radius`. Six significant digits, never following the locale.
    /// `path` is UTF-8. False, with errno set, when the file could not be opened or written; then
    /// the one that was there is as it was.
    bool write(const std::string& path, const Point<3>& centre, double radius) const;
    /// Reads a parameter file into this record. False, silently, when it cannot be opened or
    /// its header is another; what is missing behind the header keeps its value. A file with
    /// another header is not read beyond it, any other no further than a megabyte.
    bool read(const std::string& path, const Point<3>& centre, double radius);
    /// The same from a parameter file's bytes. `fault` tells what was read past, if anything was.
    bool parse(const std::string& bytes, const Point<3>& centre, double radius,
               std::optional<ViewFileFault>* fault = nullptr);
};

/// Reads a parameter file (`path` is UTF-8): of a file with another header only its beginning, of any other
/// no more than the first maxViewFileSize bytes. False when it cannot be opened or read, errno set. `waiting`
/// is called at least twenty times a second while a pipe has nothing to give; what it throws passes.
bool readViewFile(const std::string& path, std::string& bytes, const std::function<void()>& waiting = {});
inline constexpr std::size_t maxViewFileSize = 1 << 20;

/// Whether the bytes begin with the header of a parameter file.
bool isViewFile(std::string_view bytes);

/// The view of a fresh program: the defaults with the first light at 0.6.
ViewParameters freshView();

/// The radius that views and cameras of a model use: its own, or 1 for a model whose radius
/// is no positive number (one without size).
double usableRadius(double radius) noexcept;

}   // namespace belvor
