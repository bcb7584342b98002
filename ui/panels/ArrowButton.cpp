#define OEMRESOURCE   // the numbers of the system's pictures
#include "ui/panels/ArrowButton.h"

#include "resources/ids.h"
#include "ui/WindowScale.h"
#include "ui/panels/ToolTips.h"

#include <utility>

namespace belvor {

bool ArrowButton::create(HWND panel, SystemArrow direction, const wchar_t* name, int number,
                         UINT toolTipText) noexcept
{
    arrow = direction;
    window = CreateWindowExW(0, L"BUTTON", name, WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON | BS_BITMAP, 0, 0, 0,
                             0, panel, reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)),
                             GetModuleHandleW(nullptr), nullptr);
    if (!window) return false;
    scale();
    addWindowTool(panel, window, toolTipText);
    return true;
}

void ArrowButton::scale() noexcept
{
    const PixelScale now = scaleOf(window);
    if (!window || now == shown) return;
    shown = now;
    constexpr int systemPictures[] = {OBM_RGARROW, OBM_DNARROW, OBM_LFARROW, OBM_UPARROW};
    const int direction = static_cast<int>(arrow);
    HANDLE const loaded = now == PixelScale{}
                              ? LoadBitmapW(nullptr, MAKEINTRESOURCEW(systemPictures[direction]))
                              : LoadImageW(GetModuleHandleW(nullptr),
                                           MAKEINTRESOURCEW(ID_ARROWBITMAP + 4 * pictureOf(now) + direction),
                                           IMAGE_BITMAP, 0, 0, LR_LOADMAP3DCOLORS);
    GdiObject<HBITMAP> next(static_cast<HBITMAP>(loaded));
    SendMessageW(window, BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(next.get()));
    picture = std::move(next);   // after the button has let go of the former one
}

}   // namespace belvor
