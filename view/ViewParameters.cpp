#include "view/ViewParameters.h"

#include "calcore/Scanner.h"
#include "calcore/TextMode.h"
#include "platform/Files.h"
#include "platform/OutputFile.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <exception>
#include <initializer_list>
#include <string_view>

namespace belvor {
namespace {

constexpr std::string_view header = "Belvor View Parameters 1.0";
constexpr std::size_t longestHeader = 39;

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

bool startsWithHeader(std::string_view text)
{
    const std::string_view line = text.substr(0, text.find('\n'));
    return line.size() <= longestHeader && line == header;
}

bool readLight(Scanner<>& scanner, ParallelLightSetting& light)
{
    return scanner.real(light.bearing) && scanner.real(light.elevation) && scanner.real(light.intensity);
}

/// Keeps where a scanner first failed.
class FaultFinder {
public:
    FaultFinder(std::string_view whole, const Scanner<>& reader) : text(whole), scanner(reader) {}
    void look(ViewValue value, int light = 0)
    {
        if (found || !scanner.failed()) return;
        const auto line = 1 + std::count(text.data(), scanner.position(), '\n');
        found = {static_cast<int>(line), value, light};
    }
    std::optional<ViewFileFault> found;

private:
    std::string_view text;
    const Scanner<>& scanner;
};

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

bool ViewParameters::finiteInModel(const Point<3>& centre, double modelRadius) const
{
    const double radius = usableRadius(modelRadius);
    ViewParameters placed = *this;
    placed.eye = toModel(eye, centre, radius);
    placed.lookAt = toModel(lookAt, centre, radius);
    return placed.finite();
}

std::string ViewParameters::text(const Point<3>& centre, double modelRadius) const
{
    const double radius = usableRadius(modelRadius);
    const Point<3> eyeAt = toModel(eye, centre, radius), lookAtPoint = toModel(lookAt, centre, radius);
    std::string lines(header);
    lines += textLineEnd;
    appendLine(lines, {eyeAt[0], eyeAt[1], eyeAt[2]});
    appendLine(lines, {lookAtPoint[0], lookAtPoint[1], lookAtPoint[2]});
    appendLine(lines, {zoom});
    appendLine(lines, {parallel ? 1.0 : 0.0});
    appendLine(lines, {skyIntensity});
    appendLine(lines, {groundIntensity});
    for (const ParallelLightSetting& light : lights)
        appendLine(lines, {light.bearing, light.elevation, light.intensity});
    return lines;
}

bool ViewParameters::write(const std::string& path, const Point<3>& centre, double radius) const
try {
    const std::string lines = text(centre, radius);
    OutputFile file(path);
    if (std::fwrite(lines.data(), 1, lines.size(), file.stream()) != lines.size()) return false;
    file.commit();
    return true;
} catch (const FileError& error) {
    errno = error.code();
    return false;
} catch (const std::exception&) {
    errno = ENOMEM;
    return false;
}

bool isViewFile(std::string_view bytes)
{
    std::string copy;
    return startsWithHeader(textModeBytes(bytes.substr(0, longestHeader + 2), copy, [] {}));
}

bool readViewFile(const std::string& path, std::string& bytes, const std::function<void()>& waiting)
{
    return readFileWhile(path, maxViewFileSize, bytes, [&waiting](const std::string& soFar) {
        if (waiting) waiting();
        return soFar.size() < longestHeader + 2 || isViewFile(soFar);
    });
}

bool ViewParameters::read(const std::string& path, const Point<3>& centre, double modelRadius)
{
    std::string bytes;
    return readViewFile(path, bytes) && parse(bytes, centre, modelRadius);
}

bool ViewParameters::parse(const std::string& bytes, const Point<3>& centre, double modelRadius,
                           std::optional<ViewFileFault>* fault)
{
    std::string copy;
    const std::string_view text = textModeBytes(bytes, copy, [] {});
    if (!startsWithHeader(text)) return false;

    const double radius = usableRadius(modelRadius);
    Scanner<> scanner(text.substr(header.size()));
    FaultFinder faults(text, scanner);
    eye = toView(scanner, centre, radius);
    faults.look(ViewValue::eye);
    lookAt = toView(scanner, centre, radius);
    faults.look(ViewValue::lookAt);
    scanner.real(zoom);
    faults.look(ViewValue::zoom);
    std::int64_t projection = parallel;
    scanner.integer(projection, 2);   // neither 0 nor 1, however long it is
    parallel = projection != 0;
    if (projection != 0 && projection != 1) scanner.fail();
    faults.look(ViewValue::projection);
    scanner.real(skyIntensity);
    faults.look(ViewValue::sky);
    scanner.real(groundIntensity);
    faults.look(ViewValue::ground);

    std::size_t known = 0;
    while (known < lights.size() && scanner.skipBlanks()) {   // fewer lights are no fault
        ParallelLightSetting light;
        if (readLight(scanner, light)) lights[known++] = light;
        else faults.look(ViewValue::light, static_cast<int>(known) + 1);
    }
    if (fault) *fault = faults.found;
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
