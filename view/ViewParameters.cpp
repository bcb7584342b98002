#include "view/ViewParameters.h"

#include "calcore/Scanner.h"
#include "platform/Files.h"
#include "platform/OutputFile.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <exception>
#include <initializer_list>
#include <memory>
#include <string_view>

namespace belvor {
namespace {

constexpr std::string_view header = "Belvor View Parameters 1.0";
constexpr std::size_t longestHeader = 39;
/// Bytes behind the header that are read. The numbers of a view take less than a thousandth of it.
constexpr std::size_t longestFile = 1 << 20;

/// Six significant digits in general notation, as a stream writes them, in the C locale.
void append(std::string& text, double value)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 6).ptr;
    text.append(digits, end);
}

void appendLine(std::string& text, std::initializer_list<double> values)
{
    const char* separator = "";
    for (const double value : values) {
        text += separator;
        append(text, value);
        separator = " ";
    }
    text += textLineEnd;
}

Point<3> toModel(const Point<3>& p, const Point<3>& centre, double radius)
{
    return Point<3>::origin() + (p.vector() * radius + (centre - Point<3>::origin()));
}

/// Reads up to three coordinates; one that is missing leaves the rest 0.
Point<3> toView(Scanner<>& scanner, const Point<3>& centre, double radius)
{
    Point<3> value;
    for (int axis = 0; axis < 3; ++axis) scanner.real(value[axis]);
    for (int axis = 0; axis < 3; ++axis) value[axis] = (value[axis] - centre[axis]) / radius;
    return value;
}

/// CR LF becomes LF and the text ends at a Ctrl-Z, as in files opened as text on Windows;
/// the same everywhere, so that a file may travel.
std::string asText(const std::string& bytes)
{
    std::string text;
    for (std::size_t i = 0; i < bytes.size() && bytes[i] != '\x1A'; ++i)
        if (bytes[i] != '\r' || i + 1 == bytes.size() || bytes[i + 1] != '\n') text += bytes[i];
    return text;
}

bool startsWithHeader(std::string_view text)
{
    const std::string_view line = text.substr(0, text.find('\n'));
    return line.size() <= longestHeader && line == header;
}

/// Appends up to `most` bytes; false when they cannot be read.
bool readMore(std::FILE* file, std::size_t most, std::string& bytes)
{
    const std::size_t held = bytes.size();
    bytes.resize(held + most);
    bytes.resize(held + std::fread(&bytes[held], 1, most, file));
    return std::ferror(file) == 0;
}

bool readLight(Scanner<>& scanner, ParallelLightSetting& light)
{
    return scanner.real(light.bearing) && scanner.real(light.elevation) && scanner.real(light.intensity);
}

}   // namespace

bool operator==(const ViewParameters& a, const ViewParameters& b) noexcept
{
    return a.lights == b.lights && a.eye == b.eye && a.lookAt == b.lookAt && a.zoom == b.zoom
           && a.parallel == b.parallel && a.skyIntensity == b.skyIntensity
           && a.groundIntensity == b.groundIntensity;
}

bool ViewParameters::finite() const noexcept
{
    bool good = std::isfinite(skyIntensity) && std::isfinite(groundIntensity) && std::isfinite(zoom);
    for (int axis = 0; axis < 3; ++axis)
        good = good && std::isfinite(eye[axis]) && std::isfinite(lookAt[axis]);
    for (const ParallelLightSetting& light : lights)
        good = good && std::isfinite(light.bearing) && std::isfinite(light.elevation)
               && std::isfinite(light.intensity);
    return good;
}

bool ViewParameters::write(const std::string& path, const Point<3>& centre, double modelRadius) const
try {
    const double radius = usableRadius(modelRadius);
    const Point<3> eyeAt = toModel(eye, centre, radius), lookAtPoint = toModel(lookAt, centre, radius);
    std::string text(header);
    text += textLineEnd;
    appendLine(text, {eyeAt[0], eyeAt[1], eyeAt[2]});
    appendLine(text, {lookAtPoint[0], lookAtPoint[1], lookAtPoint[2]});
    appendLine(text, {zoom});
    appendLine(text, {parallel ? 1.0 : 0.0});
    appendLine(text, {skyIntensity});
    appendLine(text, {groundIntensity});
    for (const ParallelLightSetting& light : lights)
        appendLine(text, {light.bearing, light.elevation, light.intensity});

    OutputFile file(path);
    if (std::fwrite(text.data(), 1, text.size(), file.stream()) != text.size()) return false;
    file.commit();
    return true;
} catch (const OutputFile::Error& error) {
    errno = error.code();
    return false;
} catch (const std::exception&) {
    errno = ENOMEM;
    return false;
}

bool ViewParameters::read(const std::string& path, const Point<3>& centre, double modelRadius)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(openFile(path, "rb"), std::fclose);
    std::string bytes;
    return file && readMore(file.get(), header.size() + 2, bytes) && startsWithHeader(asText(bytes))
           && readMore(file.get(), longestFile, bytes) && parse(bytes, centre, modelRadius);
}

bool ViewParameters::parse(const std::string& bytes, const Point<3>& centre, double modelRadius)
{
    const std::string text = asText(bytes);
    if (!startsWithHeader(text)) return false;

    const double radius = usableRadius(modelRadius);
    Scanner<> scanner(std::string_view(text).substr(header.size()));
    eye = toView(scanner, centre, radius);
    lookAt = toView(scanner, centre, radius);
    scanner.real(zoom);
    std::int64_t projection = parallel;
    scanner.integer(projection);
    parallel = projection != 0;
    if (projection != 0 && projection != 1) scanner.fail();
    scanner.real(skyIntensity);
    scanner.real(groundIntensity);

    std::size_t known = 0;
    for (ParallelLightSetting light; known < lights.size() && readLight(scanner, light); light = {})
        lights[known++] = light;
    for (; known < lights.size(); ++known) lights[known].intensity = 0.0;
    imageSaved = false;
    return true;
}

ViewParameters freshView()
{
    ViewParameters view;
    view.lights[0].intensity = 0.6;
    return view;
}

double usableRadius(double radius) noexcept { return std::isfinite(radius) && radius > 0.0 ? radius : 1.0; }

}   // namespace belvor
