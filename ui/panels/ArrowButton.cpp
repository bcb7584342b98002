#define OEMRESOURCE   // the numbers of the system's pictures
#include "ui/panels/ArrowButton.h"

#include "ui/panels/ToolTips.h"

namespace belvor {

bool ArrowButton::create(HWND panel, SystemArrow arrow, const wchar_t* name, int number,
                         UINT toolTipText) noexcept
{
    constexpr int pictures[] = {OBM_RGARROW, OBM_DNARROW, OBM_LFARROW, OBM_UPARROW};
    picture = GdiObject<HBITMAP>(LoadBitmapW(nullptr, MAKEINTRESOURCEW(pictures[static_cast<int>(arrow)])));
    window = CreateWindowExW(0, L"BUTTON", name, WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON | BS_BITMAP, 0, 0, 0,
                             0, panel, reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)),
                             GetModuleHandleW(nullptr), nullptr);
    if (!window) return false;
    SendMessageW(window, BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(picture.get()));
    addWindowTool(panel, window, toolTipText);
    return true;
}

}   // namespace belvor
