#include "ui/panels/Controls.h"

#include "platform/Win32Error.h"
#include "platform/win32/Window.h"
#include "resources/Texts.h"
#include "resources/ids.h"
#include "ui/Accessible.h"
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
#include <oleacc.h>

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

AccessibleFacts sliderFacts(HWND slider, int index)
{
    const auto position = static_cast<int>(SendMessageW(slider, TBM_GETPOS, 0, 0));
    return {textOf(textAfter(Text::skyTip, index)),
            intensityText(static_cast<std::size_t>(index), position, userDecimalPoint()),
            ROLE_SYSTEM_SLIDER,
            {}};
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
    case WM_SYSCOLORCHANGE: followColours(); return 0;
    case WM_VSCROLL: scroll(LOWORD(wParam)); return 0;
    case WM_MOUSEWHEEL: wheel(GET_WHEEL_DELTA_WPARAM(wParam)); return 0;
    case UM_REVEAL: reveal(reinterpret_cast<HWND>(wParam)); return 0;
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
        if (!slider) continue;
        addWindowTool(window, slider, static_cast<UINT>(ID_SLIDER + i));
        makeAccessible(slider, [slider, i] { return sliderFacts(slider, i); });
    }
    const PixelSize slideSize{24, record.cy < 140 ? 100 : record.cy - 40};
    eyeSlide = panel(L"EyeSlide", L"Eye", ID_EYESLIDE, childStyle | WS_CLIPCHILDREN, slideSize,
                     "Controls::WM_CREATE Eye");
    toolbar.create(window);
    makeFocusRing(window);
}

void Controls::size()
{
    if (sizing) return;
    RECT whole;
    if (!GetWindowRect(window, &whole)) throw Win32Error("controls::WM_SIZE");
    const PixelSize size{whole.right - whole.left, whole.bottom - whole.top};
    // By the size without the bar: else it would come and go with its own width.
    const bool low = layOutControls(size, scaleOf(window)).exceeds(size.height);
    sizing = true;
    ShowScrollBar(window, SB_VERT, low);
    sizing = false;
    if (!low) offset = 0;
    toolbar.scale();
    scrollTo(offset);
}

/// Lays everything out for the present size.
void Controls::layOutPanels()
{
    const PixelSize client = clientSize(window);
    layout = layOutControls(client, scaleOf(window));
    if (GetWindowLongPtrW(window, GWL_STYLE) & WS_VSCROLL) {
        offset = std::clamp(offset, 0, std::max(0, layout.height - client.height));
        const SCROLLINFO info{sizeof info,
                              SIF_RANGE | SIF_PAGE | SIF_POS,
                              0,
                              layout.height - 1,
                              static_cast<UINT>(client.height),
                              offset,
                              0};
        layout.scroll(offset);
        SetScrollInfo(window, SB_VERT, &info, TRUE);
    }
    const bool moved = move(toolbar.handle(), layout.toolbar) && move(eyeSlide, layout.eyeSlide)
                       && move(plan, layout.plan) && move(elevation, layout.elevation)
                       && move(stereogram, layout.sphere);
    if (!moved) throw Win32Error("controls::WM_SIZE");
    for (std::size_t i = 0; i < sliders.size(); ++i) move(sliders[i], layout.sliders[i]);
}

void Controls::followColours()
{
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        SendMessageW(child, WM_SYSCOLORCHANGE, 0, 0);
    toolbar.takeColours();
    InvalidateRect(window, nullptr, TRUE);
}

void Controls::scrollTo(int wanted)
{
    offset = wanted;
    layOutPanels();
    InvalidateRect(window, nullptr, TRUE);
}

void Controls::scroll(int code)
{
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(window, SB_VERT, &info);
    const int line = scaleOf(window)(18), page = std::max(static_cast<int>(info.nPage), line);
    switch (code) {
    case SB_LINEUP: return scrollTo(offset - line);
    case SB_LINEDOWN: return scrollTo(offset + line);
    case SB_PAGEUP: return scrollTo(offset - page);
    case SB_PAGEDOWN: return scrollTo(offset + page);
    case SB_TOP: return scrollTo(0);
    case SB_BOTTOM: return scrollTo(info.nMax);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: return scrollTo(info.nTrackPos);
    }
}

/// The wheel over what does not turn by it.
void Controls::wheel(int delta)
{
    if (!(GetWindowLongPtrW(window, GWL_STYLE) & WS_VSCROLL)) return;
    wheelRest += delta * 3;   // lines a notch
    const int lines = wheelRest / WHEEL_DELTA;
    wheelRest -= lines * WHEEL_DELTA;
    if (lines != 0) scrollTo(offset - lines * scaleOf(window)(18));
}

/// Scrolls so that the window in the strip is seen.
void Controls::reveal(HWND child)
{
    RECT area;
    if (!(GetWindowLongPtrW(window, GWL_STYLE) & WS_VSCROLL) || !GetWindowRect(child, &area)) return;
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&area), 2);
    const int height = clientSize(window).height;
    if (area.top < 0) scrollTo(offset + area.top);
    else if (area.bottom > height)
        scrollTo(offset + std::min(static_cast<int>(area.bottom) - height, static_cast<int>(area.top)));
}

void Controls::paint() const
{
    const PaintDC dc(window);
    if (!dc) return;
    RECT separator = toRect(layout.separator), frame = toRect(layout.groupFrame);
    DrawEdge(dc.get(), &separator, EDGE_ETCHED, BF_TOP);
    DrawEdge(dc.get(), &frame, EDGE_ETCHED, BF_RECT);
    drawMarks(dc.get());
}

/// Beside each slider what it is for: the sky, the ground, or the number of a light on its colour.
void Controls::drawMarks(HDC dc) const
{
    LOGFONTW face{};
    GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof face, &face);
    face.lfHeight = -scaleOf(window)(9);
    face.lfWidth = 0;
    face.lfWeight = FW_BOLD;
    const GdiObject<HFONT> font(CreateFontIndirectW(&face));
    const Selection penInDc(dc, GetStockObject(NULL_PEN)), fontInDc(dc, font.get());
    SetBkMode(dc, TRANSPARENT);
    const auto draw = [&](const PixelRect& mark, COLORREF colour, HBRUSH brush, const wchar_t* text) {
        const Selection brushInDc(dc, brush);
        Rectangle(dc, mark.left, mark.top, mark.right, mark.bottom);
        SetTextColor(dc, isBright(colour) ? RGB(0, 0, 0) : RGB(255, 255, 255));
        RECT area = toRect(mark);
        DrawTextW(dc, text, 1, &area, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
    };
    constexpr COLORREF sky = RGB(160, 208, 255), ground = RGB(112, 80, 32);
    const GdiObject<HBRUSH> skyBrush(CreateSolidBrush(sky)), groundBrush(CreateSolidBrush(ground));
    draw(layout.ambientMarks[0], sky, skyBrush.get(), L"S");
    draw(layout.ambientMarks[1], ground, groundBrush.get(), L"G");
    for (std::size_t k = 0; k < layout.colours.size(); ++k)
        draw(layout.colours[k], lightColour(static_cast<int>(k)), lightBrush(static_cast<int>(k)),
             &L"12345"[k]);
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

void Controls::setSlider(WPARAM slider, LPARAM position)
{
    if (slider >= sliders.size()) return;
    positions[slider] = position;
    SendMessageW(sliders[slider], TBM_SETPOS, TRUE, position);
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

/// A slider knows no end of a drag but the release of the button. Its thumb goes back to where the
/// session has put it.
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
    const auto index = static_cast<std::size_t>(GetDlgCtrlID(dragged) - ID_SLIDER);
    setSlider(index, positions[index]);
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
