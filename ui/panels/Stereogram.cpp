#include "ui/panels/Stereogram.h"

#include "platform/Win32Error.h"
#include "platform/win32/Window.h"
#include "resources/Texts.h"
#include "resources/ids.h"
#include "ui/Messages.h"
#include "ui/ValueText.h"
#include "ui/WindowScale.h"
#include "ui/panels/Markers.h"
#include "ui/panels/PanelPainting.h"

#include <oleacc.h>

#include <utility>

namespace belvor {
namespace {

/// The four arrows, in the order of SphereArrow.
constexpr struct {
    const wchar_t* name;
    int button;
    UINT tool;
    Arrow picture;
} arrows[] = {
    {L"Right", ID_EYERIGHT, ID_TOOLEYERIGHT, Arrow::right},
    {L"Down", ID_EYEDOWN, ID_TOOLEYEDOWN, Arrow::down},
    {L"Left", ID_EYELEFT, ID_TOOLEYELEFT, Arrow::left},
    {L"Up", ID_EYEUP, ID_TOOLEYEUP, Arrow::up},
};

SphereKeys keysOf(const PanelMouse& mouse) noexcept { return {mouse.shift, mouse.control}; }

EyeGlyph glyphAt(PixelPoint eye, PixelPoint centre, PixelScale scale) noexcept
{
    return eyeGlyph(eye, directionBetween(eye, centre, {1.0, 0.0}), scale);
}

}   // namespace

LRESULT Stereogram::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (const auto answer = drag.handle(message, wParam, lParam)) return *answer;
    switch (message) {
    case WM_CREATE: create(); return 0;
    case WM_SIZE: size(); return 0;
    case WM_ERASEBKGND: return 1;   // painting covers everything
    case WM_PAINT: paint(); return 0;
    case WM_COMMAND:
        if (HIWORD(wParam) == BN_CLICKED) turn(LOWORD(wParam));
        return 0;
    case WM_DRAWITEM: drawButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)); return TRUE;
    case WM_GETOBJECT:
        if (const auto answer = accessibleObject(window, wParam, lParam, factsOf<Stereogram>(window)))
            return *answer;
        break;
    case WM_NOTIFY: notify(lParam); break;
    case UM_LIGHTMARKER: invalidate(markers.show(payload(UM_LIGHTMARKER, wParam))); return 0;
    case UM_REMOVELIGHTMARKER: invalidate(markers.hide(wParam)); return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void Stereogram::create()
{
    for (std::size_t i = 0; i < buttons.size(); ++i)
        buttons[i].create(window, arrows[i].picture, arrows[i].name, arrows[i].button, arrows[i].tool);
    size();
    ask(markers.eye, 0);   // makes the sphere known to the main window
}

void Stereogram::size()
{
    const ArrowSizes sizes{metricOf(window, SM_CXVSCROLL), metricOf(window, SM_CYVSCROLL),
                           metricOf(window, SM_CXHSCROLL), metricOf(window, SM_CYHSCROLL)};
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        const PixelArea area = arrowArea(static_cast<SphereArrow>(i), clientSize(window), sizes);
        if (!MoveWindow(buttons[i].handle(), area.x, area.y, area.width, area.height, TRUE))
            throw Win32Error("Stereogram::WM_SIZE");
    }
}

void Stereogram::paint()
{
    const PixelSize client = clientSize(window);
    std::vector<Tool> tools;
    {
        const PanelPaint picture(window);
        HDC const dc = picture.get();
        if (!dc) return;
        RECT all{0, 0, client.width, client.height};
        FillRect(dc, &all, GetSysColorBrush(COLOR_BTNFACE));
        DrawEdge(dc, &all, EDGE_ETCHED, BF_RECT);
        const SphereDisc shown = disc();
        if (shown.usable()) tools = drawMarkers(dc, shown);
        drag.paint(dc);
    }
    toolTips.show(std::move(tools));
}

/// Draws disc and markers and answers where they are, the topmost first.
std::vector<Tool> Stereogram::drawMarkers(HDC dc, const SphereDisc& shown) const
{
    {
        const Selection penInDc(dc, GetStockObject(BLACK_PEN));
        for (int ring = 4; ring > 0; --ring) {
            const Selection brushInDc(dc, GetStockObject(ring == 4 ? WHITE_BRUSH : HOLLOW_BRUSH));
            const PixelRect box = shown.ring(ring);
            Ellipse(dc, box.left, box.top, box.right, box.bottom);
        }
    }
    drawCross(dc, shown.centre, shown.pixels);
    std::vector<Tool> tools;
    for (int k = sphereLights - 1; k >= 0; --k) {
        const SphereMarkers::Light& light = markers.lights[static_cast<std::size_t>(k)];
        if (!light.present) continue;
        const PixelPoint position = shown.toPixel(light.direction);
        drawLight(dc, position, k, light.direction.elevation < 0.0, shown.pixels);
        tools.insert(tools.begin(), {static_cast<UINT>(ID_TOOLLIGHT + k),
                                     static_cast<UINT>(ID_SLIDER + 2 + k), around(position, shown.pixels)});
    }
    const PixelPoint eye = shown.toPixel(markers.eye);
    if (markers.eye.elevation < 0.0) drawBelowCircle(dc, eye, shown.pixels);
    const EyeGlyph glyph = glyphAt(eye, shown.centre, shown.pixels);
    drawEyeGlyph(dc, glyph, shown.pixels, true);
    tools.insert(tools.begin(), {ID_TOOLSPHEREEYE, ID_TOOLSPHEREEYE, glyph.bounds()});
    tools.push_back({ID_TOOLSPHERELOOKAT, ID_TOOLSPHERELOOKAT, around(shown.centre, shown.pixels)});
    return tools;
}

bool Stereogram::takeMarker(const PanelMouse& press)
{
    taken = hitItem(markers, disc(), press.at.x, press.at.y);
    return taken >= 0;
}

Ghost::Shape Stereogram::ghostAt(const PanelMouse& mouse) const
{
    const SphereDisc on = disc();
    const PixelPoint position = on.toPixel(on.toDirection(mouse.at.x, mouse.at.y, keysOf(mouse)));
    return [position, on, item = taken, below = mouse.control](HDC dc) {
        if (item > 0) return drawLight(dc, position, item - 1, below, on.pixels);
        if (below) drawBelowCircle(dc, position, on.pixels);
        drawEyeGlyph(dc, glyphAt(position, on.centre, on.pixels), on.pixels, true);
    };
}

std::string Stereogram::valueAt(const PanelMouse& mouse) const
{
    const SphereDirection to = disc().toDirection(mouse.at.x, mouse.at.y, keysOf(mouse));
    return directionText(to.bearing, to.elevation);
}

void Stereogram::askFor(const PanelMouse& release)
{
    ask(disc().toDirection(release.at.x, release.at.y, keysOf(release)), taken);
}

/// The eye and the lights that are on, as items.
std::vector<int> Stereogram::items() const
{
    std::vector<int> all{0};
    for (int k = 0; k < sphereLights; ++k)
        if (markers.lights[static_cast<std::size_t>(k)].present) all.push_back(k + 1);
    return all;
}

std::vector<PixelPoint> Stereogram::markerPixels() const
{
    std::vector<PixelPoint> positions;
    for (const int item : items()) positions.push_back(disc().toPixel(markers.of(item)));
    return positions;
}

AccessibleFacts Stereogram::facts() const
{
    AccessibleFacts known{titleOf(window), {}, ROLE_SYSTEM_GROUPING, {}};
    const std::vector<PixelPoint> positions = markerPixels();
    const std::vector<int> shown = items();
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const SphereDirection& direction = markers.of(shown[i]);
        const Text name = shown[i] == 0 ? Text::sphereEyeTip : textAfter(Text::parallel1Tip, shown[i] - 1);
        known.parts.push_back({textOf(name), directionText(direction.bearing, direction.elevation),
                               toRect(around(positions[i], scaleOf(window))), drag.chosenIndex() == i});
    }
    return known;
}

void Stereogram::nudge(std::size_t index, PixelPoint by, bool)
{
    const int item = items()[index];
    if (const SphereDisc on = disc(); on.usable()) ask(on.nudged(markers.of(item), by), item);
}

void Stereogram::turn(int button)
{
    for (std::size_t i = 0; i < buttons.size(); ++i)
        if (arrows[i].button == button)
            ask(turnedEye(markers.eye, static_cast<SphereArrow>(i), GetKeyState(VK_CONTROL) < 0), 0);
}

void Stereogram::ask(const SphereDirection& direction, int item)
{
    const SphereMarker asked{direction.bearing, direction.elevation, static_cast<std::uint32_t>(item)};
    send(GetParent(window), UM_LIGHTMARKER, asked, handleParameter(window));
}

void Stereogram::invalidate(bool changed)
{
    if (!changed) return;
    InvalidateRect(window, nullptr, TRUE);
    accessibleValueChanged(window, -1);
}

SphereDisc Stereogram::disc() const noexcept { return SphereDisc(clientSize(window), scaleOf(window)); }

void Stereogram::drawButton(const DRAWITEMSTRUCT& item) const noexcept
{
    for (const ArrowButton& button : buttons)
        if (button.draw(item)) return;
}

void Stereogram::notify(LPARAM lParam)
{
    const auto event = toolTipEvent(lParam);
    if (!event) return;
    UINT tool = event->id >= ID_TOOLLIGHT ? ID_TOOLLIGHT : event->id;   // one text for all lights
    for (std::size_t i = 0; i < buttons.size(); ++i)
        if (event->child == buttons[i].handle()) tool = arrows[i].tool;
    if (tool != 0) showHelp(window, tool + ID_STATUSTEXT, event->shows);
}

void registerStereogram(HINSTANCE module)
{
    WNDCLASSEXW record = windowClass<Stereogram>(module, L"Stereogram");
    record.style = CS_HREDRAW | CS_VREDRAW | CS_BYTEALIGNCLIENT | CS_PARENTDC | CS_DBLCLKS;
    record.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    if (!RegisterClassExW(&record)) throw Win32Error("RegisterClass Stereogram");
}

}   // namespace belvor
