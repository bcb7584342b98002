#include "cli/Remarks.h"

#include "cli/Options.h"
#include "platform/FileError.h"
#include "resources/Texts.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <tuple>
#include <vector>

namespace belvor {

void print(const std::string& text)
{
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0) return;
    throw FileError(textOf(Text::standardOutput), Text::cannotWrite, errno);
}

namespace {

std::string* collected = nullptr;

std::uint32_t curvesOfColour(const Model& model, const std::array<std::uint8_t, 3>& colour)
{
    std::uint32_t count = 0;
    for (std::uint32_t i = 0; i < model.curveCount(); ++i) {
        const Colour& c = model.curve(i).material->colour;
        count += std::array{toByte(c[0]), toByte(c[1]), toByte(c[2])} == colour;
    }
    return count;
}

bool curvesReachBeyond(const Model& model, const ModelPlace& place)
{
    constexpr double margin = 1.5;   // more than a plan shows, and less than the view of the whole model does
    for (std::uint32_t i = 0; i < model.curveCount(); ++i) {
        const Curve& curve = model.curve(i);
        for (std::uint32_t k = 0; curve.bounded && k < curve.pointCount; ++k) {
            const Vector<3> away = model.curvePoint(curve.firstPoint + k) - place.centre;
            if (away.length() > margin * place.radius) return true;
        }
    }
    return false;
}

}   // namespace

void collectRemarks(std::string* text) noexcept { collected = text; }

void remark(const std::string& text)
{
    const std::string line = filledText(Text::toolRemark, {text});
    if (collected) *collected += line;
    else std::fputs(line.c_str(), stderr);
}

void remarkOn(const std::string& file, const Reading& reading)
{
    constexpr std::size_t maxLines = 20;
    for (const std::string& warning : reading.account.warnings)
        remark(filledText(Text::fileRemark, {file, warning}));
    if (reading.model->facetCount() == 0 && reading.model->curveCount() == 0)
        remark(filledText(Text::nothingToDraw, {file}));
    std::vector<NotDrawn> skipped = reading.account.notDrawn;
    // What the user can do something about comes first, and of that the most frequent.
    std::stable_sort(skipped.begin(), skipped.end(), [](const auto& a, const auto& b) {
        return std::tie(a.canBeDrawn, a.count) > std::tie(b.canBeDrawn, b.count);
    });
    for (std::size_t i = 0; i < skipped.size() && i < maxLines; ++i)
        remark(filledText(Text::notDrawn,
                          {std::to_string(skipped[i].count), skipped[i].type, skipped[i].reason}));
    if (skipped.size() > maxLines)
        remark(filledText(Text::moreNotDrawn, {std::to_string(skipped.size() - maxLines)}));
}

void remarkOnLines(const Options& options, const Model& model, const ModelPlace& place)
{
    if (!options.lines.curves || options.outputs.empty()) return;
    const auto remarkUnseen = [&](Text text, const std::array<std::uint8_t, 3>& ground) {
        if (const std::uint32_t unseen = options.lines.colour ? 0 : curvesOfColour(model, ground))
            remark(filledText(text, {std::to_string(unseen), std::to_string(model.curveCount())}));
    };
    // A vector file leaves a black background out.
    const bool groundless = options.background == std::array<std::uint8_t, 3>{} && !options.embedSurfaces;
    const auto hasPage = [&](const std::string& output) {
        return groundless && pictureFormatOf(options, output) == PictureFormat::svg;
    };
    const std::vector<std::string>& outputs = options.outputs;
    if (!std::all_of(outputs.begin(), outputs.end(), hasPage))
        remarkUnseen(Text::linesUnseen, options.background);
    if (std::any_of(outputs.begin(), outputs.end(), hasPage))
        remarkUnseen(Text::linesUnseenOnPage, {255, 255, 255});
    const bool placed = !options.changes.eye
                        && std::any_of(options.chosenViews.begin(), options.chosenViews.end(),
                                       [](const ChosenView& view) { return view.file.empty(); });
    if (placed && !options.curvesInBounds && model.facetCount() > 0 && curvesReachBeyond(model, place))
        remark(textOf(Text::linesBeyond));
}

std::string viewFaultText(const std::string& file, const ViewFileFault& fault)
{
    const Text value = textAfter(Text::viewEye, static_cast<int>(fault.value));
    return filledText(Text::viewFileFault,
                      {file, std::to_string(fault.line), filledText(value, {std::to_string(fault.light)})});
}

}   // namespace belvor
