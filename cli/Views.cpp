#include "cli/Views.h"

#include "cli/Arguments.h"
#include "cli/Remarks.h"
#include "errors/Reporter.h"
#include "platform/FileError.h"
#include "platform/FileNames.h"
#include "text/JsonText.h"

#include <algorithm>
#include <cerrno>
#include <cmath>

namespace belvor {
namespace {

constexpr const char* wholeName = "whole";

bool isWholeName(std::string_view given) noexcept
{
    return std::equal(given.begin(), given.end(), wholeName, wholeName + 5,
                      [](char a, char b) { return (a | 0x20) == b; });
}

bool isParallel(const ChosenView& choice, const ViewChanges& changes)
{
    if (changes.parallel) return *changes.parallel;
    ViewParameters view = freshView();
    if (!choice.file.empty()) view.parse(choice.bytes, Point<3>::origin(), 1.0);
    return choice.standard || view.parallel;
}

Point<3> toView(const Point<3>& point, const ModelPlace& place)
{
    const double radius = usableRadius(place.radius);
    Point<3> result;
    for (int axis = 0; axis < 3; ++axis) result[axis] = (point[axis] - place.centre[axis]) / radius;
    return result;
}

void apply(const ViewChanges& changes, const ModelPlace& place, const ImageSize& size, ViewParameters& view)
{
    if (changes.eye) view.eye = toView(*changes.eye, place);
    if (changes.lookAt) view.lookAt = toView(*changes.lookAt, place);
    view.zoom = changes.zoom.value_or(view.zoom);
    view.skyIntensity = changes.sky.value_or(view.skyIntensity);
    view.groundIntensity = changes.ground.value_or(view.groundIntensity);
    view.parallel = changes.parallel.value_or(view.parallel);
    for (std::size_t i = 0; i < changes.lights.size(); ++i)
        if (changes.lights[i]) view.lights[i] = *changes.lights[i];
    if (changes.unitsPerPixel) view.zoom = zoomForScale(*changes.unitsPerPixel, place.radius, size);
}

/// Throws BadView where the camera holds the scale at a limit: the picture would have another one.
void checkScale(double unitsPerPixel, const ViewParameters& view, const ModelPlace& place,
                const ImageSize& size)
{
    const double scale = buildScene(view, place, size, size.width, size.height).camera->scale;
    constexpr double rounding = 1e-6;
    if (!(std::fabs(scale * unitsPerPixel - 1.0) < rounding))
        throw BadView(filledText(Text::scaleOutOfRange, {shortestDecimal(unitsPerPixel),
                                                         shortestDecimal(usableRadius(place.radius))}));
}

}   // namespace

std::vector<ChosenView> chosenViews(const std::vector<std::string>& given)
{
    std::vector<ChosenView> views;
    for (const std::string& each : given) {
        ChosenView& view = views.emplace_back();
        view.standard = standardViewNamed(each);
        if (view.standard) view.name = nameOf(*view.standard);
        else if (isWholeName(each)) view.name = wholeName;
        else {
            view.file = each;
            view.name = nameWithoutEnding(each);
        }
    }
    if (views.empty()) views.emplace_back().name = wholeName;
    return views;
}

void readViews(std::vector<ChosenView>& views, const ViewChanges& changes, Reporter& reporter)
{
    for (ChosenView& view : views) {
        if (!view.file.empty()) {
            if (!readViewFile(view.file, view.bytes, [&reporter] { reporter.check(1, 0, 0.0); }))
                throw FileError(view.file, Text::cannotRead, errno);
            if (!isViewFile(view.bytes)) throw BadView(filledText(Text::notAViewFile, {view.file}));
        }
        if (changes.unitsPerPixel && !isParallel(view, changes))
            refuse(Text::scaleNeedsParallel, {view.file.empty() ? view.name : view.file});
    }
}

ViewParameters viewFor(const ChosenView& choice, const ViewChanges& changes, const Extent<3>& box,
                       const ModelPlace& place, const ImageSize& size, bool quiet)
{
    ViewParameters view;
    if (choice.standard) view = standardView(freshView(), *choice.standard, box, place, size);
    else if (choice.file.empty()) view = wholeModel(freshView(), size);
    else {
        std::optional<ViewFileFault> fault;
        if (!view.parse(choice.bytes, place.centre, place.radius, &fault))
            throw BadView(filledText(Text::notAViewFile, {choice.file}));
        if (!view.finite()) throw BadView(filledText(Text::viewTooLarge, {choice.file}));
        if (fault && !quiet) remark(viewFaultText(choice.file, *fault));
    }
    apply(changes, place, size, view);
    if (changes.unitsPerPixel) checkScale(*changes.unitsPerPixel, view, place, size);
    const bool fits = choice.standard ? view.finiteInModel(place.centre, place.radius) : view.finite();
    if (!fits)
        throw BadView(filledText(Text::viewTooLarge, {choice.file.empty() ? choice.name : choice.file}));
    return view;
}

}   // namespace belvor
