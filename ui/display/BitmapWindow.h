#pragma once

#include "ui/display/DibSection.h"

namespace belvor {

/// The state of a window that shows a rendered bitmap of exactly its client size: the
/// drawing area and the plan and elevation panels derive from it first: bitmapOf() takes the
/// window's state for it. Hence the virtual function: a base that has some lies before one that has none.
class BitmapWindow {
public:
    explicit BitmapWindow(HWND owner) noexcept : window(owner) {}

    /// The bitmap that a render is to write; it stays valid when the window gets another.
    const Handle<DibSection>& bitmap() const noexcept { return dib; }

protected:
    virtual ~BitmapWindow() = default;

    /// WM_CREATE: the first bitmap.
    void create(const CREATESTRUCTW& record);
    /// WM_SIZE: whether the size is one to show, neither minimised nor without area.
    static bool accepted(WPARAM type, LPARAM size) noexcept;
    /// An accepted WM_SIZE: a new bitmap in the background colour; asks the parent for a
    /// render into it, which may come back into this window before the return.
    void resize(int width, int height);
    /// Copies the bitmap to the client area. Nothing where there is no bitmap.
    void copyTo(HDC target) const noexcept;

    HWND window;
    Handle<DibSection> dib;
};

/// The bitmap of a drawing area or of a plan or elevation panel; none before its WM_CREATE
/// and after its WM_DESTROY.
Handle<DibSection> bitmapOf(HWND window) noexcept;

}   // namespace belvor
