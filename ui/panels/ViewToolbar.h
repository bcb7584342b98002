#pragma once

#include "platform/win32/Windows.h"
#include "view/PixelScale.h"

#include <commctrl.h>

#include <memory>
#include <type_traits>

namespace belvor {

struct DestroyImageList {
    void operator()(HIMAGELIST list) const noexcept { ImageList_Destroy(list); }
};
using ImageList = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, DestroyImageList>;

/// The four buttons of the view commands, one below the other. The system's toolbar, taught
/// to answer the keyboard and to pass its tooltips' comings and goings to its parent.
class ViewToolbar {
public:
    /// Creates it in `parent`, greyed. Throws Win32Error. The object must outlive the window.
    void create(HWND parent);
    HWND handle() const noexcept { return window; }
    void enable(bool enabled) const noexcept;
    /// Takes pictures and button sizes for the scale of the monitor that the toolbar is on.
    void scale() noexcept;
    /// The same for the user's colours as they are now.
    void takeColours() noexcept;

    /// Answers a WM_NOTIFY that asks for the text of a button's tooltip: that of the menu
    /// item with the same command. Other notifications are left alone.
    static void nameButton(HWND mainWindow, LPARAM lParam) noexcept;

private:
    static LRESULT CALLBACK subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                     DWORD_PTR self);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    bool key(WPARAM key);
    void choose(int button);
    void drawFocus(HRGN painted) const;

    HWND window = nullptr;
    PixelScale shown;   // the one that the toolbar was made for
    ImageList images;   // at other scales; the toolbar does not own it
    int chosen = 0;     // the button that the keyboard works on
};

}   // namespace belvor
