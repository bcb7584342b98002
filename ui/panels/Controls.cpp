#include "ui/panels/Controls.h"

#include "platform/Win32Error.h"
#include "platform/win32/Window.h"
#include "resources/ids.h"
#include "ui/ClientSize.h"
#include "ui/Messages.h"
#include "ui/UserLocale.h"
#include "ui/ValueText.h"
#include "ui/WindowScale.h"
#include "ui/panels/EyeSlide.h"
#include "ui/panels/FocusRing.h"
#include "ui/panels/Markers.h"
#include "ui/panels/PanelPainting.h"
#include "ui/panels/Plan.h"
#include "ui/panels/Stereogram.h"
#include "ui/panels/ToolTips.h"

#include <commctrl.h>

#include <algorithm>
#include <string>
#include <utility>

namespace belvor {
namespace {

constexpr int lastPosition = 21;
constexpr DWORD childStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;

HWND createChild(HWND parent, const wchar_t* className, const wchar_t* title, int number, DWORD style,
                 PixelSize size) noexcept
{
    return CreateWindowExW(0, className, title, style, 0, 0, size.width, size.height, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)), GetModuleHandleW(nullptr),
                           nullptr);
}

HWND createSlider(HWND parent, int index) noexcept
{
    const std::wstring title = L"Light" + std::to_wstring(index);
    HWND const slider = createChild(parent, TRACKBAR_CLASSW, title.c_str(), ID_SLIDER + index,
                                    childStyle | WS_CLIPCHILDREN | TBS_NOTICKS, {128, 30});
    SendMessageW(slider, TBM_SETRANGE, TRUE, MAKELPARAM(0, lastPosition));
    SendMessageW(slider, TBM_SETLINESIZE, 0, 1);
    SendMessageW(slider, TBM_SETPAGESIZE, 0, 4);
    return slider;
}

bool move(HWND child, const PixelArea& area) noexcept
{
    return MoveWindow(child, area.x, area.y, area.width, area.height, TRUE);
}

}   // namespace

LRESULT Controls::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: create(*reinterpret_cast<const CREATESTRUCTW*>(lParam)); return 0;
    case WM_SIZE: size(); return 0;
    case WM_PAINT: paint(); return 0;
    case WM_ENABLE: toolbar.enable(wParam != FALSE); return 0;
    case WM_SHOWWINDOW: keepFocus(wParam != FALSE); break;
    case WM_HSCROLL: sliderMoved(LOWORD(wParam), reinterpret_cast<HWND>(lParam)); return 0;
    case WM_NOTIFY: notify(lParam); break;
    case WM_COMMAND:   // of the toolbar, and a request of a panel to be drawn
    case UM_VIEWMARKERS:
    case UM_EYESLIDE:
    case UM_LIGHTMARKER:
    case UM_VIEWGESTURE:
    case UM_REMOVELIGHTMARKER:   // requests only: the answers go to the panels themselves
        return SendMessageW(GetParent(window), message, wParam, lParam);
    case UM_LIGHTINTENSITY: setSlider(wParam, lParam); return 0;
    case UM_ENDDRAG: endDrag(); return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void Controls::create(const CREATESTRUCTW& record)
{
    const auto panel = [this](const wchar_t* className, const wchar_t* title, int number, DWORD style,
                              PixelSize size, const char* step) {
        HWND const made = createChild(window, className, title, number, style, size);
        if (!made) throw Win32Error(step);
        return made;
    };
    constexpr PixelSize square{128, 128};
    plan = panel(L"Plan", L"Plan", ID_PLAN, childStyle, square, "Controls::WM_CREATE Plan");
    elevation =
        panel(L"Plan", L"Elevation", ID_ELEVATION, childStyle, square, "Controls::WM_CREATE Elevation");
    stereogram = panel(L"Stereogram", L"Stereogram", ID_SPHERE, childStyle | WS_CLIPCHILDREN, square,
                       "Controls::WM_CREATE Stereogram");
    for (int i = 0; i < controlSliders; ++i) {
        HWND const slider = createSlider(window, i);
        sliders[static_cast<std::size_t>(i)] = slider;
        if (slider) addWindowTool(window, slider, static_cast<UINT>(ID_SLIDER + i));
    }
    const PixelSize slideSize{24, record.cy < 140 ? 100 : record.cy - 40};
    eyeSlide = panel(L"EyeSlide", L"Eye", ID_EYESLIDE, childStyle | WS_CLIPCHILDREN, slideSize,
                     "Controls::WM_CREATE Eye");
    toolbar.create(window);
    makeFocusRing(window);
}

void Controls::size()
{
    layout = layOutControls(clientSize(window), scaleOf(window));
    toolbar.scale();
    const bool moved = move(toolbar.handle(), layout.toolbar) && move(eyeSlide, layout.eyeSlide)
                       && move(plan, layout.plan) && move(elevation, layout.elevation)
                       && move(stereogram, layout.sphere);
    if (!moved) throw Win32Error("controls::WM_SIZE");
    for (std::size_t i = 0; i < sliders.size(); ++i) move(sliders[i], layout.sliders[i]);
}

void Controls::paint() const
{
    const PaintDC dc(window);
    if (!dc) return;
    RECT separator = toRect(layout.separator), frame = toRect(layout.groupFrame);
    DrawEdge(dc.get(), &separator, EDGE_ETCHED, BF_TOP);
    DrawEdge(dc.get(), &frame, EDGE_ETCHED, BF_RECT);
    const Selection penInDc(dc.get(), GetStockObject(NULL_PEN));
    for (std::size_t k = 0; k < layout.colours.size(); ++k) {
        const Selection brushInDc(dc.get(), lightBrush(static_cast<int>(k)));
        const PixelRect& swatch = layout.colours[k];
        Rectangle(dc.get(), swatch.left, swatch.top, swatch.right, swatch.bottom);
    }
}

/// A slider tells of every step of a thumb that is still held; only the end of it counts.
void Controls::sliderMoved(int code, HWND slider)
{
    const int index = GetDlgCtrlID(slider) - ID_SLIDER;
    const auto position = std::clamp<LRESULT>(SendMessageW(slider, TBM_GETPOS, 0, 0), 0, lastPosition);
    if (code == TB_THUMBTRACK)
        return tip.show(
            intensityText(static_cast<std::size_t>(index), static_cast<int>(position), userDecimalPoint()));
    tip.hide();
    if (!endingDrag) send(GetParent(window), UM_LIGHTINTENSITY, index, position);
}

void Controls::setSlider(WPARAM slider, LPARAM position) const
{
    if (slider < sliders.size()) SendMessageW(sliders[slider], TBM_SETPOS, TRUE, position);
}

/// Keys must not move what is hidden. When the strip comes back, so does the focus, unless it has gone
/// elsewhere.
void Controls::keepFocus(bool shown)
{
    HWND const focus = GetFocus(), parent = GetParent(window);
    if (!shown && IsChild(window, focus)) {
        hiddenFocus = focus;
        SetFocus(parent);
    } else if (shown && focus == parent && hiddenFocus) {
        SetFocus(std::exchange(hiddenFocus, nullptr));
    }
}

/// A slider knows no end of a drag but the release of the button. Where its thumb is to stand
/// follows with UM_LIGHTINTENSITY.
void Controls::endDrag()
{
    const HWND dragged = GetCapture();
    if (std::find(sliders.begin(), sliders.end(), dragged) == sliders.end() || !dragged) return;
    POINT pointer{};
    GetCursorPos(&pointer);
    ScreenToClient(dragged, &pointer);
    endingDrag = true;
    SendMessageW(dragged, WM_LBUTTONUP, 0, MAKELPARAM(pointer.x, pointer.y));
    endingDrag = false;
}

void Controls::notify(LPARAM lParam) const
{
    ViewToolbar::nameButton(GetParent(window), lParam);
    const auto event = toolTipEvent(lParam);
    if (!event) return;
    if (event->child)   // a slider
        showHelp(window, static_cast<UINT>(GetDlgCtrlID(event->child)) + ID_STATUSTEXT, event->shows);
    else   // a button of the toolbar has its command's help
        showHelp(window, event->id, event->shows);
}

void registerControls(HINSTANCE module)
{
    WNDCLASSEXW record = windowClass<Controls>(module, L"Controls");
    record.style = CS_HREDRAW | CS_VREDRAW | CS_PARENTDC;
    record.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    if (!RegisterClassExW(&record)) throw Win32Error("RegisterClass Controls");
    registerPlan(module);
    registerEyeSlide(module);
    registerStereogram(module);
}

}   // namespace belvor
