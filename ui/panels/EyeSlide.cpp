#include "ui/panels/EyeSlide.h"

#include "platform/Win32Error.h"
#include "platform/win32/Window.h"
#include "resources/Texts.h"
#include "resources/ids.h"
#include "ui/Messages.h"
#include "ui/SystemColours.h"
#include "ui/UserLocale.h"
#include "ui/ValueText.h"
#include "ui/WindowScale.h"
#include "ui/panels/Markers.h"
#include "ui/panels/PanelPainting.h"

#include <oleacc.h>

namespace belvor {
namespace {

constexpr PixelDirection up{0.0, -1.0};

int buttonHeight(HWND panel) noexcept { return metricOf(panel, SM_CYVSCROLL); }

void drawBar(HDC dc, const PixelRect& bar) noexcept
{
    const RECT area = toRect(bar);
    const GdiObject<HBRUSH> grey(CreateSolidBrush(RGB(128, 128, 128)));
    FillRect(dc, &area, grey.get());
}

void drawCentreLine(HDC dc, const std::vector<PixelLine>& pieces, PixelScale scale) noexcept
{
    const GdiObject<HPEN> pen(
        CreatePen(PS_SOLID, scale(2), highContrast() ? GetSysColor(COLOR_BTNTEXT) : RGB(0, 0, 0)));
    const Selection penInDc(dc, pen.get());
    for (const PixelLine& piece : pieces) drawLine(dc, piece);
}

}   // namespace

LRESULT EyeSlide::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (const auto answer = drag.handle(message, wParam, lParam)) return *answer;
    switch (message) {
    case WM_CREATE: create(); return 0;
    case WM_SIZE: size(); return 0;
    case WM_ERASEBKGND: return 1;   // painting covers everything
    case WM_PAINT: paint(); return 0;
    case WM_COMMAND:
        if (HIWORD(wParam) == BN_CLICKED) step(LOWORD(wParam) == ID_RETREAT);
        return 0;
    case WM_MOUSEWHEEL: wheel(wParam); return 0;
    case WM_DRAWITEM: drawButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)); return TRUE;
    case WM_GETOBJECT:
        if (const auto answer = accessibleObject(window, wParam, lParam, factsOf<EyeSlide>(window)))
            return *answer;
        break;
    case WM_NOTIFY: notify(lParam); break;
    case UM_EYESLIDE: show(payload(UM_EYESLIDE, wParam)); return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void EyeSlide::create()
{
    if (!advanceButton.create(window, Arrow::up, L"Up", ID_ADVANCE, ID_TOOLADVANCE)
        || !retreatButton.create(window, Arrow::down, L"Down", ID_RETREAT, ID_TOOLRETREAT))
        throw Win32Error("EyeSlide::CreateWindow Buttons");
    size();
    ask(record);   // makes the slide known to the main window
}

void EyeSlide::size()
{
    const PixelSize client = clientSize(window);
    MoveWindow(advanceButton.handle(), 0, 0, client.width, buttonHeight(window), TRUE);
    MoveWindow(retreatButton.handle(), 0, client.height - buttonHeight(window), client.width,
               buttonHeight(window), TRUE);
}

void EyeSlide::paint()
{
    std::vector<Tool> tools;
    {
        const PanelPaint picture(window);
        HDC const dc = picture.get();
        if (!dc) return;
        const PixelSize client = clientSize(window);
        const RECT all{0, 0, client.width, client.height};
        FillRect(dc, &all, GetSysColorBrush(COLOR_BTNFACE));
        if (scale().usable()) tools = drawMarkers(dc, client);
        drag.paint(dc);
    }
    toolTips.show(std::move(tools));
}

/// Draws bar, line and markers and answers where they are, the topmost first.
std::vector<Tool> EyeSlide::drawMarkers(HDC dc, PixelSize client) const
{
    const SlideScale along = scale();
    const PixelPoint eye{along.x, along.toPixel(record.eye)}, lookAt{along.x, along.toPixel(record.lookAt)};
    const PixelRect bar = extentBar(record, along, client, metricOf(window, SM_CXVSCROLL));
    drawBar(dc, bar);
    drawCentreLine(dc, slideLine(record, along), along.pixels);
    drawCross(dc, lookAt, along.pixels);
    const EyeGlyph glyph = eyeGlyph(eye, directionBetween(eye, lookAt, up), along.pixels);
    drawEyeGlyph(dc, glyph, along.pixels);
    std::vector<Tool> tools{{ID_TOOLSLIDEEYE, ID_TOOLSLIDEEYE, glyph.bounds()},
                            {ID_TOOLSLIDELOOKAT, ID_TOOLSLIDELOOKAT, around(lookAt, along.pixels)}};
    if (!record.parallel) {
        const ZoomWedge wedge = zoomWedge(eye, record.zoomAngle, along.pixels);
        drawZoomWedge(dc, wedge, along.pixels);
        tools.push_back({ID_TOOLZOOMANGLE, ID_TOOLZOOMANGLE, wedge.bounds});
    }
    tools.push_back({ID_TOOLEXTENT, ID_TOOLEXTENT, bar});
    return tools;
}

bool EyeSlide::takeMarker(const PanelMouse& press)
{
    taken = hitMarker(record, scale(), press.at.x, press.at.y, press.shift);
    return taken != MarkerDrag::none;
}

Ghost::Shape EyeSlide::ghostAt(const PanelMouse& mouse) const
{
    const SlideScale along = scale();
    const SlideGhost markers = slideGhost(record, taken, along, mouse.at.y);
    const PixelPoint eye{along.x, markers.eyeY}, lookAt{along.x, markers.lookAtY};
    const PixelDirection sight = markers.lookAt ? directionBetween(eye, lookAt, up) : up;
    return [=, scale = along.pixels](HDC dc) {
        if (markers.eye) drawEyeGlyph(dc, eyeGlyph(eye, sight, scale), scale);
        if (markers.lookAt) drawCross(dc, lookAt, scale, true);
    };
}

std::string EyeSlide::valueAt(const PanelMouse& mouse) const
{
    const EyeSlideRecord asked = draggedSlide(record, taken, scale(), mouse.at.y);
    const bool eye = taken == MarkerDrag::eye || taken == MarkerDrag::eyeKeepingDistance;
    return slideText(eye ? asked.eye : asked.lookAt, userDecimalPoint());
}

void EyeSlide::askFor(const PanelMouse& release) { ask(draggedSlide(record, taken, scale(), release.at.y)); }

std::vector<PixelPoint> EyeSlide::markerPixels() const
{
    const SlideScale along = scale();
    return {{along.x, along.toPixel(record.eye)}, {along.x, along.toPixel(record.lookAt)}};
}

void EyeSlide::nudge(std::size_t index, PixelPoint by, bool shift)
{
    if (by.y != 0) ask(nudgedSlide(record, dragOf(index, shift), scale(), by.y));
}

void EyeSlide::step(bool retreat)
{
    ask(steppedSlide(record, retreat, GetKeyState(VK_CONTROL) < 0, GetKeyState(VK_SHIFT) < 0));
}

void EyeSlide::wheel(WPARAM wParam)
{
    const bool fine = (GET_KEYSTATE_WPARAM(wParam) & MK_CONTROL) != 0 || GetKeyState(VK_CONTROL) < 0;
    send(GetParent(window), UM_VIEWGESTURE,
         gestures.slideWheel(GET_WHEEL_DELTA_WPARAM(wParam), fine,
                             static_cast<std::uint32_t>(GetMessageTime())));
}

AccessibleFacts EyeSlide::facts() const
{
    const std::vector<PixelPoint> places = markerPixels();
    const PixelScale pixels = scaleOf(window);
    const std::string point = userDecimalPoint();
    return {titleOf(window),
            {},
            ROLE_SYSTEM_GROUPING,
            {{textOf(Text::slideEyeTip), slideText(record.eye, point), toRect(around(places[0], pixels)),
              drag.chosenIndex() == 0},
             {textOf(Text::slideLookAtTip), slideText(record.lookAt, point),
              toRect(around(places[1], pixels)), drag.chosenIndex() == 1}}};
}

void EyeSlide::ask(const EyeSlideRecord& request)
{
    const EyeSlideRecord asked = request;   // the answer comes into `record` within the send
    send(GetParent(window), UM_EYESLIDE, asked, handleParameter(window));
}

void EyeSlide::show(const EyeSlideRecord& shown)
{
    if (record == shown) return;
    record = shown;
    InvalidateRect(window, nullptr, TRUE);
    drag.redraw();
    for (const int marker : {0, 1}) accessibleValueChanged(window, marker);
}

void EyeSlide::drawButton(const DRAWITEMSTRUCT& item) const noexcept
{
    if (!advanceButton.draw(item)) retreatButton.draw(item);
}

void EyeSlide::notify(LPARAM lParam)
{
    const auto event = toolTipEvent(lParam);
    if (!event) return;
    const UINT tool = event->child == advanceButton.handle()   ? ID_TOOLADVANCE
                      : event->child == retreatButton.handle() ? ID_TOOLRETREAT
                                                               : event->id;
    if (tool != 0) showHelp(window, tool + ID_STATUSTEXT, event->shows);
}

SlideScale EyeSlide::scale() const noexcept
{
    return {clientSize(window), buttonHeight(window), scaleOf(window)};
}

void registerEyeSlide(HINSTANCE module)
{
    WNDCLASSEXW record = windowClass<EyeSlide>(module, L"EyeSlide");
    record.style = CS_HREDRAW | CS_VREDRAW | CS_BYTEALIGNCLIENT | CS_PARENTDC | CS_DBLCLKS;
    record.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    if (!RegisterClassExW(&record)) throw Win32Error("RegisterClass EyeSlide");
}

}   // namespace belvor
