#include "ui/panels/ViewToolbar.h"

#include "platform/Win32Error.h"
#include "platform/win32/Handles.h"
#include "platform/win32/Window.h"
#include "resources/ids.h"
#include "ui/SystemColours.h"
#include "ui/WindowScale.h"

#include <algorithm>
#include <iterator>

namespace belvor {
namespace {

constexpr int pictures = 7, pictureSize = 16;
constexpr int buttonWidth = 24, buttonHeight = 22;   // the system's for pictures of that size

/// Top to bottom.
constexpr struct {
    int picture, command;
} buttons[] = {{5, ID_WHOLEMODEL}, {4, ID_CENTRELOOKAT}, {6, ID_PREVIOUSVIEW}, {3, ID_INCREASEZOOM}};
constexpr int lastButton = static_cast<int>(std::size(buttons)) - 1;

}   // namespace

void ViewToolbar::create(HWND parent)
{
    constexpr DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_TOOLTIPS | TBSTYLE_WRAPABLE
                            | CCS_NODIVIDER | CCS_NOPARENTALIGN | CCS_NORESIZE | CCS_NOMOVEY;
    TBBUTTON records[std::size(buttons)]{};
    for (std::size_t i = 0; i < std::size(buttons); ++i) {
        records[i].iBitmap = buttons[i].picture;
        records[i].idCommand = buttons[i].command;
        records[i].fsState = TBSTATE_WRAP;   // not enabled; the next one stands below
        records[i].fsStyle = TBSTYLE_BUTTON;
    }
    window = CreateToolbarEx(parent, style, ID_TOOLBAR, pictures, GetModuleHandleW(nullptr), ID_TOOLBARBITMAP,
                             records, static_cast<int>(std::size(buttons)), 0, 0, pictureSize, pictureSize,
                             sizeof(TBBUTTON));
    if (!window) throw Win32Error("Controls::WM_CREATE Toolbar");
    SetWindowSubclass(window, subclass, 1, reinterpret_cast<DWORD_PTR>(this));
    if (highContrast()) takeColours();
}

void ViewToolbar::enable(bool enabled) const noexcept
{
    for (const int command : {ID_INCREASEZOOM, ID_CENTRELOOKAT, ID_WHOLEMODEL, ID_PREVIOUSVIEW})
        SendMessageW(window, TB_ENABLEBUTTON, static_cast<WPARAM>(command), MAKELPARAM(enabled, 0));
}

void ViewToolbar::scale() noexcept
{
    const PixelScale now = scaleOf(window);
    if (now == shown) return;
    shown = now;
    takeColours();
}

void ViewToolbar::takeColours() noexcept
{
    const PixelScale now = shown;
    const int index = pictureOf(now), size = pictureSizes[index];
    // The pictures' grey becomes the user's button colour; in a theme of high contrast, where their dark
    // lines would not be seen, they keep a light ground.
    const bool light = highContrast();
    COLORMAP toWhite{RGB(192, 192, 192), RGB(255, 255, 255)};
    const GdiObject<HBITMAP> strip(CreateMappedBitmap(
        GetModuleHandleW(nullptr), index == 0 ? ID_TOOLBARBITMAP : ID_TOOLBARSCALED + index - 1, 0,
        light ? &toWhite : nullptr, light ? 1 : 0));
    ImageList next(ImageList_Create(size, size, ILC_COLOR24 | ILC_MASK, pictures, 0));
    if (!strip || !next) return;
    if (light) ImageList_Add(next.get(), strip.get(), nullptr);
    else ImageList_AddMasked(next.get(), strip.get(), GetSysColor(COLOR_BTNFACE));
    SendMessageW(window, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(next.get()));
    SendMessageW(window, TB_SETBUTTONSIZE, 0, MAKELPARAM(now(buttonWidth), now(buttonHeight)));
    images = std::move(next);
}

void ViewToolbar::nameButton(HWND mainWindow, LPARAM lParam) noexcept
{
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.code != TTN_GETDISPINFOW || header.idFrom > 0xFFFF) return;
    auto& info = *reinterpret_cast<NMTTDISPINFOW*>(lParam);
    const int length = GetMenuStringW(GetMenu(mainWindow), static_cast<UINT>(header.idFrom), info.szText,
                                      static_cast<int>(std::size(info.szText)), MF_BYCOMMAND);
    wchar_t* const end =
        std::remove(info.szText, info.szText + std::max(length, 0), L'&');   // a tooltip has no mnemonics
    *end = L'\0';
    info.lpszText = info.szText;
    info.hinst = nullptr;
}

LRESULT CALLBACK ViewToolbar::subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                       DWORD_PTR self)
{
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, subclass, id);
        return DefSubclassProc(window, message, wParam, lParam);
    }
    return guarded([&] { return reinterpret_cast<ViewToolbar*>(self)->handle(message, wParam, lParam); });
}

LRESULT ViewToolbar::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_NOTIFY: {   // its tooltip tells of coming and going to the toolbar only
        const UINT code = reinterpret_cast<const NMHDR*>(lParam)->code;
        if (code == TTN_SHOW || code == TTN_POP) SendMessageW(GetParent(window), message, wParam, lParam);
        break;
    }
    case WM_KEYDOWN:
        if (key(wParam)) return 0;
        break;
    case WM_SETFOCUS: choose(chosen); break;
    case WM_KILLFOCUS:
        SendMessageW(window, TB_SETHOTITEM, static_cast<WPARAM>(-1), 0);
        InvalidateRect(window, nullptr, TRUE);
        break;
    case WM_PAINT: {
        const GdiObject<HRGN> painted(CreateRectRgn(0, 0, 0, 0));
        GetUpdateRgn(window, painted.get(), FALSE);
        const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
        if (GetFocus() == window) drawFocus(painted.get());
        return result;
    }
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

bool ViewToolbar::key(WPARAM pressed)
{
    switch (pressed) {
    case VK_UP:
    case VK_LEFT: choose(chosen - 1); return true;
    case VK_DOWN:
    case VK_RIGHT: choose(chosen + 1); return true;
    case VK_HOME: choose(0); return true;
    case VK_END: choose(lastButton); return true;
    case VK_SPACE:
    case VK_RETURN: {
        const int command = buttons[chosen].command;
        if (SendMessageW(window, TB_ISBUTTONENABLED, static_cast<WPARAM>(command), 0))
            SendMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(command, 0),
                         reinterpret_cast<LPARAM>(window));
        return true;
    }
    }
    return false;
}

void ViewToolbar::choose(int button)
{
    chosen = std::clamp(button, 0, lastButton);
    SendMessageW(window, TB_SETHOTITEM, static_cast<WPARAM>(chosen), 0);
    InvalidateRect(window, nullptr, TRUE);
}

/// The rectangle inverts what is below it: it may only be drawn where the buttons have just been painted.
void ViewToolbar::drawFocus(HRGN painted) const
{
    RECT area;
    const WindowDC dc(window);
    if (!dc
        || !SendMessageW(window, TB_GETITEMRECT, static_cast<WPARAM>(chosen),
                         reinterpret_cast<LPARAM>(&area)))
        return;
    const SavedDC saved(dc.get());
    SelectClipRgn(dc.get(), painted);
    InflateRect(&area, -shown(3), -shown(3));
    DrawFocusRect(dc.get(), &area);
}

}   // namespace belvor
