#include "app/Belvor.h"

#include "app/ImageRequest.h"
#include "app/LoadRequest.h"
#include "app/WindowHost.h"
#include "platform/FileNames.h"
#include "platform/Win32Error.h"
#include "render/queue/RenderThread.h"
#include "resources/Texts.h"
#include "resources/ids.h"
#include "ui/Messages.h"
#include "ui/display/BitmapWindow.h"
#include "ui/display/WindowBuffer.h"
#include "view/Intensity.h"
#include "view/PanelRecords.h"

#include <utility>

namespace belvor {
namespace {}   // namespace

Belvor::Belvor(HWND window)
    : mainWindow(window),
      host(new WindowHost(window)),
      queue(makeHandle<RenderQueue>())
{
    startRenderThread(queue, host);
}

void Belvor::setView(const ViewParameters& next) { setView(next, 0); }

void Belvor::setView(const ViewParameters& next, std::uint32_t gesture)
{
    if (history.show(next, gesture)) showView();
}

void Belvor::showView()
{
    redraw(windows.display, 0);
    const ViewParameters view = history.current();   // whatever a panel may answer
    send(windows.plan, UM_VIEWMARKERS, viewMarkers(view, Thumbnail::plan), ID_PLAN);
    send(windows.elevation, UM_VIEWMARKERS, viewMarkers(view, Thumbnail::elevation), ID_ELEVATION);
    send(windows.eyeSlide, UM_EYESLIDE, eyeSlideRecord(view), handleParameter(windows.eyeSlide));
    send(windows.sphere, UM_LIGHTMARKER, eyeMarker(view), handleParameter(windows.sphere));
    send(windows.controls, UM_LIGHTINTENSITY, 0, intensityToSlider(view.skyIntensity));
    send(windows.controls, UM_LIGHTINTENSITY, 1, intensityToSlider(view.groundIntensity));
    for (std::size_t light = 0; light < view.lights.size(); ++light) {
        const auto number = static_cast<INT_PTR>(light);
        send(windows.controls, UM_LIGHTINTENSITY, number + 2,
             intensityToSlider(view.lights[light].intensity));
        if (const auto marker = lightMarker(view, light))
            send(windows.sphere, UM_LIGHTMARKER, *marker, handleParameter(windows.sphere));
        else send(windows.sphere, UM_REMOVELIGHTMARKER, number);
    }
    // A view with fewer lights than the one before: the others are not shown any more.
    for (std::size_t light = view.lights.size(); light < history.previous().lights.size(); ++light) {
        const auto number = static_cast<INT_PTR>(light);
        send(windows.controls, UM_LIGHTINTENSITY, number + 2, 0);
        send(windows.sphere, UM_REMOVELIGHTMARKER, number);
    }
}

void Belvor::redraw(HWND target, int which)
{
    HWND& panel = which == 1 ? windows.plan : windows.elevation;
    if (which != 0 && !panel) panel = target;
    queue->cancel(kindOf(target));
    if (!held || ending) return;

    RECT client;
    if (!GetClientRect(target, &client)) throw Win32Error("Belvor::redraw  GetClientRect");
    // The bitmap's size counts: it is what the rows are written into.
    const Handle<DibSection> bitmap = bitmapOf(target);
    if (!bitmap || !*bitmap) return;
    const bool progressive = which == 0;
    const Handle<Buffer> sink = makeHandle<WindowBuffer>(target, bitmap, progressive);
    Scene drawn;
    if (progressive) {
        scene = buildScene(history.current(), where, image, bitmap->width(), bitmap->height());
        drawn = scene;
    } else {
        drawn = buildThumbnailScene(which == 1 ? Thumbnail::plan : Thumbnail::elevation, where,
                                    bitmap->width(), bitmap->height());
    }
    const char* const name = textOf(progressive ? Text::rendering : Text::renderingThumbnail);
    queue->post(kindOf(target), makeHandle<RenderRequest>(name, held, drawn.camera, drawn.lights, sink));
}

void Belvor::takeModel(Handle<Model> loaded, std::string file)
{
    if (ending) return;
    held = std::move(loaded);
    path = std::move(file);
    held->bounds(where.centre, where.radius);
    history.begin(wholeModel(history.current(), image));
    showView();
    if (windows.plan) redraw(windows.plan, 1);
    if (windows.elevation) redraw(windows.elevation, 2);
}

void Belvor::writeImage(const std::string& file)
{
    const Scene picture = buildScene(history.current(), where, image, image.width, image.height);
    const auto sink = makeHandle<OmbrBuff>(file, held, picture.camera, image.width, image.height);
    queue->post(imageFile, makeHandle<ImageRequest>(std::string(fileName(file)), held, picture.camera,
                                                    picture.lights, sink));
    history.markSaved();
}

void Belvor::load(const std::string& file, FileType type)
{
    if (ending) return;
    queue->cancel(kindOf(mainWindow));
    queue->post(kindOf(mainWindow), makeHandle<LoadRequest>(file, type, host));
}

void Belvor::shutDown()
{
    ending = true;
    for (const HWND window : {mainWindow, windows.plan, windows.elevation, windows.display})
        if (window) queue->cancel(kindOf(window));
    queue->post(kindOf(mainWindow), makeHandle<ExitRequest>());
}

}   // namespace belvor
