#define OEMRESOURCE   // the numbers of the system's pictures
#include "ui/panels/ArrowButton.h"

namespace belvor {

GdiObject<HBITMAP> systemArrow(SystemArrow arrow) noexcept
{
    constexpr int pictures[] = {OBM_RGARROW, OBM_DNARROW, OBM_LFARROW, OBM_UPARROW};
    return GdiObject<HBITMAP>(LoadBitmapW(nullptr, MAKEINTRESOURCEW(pictures[static_cast<int>(arrow)])));
}

HWND createArrowButton(HWND parent, const wchar_t* text, int number, HBITMAP picture) noexcept
{
    HWND const button = CreateWindowExW(0, L"BUTTON", text, WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON | BS_BITMAP, 0, 0, 0, 0, parent,
                                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)), GetModuleHandleW(nullptr), nullptr);
    if (button) SendMessageW(button, BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(picture));
    return button;
}

}   // namespace belvor
