#include "cli/PictureHash.h"

#include "imagefile/PictureTextReader.h"
#include "platform/Files.h"
#include "report/Sha256.h"

#include <charconv>

namespace belvor {
namespace {

/// Lines of a name and a value, which the hash is made of.
class Basis {
public:
    Basis& add(const char* name, std::string_view value)
    {
        text.append(name).append("=").append(value).append("\n");
        return *this;
    }
    Basis& add(const char* name, double value)
    {
        char digits[32];
        const char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        return add(name, std::string_view(digits, static_cast<std::size_t>(end - digits)));
    }
    template <class T>
    Basis& add(const char* name, const std::optional<T>& value)
    {
        return value ? add(name, *value) : *this;
    }
    Basis& add(const char* name, const Point<3>& point)
    {
        return add(name, point[0]).add(name, point[1]).add(name, point[2]);
    }
    Basis& add(const char* name, const ParallelLightSetting& light)
    {
        return add(name, light.bearing).add(name, light.elevation).add(name, light.intensity);
    }

    std::string text;
};

std::string hexOf(const std::array<std::uint8_t, 3>& colour)
{
    std::string text;
    for (const std::uint8_t byte : colour) text += std::to_string(byte) + ' ';
    return text;
}

/// What a view's numbers are made of, before the model is known.
void addView(Basis& basis, const ChosenView& choice)
{
    if (choice.file.empty()) {
        basis.add("view", choice.name);
        return;
    }
    ViewParameters view;
    view.parse(choice.bytes, Point<3>::origin(), 1.0);   // numbers as they stand in the file
    basis.add("eye", view.eye).add("look-at", view.lookAt).add("zoom", view.zoom);
    basis.add("parallel", view.parallel ? 1.0 : 0.0);
    basis.add("sky", view.skyIntensity).add("ground", view.groundIntensity);
    for (const ParallelLightSetting& light : view.lights) basis.add("light", light);
}

void addChanges(Basis& basis, const ViewChanges& changes)
{
    basis.add("set-eye", changes.eye).add("set-look-at", changes.lookAt).add("set-zoom", changes.zoom);
    basis.add("set-sky", changes.sky).add("set-ground", changes.ground).add("scale", changes.unitsPerPixel);
    if (changes.parallel) basis.add("set-parallel", *changes.parallel ? 1.0 : 0.0);
    for (std::size_t i = 0; i < changes.lights.size(); ++i)
        if (changes.lights[i]) basis.add("set-light", double(i + 1)).add("to", *changes.lights[i]);
}

void addDrawing(Basis& basis, const Options& options)
{
    basis.add("width", options.width).add("height", options.height);
    basis.add("background", hexOf(options.background));
    const LineStyle& lines = options.lines;
    basis.add("edges", !options.edges ? "off" : lines.everyEdge ? "all" : "on");
    basis.add("curves", lines.curves ? "on" : "off").add("embed", options.embedSurfaces ? "on" : "off");
    basis.add("colours", static_cast<double>(options.colours));
    if (options.curvesInBounds) basis.add("bounds", "all");
    basis.add("surfaces", lines.surfaces ? "on" : "off").add("line-width", lines.width);
    if (lines.colour) basis.add("line-colour", hexOf(*lines.colour));
}

bool isThere(const std::string& path, const std::string& hash, const std::string& hashOfViews,
             const EarlierFiles& earlier)
{
    std::uint64_t bytes = 0;
    if (kindOfFile(path, bytes) != FileKind::regular) return false;
    if (hashInPicture(path) == hash) return true;
    const auto told = earlier.find(path);
    return told != earlier.end() && told->second.hash == hashOfViews && told->second.bytes == bytes;
}

}   // namespace

std::vector<std::string> pictureHashes(const Options& options, const Job& job, const std::string& modelDigest)
{
    std::vector<std::string> hashes;
    for (const ChosenView& view : options.chosenViews) {
        Basis basis;
        basis.add("program", textOf(Text::toolVersion)).add("model", modelDigest);
        basis.add("type", nameOf(job.type));
        basis.add("reading", options.rules == ReadingRules::modern ? "modern" : "strict");
        addView(basis, view);
        addChanges(basis, options.changes);
        addDrawing(basis, options);
        hashes.push_back(sha256Of(basis.text));
    }
    return hashes;
}

std::string hashOfAll(const std::vector<std::string>& hashes)
{
    if (hashes.size() == 1) return hashes.front();
    std::string text;
    for (const std::string& hash : hashes) text += hash + '\n';
    return hashes.empty() ? "" : sha256Of(text);
}

bool picturesAreThere(const Job& job, const std::vector<std::string>& hashes, const EarlierFiles& earlier)
{
    const std::string all = hashOfAll(hashes);
    for (std::size_t i = 0; i < job.outputs.size(); ++i)
        for (const std::string& output : job.outputs[i])
            if (!isThere(output, hashes[i], all, earlier)) return false;
    return true;
}

}   // namespace belvor
