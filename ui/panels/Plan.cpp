#include "ui/panels/Plan.h"

#include "platform/Win32Error.h"
#include "platform/win32/Window.h"
#include "resources/Texts.h"
#include "resources/ids.h"
#include "ui/Messages.h"
#include "ui/UserLocale.h"
#include "ui/ValueText.h"
#include "ui/WindowScale.h"
#include "ui/panels/Markers.h"
#include "ui/panels/PanelPainting.h"
#include "ui/panels/PlanGeometry.h"

#include <oleacc.h>

namespace belvor {
namespace {

void drawSightLines(HDC dc, PixelPoint eye, PixelPoint lookAt, bool parallel, PixelScale scale)
{
    const GdiObject<HPEN> pen(CreatePen(PS_SOLID, scale(1), RGB(128, 128, 128)));
    const Selection penInDc(dc, pen.get());
    for (const PixelLine& line : sightLines(eye, lookAt, parallel, scale)) drawLine(dc, line);
}

}   // namespace

Plan::Plan(HWND owner) noexcept : BitmapWindow(owner), drag(owner, *this, IDC_CROSS), toolTips(owner) {}

LRESULT Plan::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (const auto answer = drag.handle(message, wParam, lParam)) return *answer;
    switch (message) {
    case WM_CREATE: create(*reinterpret_cast<const CREATESTRUCTW*>(lParam)); return 0;
    case WM_SIZE:
        InvalidateRect(window, nullptr, TRUE);   // frame and markers move, with or without a new picture
        if (accepted(wParam, lParam)) resize(LOWORD(lParam), HIWORD(lParam));
        return 0;
    case WM_ERASEBKGND: return 1;   // painting covers everything
    case WM_PAINT: paint(); return 0;
    case WM_GETOBJECT:
        if (const auto answer = accessibleObject(window, wParam, lParam, factsOf<Plan>(window)))
            return *answer;
        break;
    case WM_NOTIFY: notify(lParam); break;
    case UM_VIEWMARKERS: show(payload(UM_VIEWMARKERS, wParam)); return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void Plan::paint()
{
    const PixelSize client = clientSize(window);
    const PixelScale scale = scaleOf(window);
    const PixelPoint lookAt = lookAtPixel(markers, client), eye = eyePixel(markers, client);
    const EyeGlyph glyph = eyeGlyph(eye, directionBetween(eye, lookAt, {1.0, 0.0}), scale);
    const auto eyeEdge = edgePointer(eye, client, scale), lookAtEdge = edgePointer(lookAt, client, scale);
    {
        const PanelPaint picture(window);
        if (HDC const dc = picture.get()) {
            RECT frame{0, 0, client.width, client.height};
            FillRect(dc, &frame, GetSysColorBrush(COLOR_BTNFACE));   // where the bitmap is smaller
            copyTo(dc);
            DrawEdge(dc, &frame, EDGE_ETCHED, BF_RECT);
            drawCross(dc, lookAt, scale);
            drawEyeGlyph(dc, glyph, scale);
            drawSightLines(dc, eye, lookAt, markers.parallel, scale);
            if (lookAtEdge) drawPointer(dc, *lookAtEdge, lookAt, false, scale);
            if (eyeEdge) drawPointer(dc, *eyeEdge, eye, true, scale);
            drag.paint(dc);   // redrawn only inside the area being painted
        }
    }
    const bool plan = GetDlgCtrlID(window) == ID_PLAN;
    const UINT lookAtTool = plan ? ID_TOOLPLANLOOKAT : ID_TOOLELEVATIONLOOKAT;
    const UINT eyeTool = plan ? ID_TOOLPLANEYE : ID_TOOLELEVATIONEYE;
    toolTips.show({{eyeTool, eyeTool, eyeEdge ? around(*eyeEdge, scale) : glyph.bounds()},
                   {lookAtTool, lookAtTool, around(lookAtEdge.value_or(lookAt), scale)}});
}

bool Plan::takeMarker(const PanelMouse& press)
{
    taken = hitMarker(markers, clientSize(window), press.at.x, press.at.y, press.shift, scaleOf(window));
    return taken != MarkerDrag::none;
}

Ghost::Shape Plan::ghostAt(const PanelMouse& mouse) const
{
    const PixelLine line = rubberLine(markers, taken, clientSize(window), mouse.at.x, mouse.at.y);
    return [line](HDC dc) { drawLine(dc, line); };
}

std::string Plan::valueAt(const PanelMouse& mouse) const
{
    const PanelPoint to = pixelToPanel(mouse.at.x, mouse.at.y, clientSize(window));
    return panelPointText(GetDlgCtrlID(window) == ID_PLAN ? Thumbnail::plan : Thumbnail::elevation, to.h,
                          to.v, userDecimalPoint());
}

void Plan::askFor(const PanelMouse& release)
{
    ask(draggedMarkers(markers, taken, clientSize(window), release.at.x, release.at.y));
}

std::vector<PixelPoint> Plan::markerPixels() const
{
    const PixelSize client = clientSize(window);
    const PixelScale scale = scaleOf(window);
    const PixelPoint eye = eyePixel(markers, client), lookAt = lookAtPixel(markers, client);
    return {edgePointer(eye, client, scale).value_or(eye),
            edgePointer(lookAt, client, scale).value_or(lookAt)};
}

void Plan::nudge(std::size_t index, PixelPoint by, bool shift)
{
    ask(nudgedMarkers(markers, dragOf(index, shift), clientSize(window), by));
}

AccessibleFacts Plan::facts() const
{
    const bool plan = GetDlgCtrlID(window) == ID_PLAN;
    const Thumbnail which = plan ? Thumbnail::plan : Thumbnail::elevation;
    const std::vector<PixelPoint> places = markerPixels();
    const PixelScale scale = scaleOf(window);
    const std::string point = userDecimalPoint();
    return {titleOf(window),
            {},
            ROLE_SYSTEM_GROUPING,
            {{textOf(Text::planEyeTip), panelPointText(which, markers.eyeH, markers.eyeV, point),
              toRect(around(places[0], scale)), drag.chosenIndex() == 0},
             {textOf(Text::planLookAtTip), panelPointText(which, markers.lookAtH, markers.lookAtV, point),
              toRect(around(places[1], scale)), drag.chosenIndex() == 1}}};
}

void Plan::ask(const ViewMarkers& request)
{
    send(GetParent(window), UM_VIEWMARKERS, request,
         GetDlgCtrlID(window));   // the markers move when the answer comes
}

void Plan::show(const ViewMarkers& shown)
{
    if (markers == shown) return;
    markers = shown;
    InvalidateRect(window, nullptr, TRUE);
    drag.redraw();
    for (const int marker : {0, 1}) accessibleValueChanged(window, marker);
}

void Plan::notify(LPARAM lParam)
{
    if (const auto event = toolTipEvent(lParam); event && event->id != 0)
        showHelp(window, event->id + ID_STATUSTEXT, event->shows);
}

void registerPlan(HINSTANCE module)
{
    WNDCLASSEXW record = windowClass<Plan>(module, L"Plan");
    record.style = CS_BYTEALIGNCLIENT | CS_PARENTDC;
    record.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    if (!RegisterClassExW(&record)) throw Win32Error("RegisterClass Plan");
}

}   // namespace belvor
