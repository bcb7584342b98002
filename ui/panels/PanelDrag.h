#pragma once

#include "platform/win32/Handles.h"
#include "ui/Pixels.h"

#include <functional>

namespace belvor {

/// The mouse over a panel: a pixel of its client area, and the keys that are held.
struct PanelMouse {
    PixelPoint at;
    bool shift = false, control = false;
};

/// What follows the mouse over a panel during a drag. Drawing it twice in R2_NOTXORPEN takes it away.
class Ghost {
public:
    using Shape = std::function<void(HDC)>;

    explicit Ghost(HWND panel) noexcept : window(panel) {}
    /// Takes the one on the screen away as it was drawn and draws the new one; an empty function draws none.
    void show(Shape next);
    /// For WM_PAINT: draws it over what is painted.
    void paint(HDC dc) const;

private:
    HWND window;
    Shape shown;
};

/// The drag of a marker in a panel, from the press to the release, which asks the main window for
/// something, or to what ends it without a request: Esc, a resize, or the mouse is no longer the
/// panel's, since a box, another program or a new model has come up.
class PanelDrag {
public:
    /// The panel's part of it.
    class Markers {
    public:
        /// A press: notes the marker that it takes; false when there is none.
        virtual bool takeMarker(const PanelMouse& press) = 0;
        /// The noted marker as it is to look at the mouse.
        virtual Ghost::Shape ghostAt(const PanelMouse& mouse) const = 0;
        /// The release of the noted marker. The drag is over when this is called.
        virtual void askFor(const PanelMouse& release) = 0;

    protected:
        ~Markers() = default;
    };

    /// `cursor`: the number of the system's cursor that is shown meanwhile.
    PanelDrag(HWND panel, Markers& panelMarkers, const wchar_t* cursor) noexcept;

    /// Call it first for every message of the panel. True when WM_SETCURSOR has been answered.
    bool handle(UINT message, WPARAM wParam, LPARAM lParam);
    void paint(HDC dc) const { ghost.paint(dc); }
    /// The markers have changed: draws the ghost that now belongs to the mouse.
    void redraw();

private:
    void press(const PanelMouse& mouse);
    void move(const PanelMouse& mouse);
    void release(const PanelMouse& mouse);
    void setKey(WPARAM key, bool held);
    void cancel();

    HWND window;
    Markers& markers;
    HCURSOR cursor;
    Ghost ghost;
    bool dragging = false;
    PanelMouse last;              // while dragging
    HWND formerFocus = nullptr;   // the panel has the focus meanwhile, so that the keys reach it
};

}   // namespace belvor
