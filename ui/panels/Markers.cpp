#include "ui/panels/Markers.h"

#include "platform/win32/Handles.h"
#include "ui/SystemColours.h"

#include <array>
#include <map>
#include <utility>

namespace belvor {
namespace {

constexpr std::array lightColours{RGB(128, 128, 0), RGB(255, 0, 255),   RGB(0, 255, 255), RGB(255, 0, 0),
                                  RGB(0, 128, 128), RGB(128, 128, 128), RGB(255, 255, 0), RGB(128, 0, 0)};

bool isLight(int light) noexcept { return light >= 0 && light < static_cast<int>(lightColours.size()); }

// In a theme of high contrast what is drawn has an outline, in a colour that is seen on the ground.
constexpr int outlineWidth = 4;
COLORREF outlineColour() noexcept { return GetSysColor(COLOR_BTNTEXT); }
COLORREF discColour() noexcept { return RGB(0, 0, 0); }   // on the sphere's white disc

COLORREF pointerEdge(bool eye) noexcept
{
    if (highContrast()) return outlineColour();
    return eye ? RGB(0, 96, 0) : RGB(0, 0, 128);
}

POINT toPoint(PixelPoint p) noexcept { return {p.x, p.y}; }

void drawEllipse(HDC dc, PixelPoint p, int radius) noexcept
{
    Ellipse(dc, p.x - radius, p.y - radius, p.x + radius, p.y + radius);
}

}   // namespace

RECT toRect(const PixelRect& r) noexcept { return {r.left, r.top, r.right, r.bottom}; }

void drawLine(HDC dc, const PixelLine& line) noexcept
{
    MoveToEx(dc, line.from.x, line.from.y, nullptr);
    LineTo(dc, line.to.x, line.to.y);
}

void drawEyeGlyph(HDC dc, const EyeGlyph& glyph, PixelScale scale, bool onDisc) noexcept
{
    std::array<POINT, 10> points;
    auto next = points.begin();
    for (const PixelPoint& p : glyph.lids) *next++ = toPoint(p);
    for (const PixelPoint& p : glyph.eyeball) *next++ = toPoint(p);
    for (const PixelPoint& p : glyph.pupil) *next++ = toPoint(p);
    constexpr std::array<DWORD, 3> counts{3, 4, 3};
    const auto draw = [&](int width, COLORREF colour) {
        const GdiObject<HPEN> pen(CreatePen(PS_SOLID, scale(width), colour));
        const Selection penInDc(dc, pen.get());
        PolyPolyline(dc, points.data(), counts.data(), counts.size());
    };
    if (highContrast()) draw(outlineWidth, onDisc ? discColour() : outlineColour());
    draw(2, RGB(0, 255, 0));
}

void drawCross(HDC dc, PixelPoint lookAt, PixelScale scale, bool ghost) noexcept
{
    const auto strokes = [&](int width, COLORREF colour) {
        const GdiObject<HPEN> pen(CreatePen(PS_SOLID, scale(width), colour));
        const Selection penInDc(dc, pen.get());
        for (const PixelLine& stroke : crossStrokes(lookAt, scale)) drawLine(dc, stroke);
    };
    if (highContrast()) strokes(outlineWidth, outlineColour());
    strokes(2, RGB(0, 0, 128));
    if (!ghost) strokes(1, RGB(0, 0, 255));
}

void drawZoomWedge(HDC dc, const ZoomWedge& wedge, PixelScale scale) noexcept
{
    const auto strokes = [&](int width, COLORREF colour) {
        const GdiObject<HPEN> pen(CreatePen(PS_SOLID, scale(width), colour));
        const Selection penInDc(dc, pen.get());
        for (const PixelLine& stroke : wedge.strokes) drawLine(dc, stroke);
    };
    if (highContrast()) strokes(outlineWidth, outlineColour());
    strokes(2, RGB(128, 0, 0));
}

void drawPointer(HDC dc, PixelPoint at, PixelPoint marker, bool eye, PixelScale scale) noexcept
{
    const auto shape = pointerShape(at, marker, scale);
    const POINT corners[] = {toPoint(shape[0]), toPoint(shape[1]), toPoint(shape[2])};
    const GdiObject<HPEN> pen(CreatePen(PS_SOLID, scale(1), pointerEdge(eye)));
    const GdiObject<HBRUSH> brush(CreateSolidBrush(eye ? RGB(0, 255, 0) : RGB(0, 0, 255)));
    const Selection penInDc(dc, pen.get()), brushInDc(dc, brush.get());
    Polygon(dc, corners, 3);
}

void drawLight(HDC dc, PixelPoint position, int light, bool below, PixelScale scale) noexcept
{
    if (highContrast()) {
        const GdiObject<HPEN> pen(CreatePen(PS_SOLID, scale(outlineWidth), discColour()));
        const Selection outlineInDc(dc, pen.get()), hollowInDc(dc, GetStockObject(HOLLOW_BRUSH));
        drawEllipse(dc, position, scale(7));
    }
    const Selection brushInDc(dc,
                              below ? GetStockObject(HOLLOW_BRUSH) : static_cast<HGDIOBJ>(lightBrush(light)));
    const Selection penInDc(dc, lightPen(light, scale));
    drawEllipse(dc, position, scale(6));
}

void drawBelowCircle(HDC dc, PixelPoint position, PixelScale scale) noexcept
{
    const Selection brushInDc(dc, GetStockObject(HOLLOW_BRUSH));
    const auto draw = [&](int width, COLORREF colour) {
        const GdiObject<HPEN> pen(CreatePen(PS_SOLID, scale(width), colour));
        const Selection penInDc(dc, pen.get());
        drawEllipse(dc, position, scale(8));
    };
    if (highContrast()) draw(outlineWidth, discColour());
    draw(2, RGB(0, 255, 0));
}

bool isBright(COLORREF colour) noexcept
{
    // The luminance, by a gamma of 2, against the one from which black and white differ equally.
    const auto light = [](int part) { return part * part; };
    return 2126 * light(GetRValue(colour)) + 7152 * light(GetGValue(colour)) + 722 * light(GetBValue(colour))
           > 1790 * 255 * 255;
}

COLORREF lightColour(int light) noexcept
{
    return isLight(light) ? lightColours[static_cast<std::size_t>(light)] : RGB(0, 0, 0);
}

HBRUSH lightBrush(int light) noexcept
{
    static std::array<GdiObject<HBRUSH>, lightColours.size()> brushes;
    if (!isLight(light)) return static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    const auto index = static_cast<std::size_t>(light);
    if (!brushes[index]) brushes[index] = GdiObject<HBRUSH>(CreateSolidBrush(lightColours[index]));
    return brushes[index].get();
}

HPEN lightPen(int light, PixelScale scale)
{
    static std::map<std::pair<int, int>, GdiObject<HPEN>> pens;   // by light and width
    if (!isLight(light)) return static_cast<HPEN>(GetStockObject(BLACK_PEN));
    GdiObject<HPEN>& pen = pens[{light, scale(2)}];
    if (!pen)
        pen = GdiObject<HPEN>(CreatePen(PS_SOLID, scale(2), lightColours[static_cast<std::size_t>(light)]));
    return pen.get();
}

}   // namespace belvor
