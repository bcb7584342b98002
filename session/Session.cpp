#include "session/Session.h"

#include "platform/FileNames.h"
#include "render/queue/RenderRequest.h"
#include "resources/Texts.h"
#include "view/Intensity.h"
#include "view/ViewEdits.h"

#include <utility>

namespace belvor {

Session::Session(Shell& shell, Handle<RenderHost> host)
    : surroundings(shell),
      saves(*this, host),
      loads(*this, std::move(host))
{}

void Session::setView(const ViewParameters& next, std::uint32_t number)
{
    if (history.show(next, number)) showView();
}

void Session::joinChanges(bool begin) noexcept
{
    constexpr std::uint32_t ours = 0x80000000;   // gestures count from 1
    joined = begin ? ours | ++lastJoined : 0;
}

void Session::undoView()
{
    if (held && history.undo()) showView();
}

void Session::redoView()
{
    if (held && history.redo()) showView();
}

void Session::showView()
{
    redraw(Target::display);
    const ViewParameters shown = history.current();   // a copy: a panel may call setView while we send
    surroundings.showMarkers(Thumbnail::plan, viewMarkers(shown, Thumbnail::plan));
    surroundings.showMarkers(Thumbnail::elevation, viewMarkers(shown, Thumbnail::elevation));
    surroundings.showEyeSlide(eyeSlideRecord(shown));
    surroundings.showLightMarker(eyeMarker(shown));
    surroundings.showIntensity(0, intensityToSlider(shown.skyIntensity));
    surroundings.showIntensity(1, intensityToSlider(shown.groundIntensity));
    for (std::size_t light = 0; light < shown.lights.size(); ++light) {
        surroundings.showIntensity(light + 2, intensityToSlider(shown.lights[light].intensity));
        if (const auto marker = lightMarker(shown, light)) surroundings.showLightMarker(*marker);
        else surroundings.removeLightMarker(light);
    }
    // The view has fewer lights than the one before: hide the markers of the others.
    for (std::size_t light = shown.lights.size(); light < history.previous().lights.size(); ++light) {
        surroundings.showIntensity(light + 2, 0);
        surroundings.removeLightMarker(light);
    }
}

void Session::redraw(Target target)
{
    surroundings.cancel(target);
    if (!held || ending) return;
    const std::optional<Canvas> canvas = surroundings.canvas(target);
    if (!canvas) return;
    Scene drawn;
    if (target == Target::display) {
        scene = buildScene(history.current(), where, image, canvas->width, canvas->height);
        drawn = scene;
    } else {
        drawn = buildThumbnailScene(target == Target::plan ? Thumbnail::plan : Thumbnail::elevation, where,
                                    canvas->width, canvas->height);
    }
    const char* const name = textOf(target == Target::display ? Text::rendering : Text::renderingThumbnail);
    const auto request = makeHandle<RenderRequest>(name, held, drawn.camera, drawn.lights, canvas->sink);
    if (target == Target::display) request->drawLines(lines, lineDrawing);
    surroundings.post(target, request);
}

// A view command or a panel that asks before there is a model gets nothing: the item is grey and
// the strip is disabled, but other programs send commands too.
void Session::apply(const ViewParameters& next)
{
    if (held) setView(next);
}

void Session::wholeModel() { apply(belvor::wholeModel(view(), image)); }
void Session::increaseZoomAngle() { apply(belvor::increaseZoomAngle(view())); }
void Session::centreLookAt() { apply(belvor::centreLookAt(view())); }

void Session::standardView(StandardView which)
{
    if (held) setView(belvor::standardView(view(), which, held->extent(), where, image));
}

void Session::moveMarkers(Thumbnail panel, const ViewMarkers& asked)
{
    apply(belvor::moveMarkers(view(), panel, asked));
}
void Session::moveAlongSight(const EyeSlideRecord& asked) { apply(belvor::moveAlongSight(view(), asked)); }
void Session::turn(const SphereMarker& asked) { apply(belvor::turn(view(), asked)); }
void Session::removeLight(std::size_t light) { apply(belvor::removeLight(view(), light)); }
void Session::zoomBy(double factor) { apply(belvor::zoomBy(view(), factor)); }

void Session::lookAtPixel(int x, int y)
{
    if (scene.camera) apply(belvor::lookAtPixel(view(), *scene.camera, where.viewToModel(), x, y));
}

void Session::gesture(const ViewGesture& step)
{
    if (held && scene.camera)
        setView(gestured(view(), step, *scene.camera, where.viewToModel()), step.number);
}

void Session::setIntensity(std::size_t slider, int position)
{
    apply(belvor::setIntensity(view(), slider, position));
}

void Session::setImageSize(const ImageSize& size)
{
    image = size;
    surroundings.imageSizeChanged();
    redraw(Target::display);   // other proportions need not change the number of pixels
}

void Session::setUnits(const Units& units)
{
    if (!held) return;
    const Units& present = held->units();
    if (units.scale == present.scale && units.code == present.code) return;
    givenUnits = units;
    held->setUnits(units);
}

void Session::askView()
{
    if (!held) return;
    const Handle<Model> asked = held;
    const auto edit = surroundings.askView(view(), where, held->units());
    if (!edit) return;
    // Numbers of a model that has gone mean nothing for the one that is shown now.
    if (held != asked) return surroundings.setStatus(textOf(Text::modelReplaced));
    setView((*edit)(view()));
}

void Session::takeModel(Handle<Model> loaded, const std::string& file, bool again)
{
    // What showed nothing, such as lines that were not read, had no place that a view could be of.
    const bool keepView = held && again && seen;
    held = std::move(loaded);
    seen = keepView || held->facetCount() != 0 || held->curveCount() != 0;
    if (!again) givenUnits.reset();
    if (givenUnits) held->setUnits(*givenUnits);
    lineDrawing = makeHandle<LineDrawing>();
    path = file;
    changed = false;
    const ModelPlace before = where;
    held->bounds(where.centre, where.radius);
    if (keepView)
        history.mapViews([&](const ViewParameters& record) { return movedTo(record, before, where); });
    else history.begin(belvor::wholeModel(history.current(), image));
    showView();
    redraw(Target::plan);
    redraw(Target::elevation);
}

void Session::showLines(const ShownLines& shown)
{
    if (shown == lines) return;
    lines = shown;
    history.markAllUnsaved();
    surroundings.settingsChanged();
    loads.readCurves(shown.curves);
    if (!changed) loads.tellRemark();   // that there is a newer file stays told
    redraw(Target::display);
}

void Session::fileChanged()
{
    if (!held) return;
    changed = true;
    surroundings.setRemark(filledText(Text::fileChangedRemark, {fileName(path)}));
}

void Session::stop()
{
    if (loads.running()) {
        loads.giveUp();
        surroundings.setStatus(textOf(Text::abandoned));
    } else if (saves.running()) {
        saves.stop();
        surroundings.setStatus(textOf(Text::abandoned));
    } else {
        surroundings.leaveFullScreen();
    }
}

void Session::close()
{
    // Not twice, and not while a box is open that must be answered first.
    if (ending || surroundings.modalOpen()) return;
    if (!saves.querySave() || ending) return;
    ending = true;
    for (const Target target : {Target::mainWindow, Target::plan, Target::elevation, Target::display})
        surroundings.cancel(target);
    surroundings.post(Target::mainWindow, makeHandle<ExitRequest>());
}

void Session::stay()
{
    loads.giveUp();   // the request for the end waits for the same target
    if (!std::exchange(ending, false)) return;
    for (const Target target : {Target::display, Target::plan, Target::elevation}) redraw(target);
}

Text Session::reasonToStay()
{
    if (!ending) {
        if (surroundings.modalOpen()) return Text::boxOpenReason;
        if (!saves.querySave()) return Text::imageUnsavedReason;
    }
    return saves.running() ? Text::imageRunningReason : Text::none;
}

}   // namespace belvor
